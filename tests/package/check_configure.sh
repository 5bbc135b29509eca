#!/usr/bin/env bash
# Configures the project as people do and looks at what comes of it: the build type, warnings, what is left out where
# something is missing, and where the pkg-config file sends those who use it for every kind of library directory.
# Nothing is built.
# usage: check_configure.sh SOURCE_DIR GENERATOR
source=$1
export CMAKE_GENERATOR=$2
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
configure() { # NAME OPTION...
  local name=$1
  shift
  cmake -S "$source" -B "$work/$name" "$@" >"$work/$name.txt" 2>&1
}
library() { configure "$@" -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=OFF || fail "cannot be configured: $*"; }
cached() { sed -n "s/^$2:[A-Z]*=//p" "$work/$1/CMakeCache.txt"; } # NAME VARIABLE

# resolved DIRECTORY VARIABLE: what pkg-config says for the file in that directory, without dots.
resolved() { realpath -m "$(PKG_CONFIG_LIBDIR=$1 pkg-config --variable="$2" zqColorConversion)"; }

library plain -DCMAKE_INSTALL_LIBDIR=lib
equal "the build type without a wish" "$(cached plain CMAKE_BUILD_TYPE)" Release
library deep -DCMAKE_BUILD_TYPE=Debug -DCMAKE_INSTALL_LIBDIR=lib/some-machine
equal "the build type that was asked for" "$(cached deep CMAKE_BUILD_TYPE)" Debug
library absolute -DCMAKE_INSTALL_PREFIX="$work/there" -DCMAKE_INSTALL_LIBDIR="$work/elsewhere/lib"

for name in plain:lib deep:lib/some-machine; do
  libdir=$work/anywhere/${name#*:}
  mkdir -p "$libdir/pkgconfig"
  cp "$work/${name%:*}/zqColorConversion.pc" "$libdir/pkgconfig"
  equal "libdir of $name" "$(resolved "$libdir/pkgconfig" libdir)" "$libdir"
  equal "includedir of $name" "$(resolved "$libdir/pkgconfig" includedir)" "$work/anywhere/include"
done
equal "libdir given as absolute" "$(resolved "$work/absolute" libdir)" "$work/elsewhere/lib"
equal "includedir beside it" "$(resolved "$work/absolute" includedir)" "$work/there/include"

# A compiler that warns of more than ours must not stop others; our presets and scripts let nothing pass.
[ "$(compile_lines "$work/plain" -Wall)" -gt 0 ] || fail "no warnings are asked for"
equal "the number of compilations that stop at warnings" "$(compile_lines "$work/plain" -Werror)" 0
(cd "$source" && library preset --preset release -G "$CMAKE_GENERATOR")
equal "the number of those that do, in a preset" "$(compile_lines "$work/preset" -Werror)" \
  "$(compile_lines "$work/preset" -Wall)"

# Without CLI11, libpng or GoogleTest there is the library; who asks for more by name is told that it cannot be had.
without() { printf -- '-DCMAKE_DISABLE_FIND_PACKAGE_%s=ON\n' "$@"; }
mapfile -t nothing < <(without CLI11 PNG GTest)
configure alone "${nothing[@]}" || fail "the library alone cannot be configured: $(cat "$work/alone.txt")"
grep -q 'zqconvert is left out: CLI11::CLI11 and PNG::PNG not found' "$work/alone.txt" || fail "no word about zqconvert"
grep -q 'The tests are left out: GTest::gmock and GTest::gtest_main not found' "$work/alone.txt" || fail "no word about the tests"
grep -q 'src/frame/dispatch\.cpp' "$work/alone/compile_commands.json" || fail "the library is missing"
if grep -E 'zqconvert/|_test\.cpp' "$work/alone/compile_commands.json"; then fail "something is built all the same"; fi
for package in CLI11 PNG; do
  configure "$package" "$(without "$package")" -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=ON && fail "no $package, no error"
  grep -q "find_package for module $package" "$work/$package.txt" || fail "an error, but not about $package"
done
configure GTest "$(without GTest)" -DZQCC_BUILD_TESTS=ON -DZQCC_BUILD_TOOLS=OFF && fail "no GTest, no error"
grep -q "find_package for module GTest" "$work/GTest.txt" || fail "an error, but not about GTest"
# Half of GoogleTest, as Debian's libgtest-dev alone brings it.
mkdir "$work/half"
cat >"$work/half/GTestConfig.cmake" <<'CMAKE'
if(NOT TARGET GTest::gtest)
  add_library(GTest::gtest INTERFACE IMPORTED)
  add_library(GTest::gtest_main INTERFACE IMPORTED)
endif()
CMAKE
configure half_of_gtest -DGTest_DIR="$work/half" -DZQCC_BUILD_TOOLS=OFF || fail "half of GoogleTest stops everything"
grep -q 'The tests are left out: GTest::gmock not found' "$work/half_of_gtest.txt" || fail "no word about GTest::gmock"

verdict "build types, warnings, missing packages and pkg-config paths are as promised"
