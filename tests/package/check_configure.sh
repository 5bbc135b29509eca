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

# Vector code wants the headers of Highway, of a version that it was tried with; without them AUTO is the portable library
# and says so. Processors without levels are not asked for any.
vector() { # NAME: how many compilations have vector code, and how many have none
  echo "$(compile_lines "$work/$1" -DZQCC_VECTOR=1) and $(compile_lines "$work/$1" -DZQCC_VECTOR=0)"
}
all_lines() { grep -c '"command"' "$work/$1/compile_commands.json"; }
headers() { # DIRECTORY MAJOR MINOR PATCH: stand-ins for Highway's
  mkdir -p "$1/hwy"
  : >"$1/hwy/foreach_target.h"
  printf '#define HWY_%s\n' "MAJOR $2" "MINOR $3" "PATCH $4" >"$1/hwy/highway.h"
}
headers "$work/new" 1 10 0
headers "$work/old" 1 0 2
library off -DZQCC_VECTOR=OFF -DZQCC_HIGHWAY_HEADERS="$work/new"
equal "the compilations with and without vector code, OFF" "$(vector off)" "0 and $(all_lines off)"
# What ends the process when one of Highway's assertions fails belongs to zqPicture as well.
if grep 'src/vector/' "$work/off/compile_commands.json" | grep -v 'src/vector/abort\.cpp'; then
  fail "vector code is built although it is OFF"
fi
if grep -i vector "$work/off.txt"; then fail "words about vector code although it is OFF"; fi
case $(uname -m) in
  x86_64 | aarch64)
    for wish in AUTO ON; do
      library "with_$wish" -DZQCC_VECTOR=$wish -DZQCC_HIGHWAY_HEADERS="$work/new"
      equal "those with it and without, $wish" "$(vector with_$wish)" "$(all_lines "with_$wish") and 0"
      grep -q 'src/vector/detect\.cpp' "$work/with_$wish/compile_commands.json" || fail "vector code is missing, $wish"
    done
    library without -DCMAKE_IGNORE_PATH='/usr/include;/usr/local/include'
    library old -DZQCC_HIGHWAY_HEADERS="$work/old"
    # zqPicture needs the headers, whatever becomes of the other library's vector code.
    pictures() { grep -c 'src/picture/' "$work/$1/compile_commands.json" || true; } # NAME
    for name in off with_AUTO; do
      [ "$(pictures $name)" -gt 0 ] || fail "zqPicture is missing: $name"
    done
    library no_picture -DZQCC_PICTURE=OFF -DZQCC_HIGHWAY_HEADERS="$work/new"
    for name in no_picture without old; do
      equal "the compilations of zqPicture, $name" "$(pictures $name)" 0
      [ ! -e "$work/$name/zqPicture.pc" ] || fail "zqPicture is installed: $name"
    done
    if grep -i zqPicture "$work/no_picture.txt"; then fail "words about zqPicture although it is OFF"; fi
    for name in without:'were not found (Debian: libhwy-dev)' old:"in $work/old are older than 1.0.3"; do
      words=${name#*:} name=${name%%:*}
      equal "the compilations with and without vector code, $name" "$(vector "$name")" "0 and $(all_lines "$name")"
      grep -qF "Vector code is left out: Highway's headers $words" "$work/$name.txt" || fail "no word about it: $name"
      grep -qF "zqPicture is left out: Highway's headers $words" "$work/$name.txt" || fail "no word about zqPicture: $name"
      configure "$name" -DZQCC_VECTOR=OFF -DZQCC_PICTURE=ON && fail "no headers, no error about zqPicture: $name"
      configure "$name" -DZQCC_VECTOR=AUTO -DZQCC_PICTURE=AUTO || fail "cannot be configured again: $name"
      configure "$name" -DZQCC_VECTOR=ON && fail "no headers, no error: $name"
      tr -s ' \n' ' ' <"$work/$name.txt" | grep -qF "Vector code is wanted (ZQCC_VECTOR), but Highway's headers $words" ||
        fail "an error, but not about the headers: $(cat "$work/$name.txt")"
    done
    # Headers that have gone since they were found.
    rm -r "$work/new/hwy"
    configure with_AUTO || fail "headers that went away: $(cat "$work/with_AUTO.txt")"
    if grep -qF "$work/new" "$work/with_AUTO/CMakeCache.txt"; then fail "headers that went away are still known"; fi
    ;;
esac

verdict "build types, warnings, vector code, missing packages and pkg-config paths are as promised"
