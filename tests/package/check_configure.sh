#!/usr/bin/env bash
# Configures the project as people do and looks at what comes of it: the build type, and where the pkg-config file sends
# those who use it for every kind of library directory. Nothing is built.
# usage: check_configure.sh SOURCE_DIR
set -euo pipefail
source=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset CMAKE_BUILD_TYPE
failed=0
equal() { # WHAT GOT WANTED
  [ "$2" = "$3" ] || { echo "FAILED: $1 is $2, not $3"; failed=1; }
}
configure() { # NAME OPTION...
  local name=$1
  shift
  cmake -S "$source" -B "$work/$name" -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=OFF "$@" >/dev/null
}
build_type() { sed -n 's/^CMAKE_BUILD_TYPE:[A-Z]*=//p' "$work/$1/CMakeCache.txt"; }

# resolved DIRECTORY VARIABLE: what pkg-config says for the file in that directory, without dots.
resolved() { realpath -m "$(PKG_CONFIG_LIBDIR=$1 pkg-config --variable="$2" zqColorConversion)"; }

configure plain -DCMAKE_INSTALL_LIBDIR=lib
equal "the build type without a wish" "$(build_type plain)" Release
configure deep -DCMAKE_BUILD_TYPE=Debug -DCMAKE_INSTALL_LIBDIR=lib/some-machine
equal "the build type that was asked for" "$(build_type deep)" Debug
configure absolute -DCMAKE_INSTALL_PREFIX="$work/there" -DCMAKE_INSTALL_LIBDIR="$work/elsewhere/lib"

for name in plain:lib deep:lib/some-machine; do
  libdir=$work/anywhere/${name#*:}
  mkdir -p "$libdir/pkgconfig"
  cp "$work/${name%:*}/zqColorConversion.pc" "$libdir/pkgconfig"
  equal "libdir of $name" "$(resolved "$libdir/pkgconfig" libdir)" "$libdir"
  equal "includedir of $name" "$(resolved "$libdir/pkgconfig" includedir)" "$work/anywhere/include"
done
equal "libdir given as absolute" "$(resolved "$work/absolute" libdir)" "$work/elsewhere/lib"
equal "includedir beside it" "$(resolved "$work/absolute" includedir)" "$work/there/include"

[ $failed -eq 0 ] && echo "build types and pkg-config paths are as promised"
exit $failed
