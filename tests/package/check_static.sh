#!/usr/bin/env bash
# Installs the static library and builds C programs against it, through CMake without C++ and through pkg-config. The
# archive is the one of the build that runs this test: the same objects as in a build with BUILD_SHARED_LIBS=OFF, which
# is only configured here.
# usage: check_static.sh SOURCE_DIR STATIC_LIBRARY CONSUMER_SOURCE_DIR GENERATOR
source=$1 archive=$2 consumer=$3
export CMAKE_GENERATOR=$4
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
prefix=$work/prefix
cmake -S "$source" -B "$work/build" -DBUILD_SHARED_LIBS=OFF -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=OFF \
  -DCMAKE_INSTALL_LIBDIR=lib >/dev/null
cp "$archive" "$work/build/src/libzqColorConversion.a"
cmake --install "$work/build" --prefix "$prefix" >/dev/null
equal "what is installed in lib" "$(find "$prefix/lib" -maxdepth 1 -type f -printf '%f ')" 'libzqColorConversion.a '

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
cmake -S "$consumer" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DONLY_C=ON \
  -DWANTED="$(pkg-config --modversion zqColorConversion)" >/dev/null
cmake --build "$work/cmake" >/dev/null
read -r -a flags < <(pkg-config --cflags --libs --static zqColorConversion)
cc "$consumer/consumer.c" -o "$work/c" "${flags[@]}"
for program in "$work/cmake/consumer_c" "$work/c"; do
  "$program" || fail "$program does not convert"
  if readelf -d "$program" | grep -E 'NEEDED.*(zqColor|stdc\+\+)'; then fail "$program needs more than the C library"; fi
done
verdict "C programs build and run with the installed static library"
