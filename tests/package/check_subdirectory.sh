#!/usr/bin/env bash
# The library inside another project that names no build type: its own objects are optimised, the other project's are
# left alone, and neither its installation nor its cache gets anything that it did not ask for. Nothing is built.
# usage: check_subdirectory.sh SOURCE_DIR GENERATOR
source=$1
export CMAKE_GENERATOR=$2
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"

mkdir "$work/parent"
cat >"$work/parent/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.22)
project(parent LANGUAGES C CXX)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
add_subdirectory($source colour)
file(COPY $source/examples/convert_frame.c DESTINATION .)
add_executable(parent \${CMAKE_CURRENT_BINARY_DIR}/convert_frame.c)
target_link_libraries(parent PRIVATE zqColorConversion::zqColorConversion)
get_target_property(type zqColorConversion TYPE)
message(STATUS "type: \${type}")
CMAKE
configure() { # NAME OPTION...
  local name=$1
  shift
  cmake -S "$work/parent" -B "$work/$name" "$@" >"$work/$name.txt" 2>&1 || fail "$name: $(cat "$work/$name.txt")"
}
commands() { grep '"command"' "$work/$1/compile_commands.json" | grep -e "$2"; } # NAME SOURCE
installs() { find "$work/$1" -name cmake_install.cmake -exec grep -l 'file(INSTALL' {} + | wc -l; } # NAME

configure plain
commands plain src/frame/dispatch.cpp | grep -e ' -O[23] ' >/dev/null || fail "the library is not optimised"
if commands plain convert_frame.c | grep -e ' -O'; then fail "the other project got our options"; fi
if commands plain zqconvert; then fail "the program is built"; fi
equal "the number of directories with something to install" "$(installs plain)" 0
grep -q 'type: STATIC_LIBRARY' "$work/plain.txt" || fail "not the kind of library that CMake makes without a wish"
if grep -E '^(BUILD_SHARED_LIBS|CMAKE_BUILD_TYPE):[A-Z]*=.' "$work/plain/CMakeCache.txt"; then
  fail "the cache of the other project was written to"
fi

configure asked -DZQCC_INSTALL=ON -DBUILD_SHARED_LIBS=ON -DCMAKE_BUILD_TYPE=Debug
grep -q 'type: SHARED_LIBRARY' "$work/asked.txt" || fail "BUILD_SHARED_LIBS is not heeded"
[ "$(installs asked)" -gt 0 ] || fail "ZQCC_INSTALL installs nothing"
if commands asked src/frame/dispatch.cpp | grep -e ' -O'; then fail "the build type that was asked for is not heeded"; fi

configure flags -DCMAKE_CXX_FLAGS=-Os
commands flags src/frame/dispatch.cpp | grep -e ' -Os ' >/dev/null || fail "the other project's optimisation is lost"
if commands flags src/frame/dispatch.cpp | grep -e ' -O[23] '; then fail "the other project's optimisation is overridden"; fi

verdict "inside another project: optimised, nothing installed, nothing written to its cache"
