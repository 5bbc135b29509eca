#!/usr/bin/env bash
# Reads the built shared object: what it exports, what it needs, what runs when it is loaded, how large it is.
# usage: check_shared_object.sh LIBRARY STATIC_LIBRARY EXPORT_MAP [LIMIT] (bytes that its code and data stay below)
set -euo pipefail
library=$1 static=$2 map=$3 limit=${4:-}
failed=0
fail() { echo "FAILED: $*"; failed=1; }

# By the version node: how many names there are, and whose they are.
node=$(sed -n '1s/ {$//p' "$map")
case $node in
  ZQCC_*) name=zqColorConversion count=13 ;;
  ZQP_*) name=zqPicture count=9 ;;
  *) name='' count=0; fail "the version node is called $node" ;;
esac
expected=$(grep -oE '^ +zq[A-Za-z0-9]+;' "$map" | tr -d ' ;' | LC_ALL=C sort)
[ "$(wc -l <<<"$expected")" -eq $count ] || fail "the export list does not hold $count names"
# Each name carries the version node, which is an absolute symbol itself.
exported=$(nm -D --with-symbol-versions --defined-only "$library" | awk '$2 != "A" { print $3 }' | LC_ALL=C sort)
versioned=$(sed "s/\$/@@$node/" <<<"$expected")
[ "$exported" = "$versioned" ] || fail "exports differ from the list: $(diff <(echo "$versioned") <(echo "$exported"))"

needed=$(readelf -d "$library" | sed -n 's/.*NEEDED.*\[\(.*\)\]/\1/p')
[ "$needed" = "libc.so.6" ] || fail "needs more than the C library: $needed"

# Weak names belong to the linker's own start-up code.
undefined=$(nm -D --undefined-only "$library" | awk '$1 == "U" {sub(/@.*/, "", $2); print $2}')
for call in $undefined; do
  case $call in
    malloc|free|memcmp|memcpy|memmove|memset|__stack_chk_fail|__memcpy_chk) ;;
    *) fail "calls $call" ;;
  esac
done
[ -n "$undefined" ] || fail "no undefined names at all: was the library read?"

initialisers=$(readelf -SW "$static" | grep -E '\.(init_array|ctors|preinit_array)' || true)
[ -z "$initialisers" ] || fail "static constructors: $initialisers"
# Beyond the linker's own start-up code, which has one, such constructors could also come from libgcc, whose answer to
# questions about the processor is one, with names that do not leave the object.
pointer=$(readelf -h "$library" | awk '/Class:/ { print ($2 == "ELF64") ? 8 : 4 }')
for section in .init_array .ctors .preinit_array; do
  size=$(size -A "$library" | awk -v name=$section '$1 == name { print $2 }')
  [ "${size:-0}" -le "$pointer" ] || fail "static constructors: $section has $size bytes"
done
foreign=$(nm -u "$static" 2>/dev/null | awk '{ print $NF }' | grep -E '^(__cpu_|_ZN3hwy)' | LC_ALL=C sort -u |
  grep -v -x -F -f <(nm --defined-only "$static" 2>/dev/null | awk 'NF > 2 { print $3 }') | tr '\n' ' ' || true)
[ -z "$foreign" ] || fail "of libgcc or Highway: $foreign"

if [ -n "$limit" ]; then
  bytes=$(size "$library" | awk 'NR == 2 { print $1 + $2 }')
  [ "$bytes" -lt "$limit" ] || fail "code and data of $bytes bytes, not below $limit"
fi
# The node and the object's name change together.
soname=$(readelf -d "$library" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p')
[ "$soname" = "lib$name.so.${node#*_}" ] || fail "soname $soname, but version node $node"

[ $failed -eq 0 ] && echo "$count exports, needs libc only, calls: $(echo $undefined)"
exit $failed
