#!/usr/bin/env bash
# Installs the static library and builds C programs against it, through CMake without C++ and through pkg-config. The
# archive is the one of the build that runs this test: the same objects as in a build with BUILD_SHARED_LIBS=OFF, which
# is only configured here.
# usage: check_static.sh SOURCE_DIR CONSUMER_SOURCE_DIR GENERATOR STATIC_LIBRARY [STATIC_ZQPICTURE]
source=$1 consumer=$2
export CMAKE_GENERATOR=$3
archive=$4 picture=${5:-}
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
prefix=$work/prefix
cmake -S "$source" -B "$work/build" -DBUILD_SHARED_LIBS=OFF -DZQCC_BUILD_TESTS=OFF -DZQCC_BUILD_TOOLS=OFF \
  -DCMAKE_INSTALL_LIBDIR=lib -DZQCC_PICTURE="$([ -n "$picture" ] && echo ON || echo OFF)" >/dev/null
cp "$archive" "$work/build/src/libzqColorConversion.a"
[ -z "$picture" ] || cp "$picture" "$work/build/src/libzqPicture.a"
cmake --install "$work/build" --prefix "$prefix" >/dev/null
equal "what is installed in lib" "$(find "$prefix/lib" -maxdepth 1 -type f -printf '%f\n' | LC_ALL=C sort | tr '\n' ' ')" \
  "libzqColorConversion.a ${picture:+libzqPicture.a }"

export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
cmake -S "$consumer" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" -DONLY_C=ON \
  -DWITH_PICTURE="$([ -n "$picture" ] && echo ON || echo OFF)" \
  -DWANTED="$(pkg-config --modversion zqColorConversion)" >/dev/null
cmake --build "$work/cmake" >/dev/null
read -r -a flags < <(pkg-config --cflags --libs --static zqColorConversion)
cc "$consumer/consumer.c" -o "$work/c" "${flags[@]}"
programs=("$work/cmake/consumer_c" "$work/c")
if [ -n "$picture" ]; then
  read -r -a flags < <(pkg-config --cflags --libs --static zqPicture)
  cc "$consumer/picture.c" -o "$work/picture" "${flags[@]}"
  programs+=("$work/cmake/picture_c" "$work/picture")
fi
for program in "${programs[@]}"; do
  "$program" || fail "$program does not convert"
  if readelf -d "$program" | grep -E 'NEEDED.*(zq|stdc\+\+|libm\.)'; then fail "$program needs more than the C library"; fi
done
verdict "C programs build and run with the installed static library"
