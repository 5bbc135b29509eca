#!/usr/bin/env bash
# Installs into a temporary prefix and builds a C and a C++ program against it, through CMake and through pkg-config.
# usage: check_install.sh BUILD_DIR CONSUMER_SOURCE_DIR GENERATOR
build=$1 consumer=$2
export CMAKE_GENERATOR=$3
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >/dev/null
libdir=$(dirname "$(find "$prefix" -name 'libzqColorConversion.*' ! -name '*.pc' | head -n 1)")
for file in include/zqColorConversion.h share/doc/zqColorConversion/{README.md,CHANGELOG.md,docs/behaviour.md} \
  share/doc/zqColorConversion/examples/convert_frame.c; do
  [ -f "$prefix/$file" ] || fail "$file is not installed"
done

# zqPicture is in the same package where it was built, and nothing of it elsewhere.
picture=OFF
[ ! -e "$build/src/zqPicture.map" ] && [ ! -e "$build/src/libzqPicture.a" ] || picture=ON
installed=$(find "$prefix" -iname '*zqPicture*' ! -path '*/share/*' -printf '%f\n' | LC_ALL=C sort | tr '\n' ' ')
case $picture:$installed in
  OFF:) ;;
  ON:libzqPicture.*zqPicture.h\ zqPicture.hpp\ zqPicture.pc\ ) ;;
  *) fail "of zqPicture ($picture) there is: $installed" ;;
esac

export PKG_CONFIG_PATH=$libdir/pkgconfig
cmake -S "$consumer" -B "$work/cmake" -DCMAKE_PREFIX_PATH="$prefix" \
  -DWANTED="$(pkg-config --modversion zqColorConversion)" -DWITH_PICTURE=$picture >/dev/null
cmake --build "$work/cmake" >/dev/null
"$work/cmake/consumer_c" && "$work/cmake/consumer_cpp"
[ $picture = OFF ] || { "$work/cmake/picture_c" && "$work/cmake/picture_cpp"; }

# The file must find the prefix that it was installed into, which is not the configured one.
read -r -a flags < <(pkg-config --cflags --libs zqColorConversion)
cc "$consumer/consumer.c" -o "$work/c" "${flags[@]}" -Wl,-rpath,"$libdir"
c++ -x c++ "$consumer/consumer.c" -o "$work/cpp" "${flags[@]}" -Wl,-rpath,"$libdir"
"$work/c" && "$work/cpp"
if [ $picture = ON ]; then
  read -r -a flags < <(pkg-config --cflags --libs zqPicture)
  cc -std=c99 -pedantic-errors "$consumer/picture.c" -o "$work/c" "${flags[@]}" -Wl,-rpath,"$libdir"
  c++ -std=c++20 -fno-exceptions "$consumer/picture.cpp" -o "$work/cpp" "${flags[@]}" -Wl,-rpath,"$libdir"
  "$work/c" && "$work/cpp"
fi

# zqconvert finds the library below a prefix of its own, and says nothing about where it is where the loader knows.
runpath() { readelf -d "$1" | sed -n 's/.*R.*PATH.*\[\(.*\)\]/\1/p'; }
if [ -x "$prefix/bin/zqconvert" ]; then
  "$prefix/bin/zqconvert" --version >/dev/null || fail "the installed zqconvert does not run"
  source=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt")
  for pair in docs/zqconvert.1:man/man1/zqconvert.1 \
    tools/zqconvert/zqconvert.bash:bash-completion/completions/zqconvert; do
    cmp "$source/${pair%:*}" "$prefix/share/${pair#*:}" || fail "${pair%:*} is missing"
  done
  [ ! -e "$libdir/libzqColorConversion.so" ] ||
    equal "the run path below a prefix of its own" "$(runpath "$prefix/bin/zqconvert")" "\$ORIGIN/..${libdir#"$prefix"}"
  DESTDIR=$work/root cmake --install "$build" --prefix /usr >/dev/null
  equal "the run path below /usr" "$(runpath "$work/root/usr/bin/zqconvert")" ''
fi
verdict "C and C++ programs build and run against the installed package"
