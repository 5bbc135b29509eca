#!/usr/bin/env bash
# Installs the packages into a bare system and uses them; scripts/test-fresh runs it there, as root.
# usage: use_packages.sh DEB TAR_GZ
set -euo pipefail
deb=$1 archive=$2
apt() { DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends "$@" >/dev/null; }
say() { printf '\n== %s\n' "$*"; }
work=$(mktemp -d)
cd "$work"
# Four grey pixels in 4:2:0.
printf '\200\200\200\200\200\200' >frame.raw
convert() { # PROGRAM
  rm -f out.bmp
  "$1" --size 2x2 --type i420 frame.raw out.bmp
  [ "$(head -c 2 out.bmp)" = BM ]
}

say "the .deb alone"
apt update
apt install "$deb"
zqconvert --version
convert zqconvert

say "developing with it"
apt install gcc libc6-dev pkg-config
example=$(dpkg -L zqcolorconversion | grep '/examples/convert_frame\.c$')
# shellcheck disable=SC2046 # options, not one word
gcc -o example "$example" $(pkg-config --cflags --libs zqColorConversion)
./example

say "taken away again"
apt remove zqcolorconversion
leftover=$(find /usr -iname '*zqcolorconversion*' -o -name '*zqconvert*')
[ -z "$leftover" ] || { echo "FAILED: these stayed: $leftover"; exit 1; }

# libpng came with the .deb and went unneeded, but is not taken away.
say "the .tar.gz"
mkdir /opt/colour
tar -xzf "$archive" -C /opt/colour --strip-components 1
/opt/colour/bin/zqconvert --version
convert /opt/colour/bin/zqconvert
export PKG_CONFIG_PATH=/opt/colour/lib/pkgconfig
# shellcheck disable=SC2046
gcc -o example /opt/colour/share/doc/zqColorConversion/examples/convert_frame.c \
  $(pkg-config --cflags --libs zqColorConversion) -Wl,-rpath,/opt/colour/lib
./example
