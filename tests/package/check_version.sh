#!/usr/bin/env bash
# The version is given once, in the header: with another one there, everything that names a version follows, and the
# shared object's name, its symbols' version node and the CMake package agree about what may replace what.
# usage: check_version.sh SOURCE_DIR GENERATOR
source=$1
export CMAKE_GENERATOR=$2
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"

# compatible NAME WANTED: would find_package take the package of that build for this version?
compatible() {
  cat >"$work/ask.cmake" <<CMAKE
set(PACKAGE_FIND_VERSION $2)
string(REPLACE . ";" numbers $2)
list(GET numbers 0 PACKAGE_FIND_VERSION_MAJOR)
list(GET numbers 1 PACKAGE_FIND_VERSION_MINOR)
set(PACKAGE_FIND_VERSION_COUNT 2)
set(CMAKE_SIZEOF_VOID_P "")
include($work/$1/zqColorConversionConfigVersion.cmake)
message("\${PACKAGE_VERSION} \${PACKAGE_VERSION_COMPATIBLE}")
CMAKE
  cmake -P "$work/ask.cmake" 2>&1
}

try() { # VERSION SOVERSION OLDER_THAT_FITS OLDER_THAT_DOES_NOT
  local version=$1 so=$2 copy=$work/source numbers
  IFS=. read -r -a numbers <<<"$version"
  rm -rf "$copy"
  mkdir "$copy"
  for part in CMakeLists.txt cmake src include docs examples README.md CHANGELOG.md; do cp -r "$source/$part" "$copy"; done
  sed -i -E "s/^(#define ZQCC_VERSION_MAJOR) .*/\1 ${numbers[0]}/; s/^(#define ZQCC_VERSION_MINOR) .*/\1 ${numbers[1]}/
    s/^(#define ZQCC_VERSION_PATCH) .*/\1 ${numbers[2]}/" "$copy/include/zqColorConversion.h"
  cmake -S "$copy" -B "$work/$version" -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=OFF >"$work/log" 2>&1 ||
    fail "cannot be configured: $(cat "$work/log")"
  equal "pkg-config's version" "$(PKG_CONFIG_LIBDIR=$work/$version pkg-config --modversion zqColorConversion)" "$version"
  equal "CPack's version" "$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")/\1/p' "$work/$version/CPackConfig.cmake")" \
    "$version"
  equal "what is installed of $version" "$(grep -ohE 'libzqColorConversion\.so\.[0-9.]*[0-9]' \
    "$work/$version/cmake_install.cmake" | LC_ALL=C sort -u | tr '\n' ' ')" \
    "libzqColorConversion.so.$so libzqColorConversion.so.$version "
  equal "the version node" "$(head -n 1 "$work/$version/src/exports.map")" "ZQCC_$so {"
  equal "find_package($3)" "$(compatible "$version" "$3")" "$version TRUE"
  equal "find_package($4)" "$(compatible "$version" "$4")" "$version FALSE"
}
try 0.7.3 0.7 0.7 0.6
# zqPicture has the version of its own header.
if [ -e "$work/0.7.3/zqPicture.pc" ]; then
  own=$(sed -n 's/^#define ZQP_VERSION_[A-Z]* //p' "$source/include/zqPicture.h" | paste -s -d .)
  equal "zqPicture's version" "$(PKG_CONFIG_LIBDIR=$work/0.7.3 pkg-config --modversion zqPicture)" "$own"
  grep -q "libzqPicture\.so\.$own" "$work/0.7.3/cmake_install.cmake" || fail "zqPicture is not installed as $own"
fi
try 2.3.4 2 2.1 1.3

verdict "one version everywhere; names and compatibility agree"
