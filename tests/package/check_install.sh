#!/usr/bin/env bash
# Installs into a temporary prefix and builds a C and a C++ program against it, through CMake and through pkg-config.
# usage: check_install.sh BUILD_DIR CONSUMER_SOURCE_DIR
set -euo pipefail
build=$1 consumer=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(dirname "$(find "$prefix" -name 'libzqColorConversion.so' | head -n 1)")
[ -f "$prefix/include/zqColorConversion.h" ] || { echo "FAILED: no header installed"; exit 1; }

cmake -S "$consumer" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/consumer_c" && "$work/cmake/consumer_cpp"

export PKG_CONFIG_PATH=$libdir/pkgconfig
# The file must find the prefix that it was installed into, which is not the configured one.
flags=$(pkg-config --cflags --libs zqColorConversion)
cc "$consumer/consumer.c" -o "$work/c" $flags -Wl,-rpath,"$libdir"
c++ -x c++ "$consumer/consumer.c" -o "$work/cpp" $flags -Wl,-rpath,"$libdir"
"$work/c" && "$work/cpp"
echo "C and C++ programs build and run against the installed package"
