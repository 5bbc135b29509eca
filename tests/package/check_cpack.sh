#!/usr/bin/env bash
# Makes the packages of the build and looks into them; scripts/test-fresh installs them into a bare system.
# usage: check_cpack.sh BUILD_DIR
build=$1
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
version=$(sed -n 's/^set(CPACK_PACKAGE_VERSION "\(.*\)")/\1/p' "$build/CPackConfig.cmake")
make_package() { # GENERATOR SUFFIX: prints the file's name
  cpack --config "$build/CPackConfig.cmake" -G "$1" -B "$work/$1" >"$work/$1.log" 2>&1 || cat "$work/$1.log" >&2
  find "$work/$1" -maxdepth 1 -name "*.$2" | grep .
}
# holds LIST FILE...: the files are in the list, each with the end of its path.
holds() {
  local list=$1 file
  shift
  for file in "$@"; do
    grep -q -E "/$file( ->.*)?$" "$list" || fail "$file is not in $(basename "$list")"
  done
}
content=(include/zqColorConversion.h 'lib/([^/]*/)?pkgconfig/zqColorConversion\.pc'
  share/doc/zqColorConversion/README.md share/doc/zqColorConversion/examples/convert_frame.c)
if [ -e "$build/src/libzqColorConversion.so" ]; then
  content+=('lib/([^/]*/)?libzqColorConversion\.so' "lib/([^/]*/)?libzqColorConversion\.so\.$version")
fi
if [ -e "$build/src/libzqPicture.so" ]; then
  content+=('lib/([^/]*/)?libzqPicture\.so' 'lib/([^/]*/)?libzqPicture\.so\.[0-9.]+' include/zqPicture.h
    include/zqPicture.hpp 'lib/([^/]*/)?pkgconfig/zqPicture\.pc')
fi
[ ! -e "$build/tools/zqconvert/zqconvert" ] || content+=(bin/zqconvert)

archive=$(make_package TGZ tar.gz)
tar -tzf "$archive" >"$work/archive.txt"
holds "$work/archive.txt" "${content[@]}"
equal "the archive's top directories" "$(cut -d / -f 1 "$work/archive.txt" | sort -u)" "$(basename "$archive" .tar.gz)"

made=archive
if command -v dpkg-deb >/dev/null; then
  package=$(make_package DEB deb)
  dpkg-deb -c "$package" >"$work/deb.txt"
  holds "$work/deb.txt" "${content[@]}"
  if grep -v -E ' \./(usr/.*)?$' "$work/deb.txt"; then fail "there are files outside of /usr"; fi
  equal "the owners in it" "$(awk '{ print $2 }' "$work/deb.txt" | sort -u)" root/root
  field() { dpkg-deb -f "$package" "$1"; }
  equal "its name" "$(field Package)" zqcolorconversion
  equal "its version" "$(field Version)" "$version"
  for name in Maintainer Section Description Architecture; do
    [ -n "$(field "$name")" ] || fail "the package has no $name"
  done
  case $(field Depends) in *libc6*) ;; *) fail "the package depends on: $(field Depends)" ;; esac
  if [ -e "$build/src/libzqColorConversion.so" ]; then
    dpkg-deb --ctrl-tarfile "$package" | tar -xO | grep ldconfig >/dev/null || fail "ldconfig is not called"
  fi
  dpkg-deb -x "$package" "$work/unpacked"
  if find "$work/unpacked" -type f -exec readelf -d {} + 2>/dev/null | grep -E 'R(UN)?PATH'; then
    fail "a file in /usr says where its libraries are"
  fi
  made+=" and .deb"
fi
verdict "$made hold what they should"
