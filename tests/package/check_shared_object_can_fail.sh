#!/usr/bin/env bash
# The check of the shared object notices what it is there for: the library is linked once more with mistakes beside it.
# usage: check_shared_object_can_fail.sh STATIC_LIBRARY EXPORT_MAP C_COMPILER CXX_COMPILER
static=$1 map=$2 c_compiler=$3 compiler=$4
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
checker=$(dirname "$0")/check_shared_object.sh
node=$(sed -n '1s/ {$//p' "$map")

# linked NAME [LIMIT]: what the check says of the library with the objects of $work/NAME.cpp in it.
linked() {
  local name=$1
  "$compiler" -O2 -fPIC -c "$work/$name.cpp" -o "$work/$name.o"
  cp "$static" "$work/$name.a"
  ar q "$work/$name.a" "$work/$name.o"
  "$c_compiler" -shared -o "$work/$name.so" -Wl,--whole-archive "$work/$name.a" -Wl,--no-whole-archive \
    -Wl,--version-script="$map" -Wl,-soname,"libzqColorConversion.so.${node#ZQCC_}" -Wl,--gc-sections
  bash "$checker" "$work/$name.so" "$work/$name.a" "$map" "${@:2}"
}

# finds NAME WORDS [LIMIT]: the check fails, and says these words.
finds() {
  local said
  if said=$(linked "$1" "${@:3}"); then fail "$1 is not noticed"; fi
  grep -q -e "$2" <<<"$said" || fail "$1 is called: $said"
}

echo 'int harmless() { return 1; }' >"$work/nothing.cpp"
linked nothing 16777216 >"$work/said" || fail "a library without mistakes fails: $(cat "$work/said")"
finds nothing 'not below 1024' 1024
printf '#include <cstdlib>\nvoid *kept = std::malloc(3);\n' >"$work/constructor.cpp"
finds constructor 'static constructors'
echo 'namespace hwy { void Warn(const char *); } void warn() { hwy::Warn(""); }' >"$work/highway.cpp"
finds highway 'of libgcc or Highway: _ZN3hwy4WarnEPKc'
if [ "$(uname -m)" = x86_64 ]; then
  echo '__attribute__((used)) int avx2() { __builtin_cpu_init(); return __builtin_cpu_supports("avx2"); }' >"$work/processor.cpp"
  finds processor 'static constructors: .init_array'
  finds processor 'of libgcc or Highway: .*__cpu_'
fi
verdict "the check of the shared object can fail"
