#!/usr/bin/env bash
# Reads the built shared object: what it exports, what it needs, what runs when it is loaded.
# usage: check_shared_object.sh LIBRARY STATIC_LIBRARY EXPORT_MAP
set -euo pipefail
library=$1 static=$2 map=$3
failed=0
fail() { echo "FAILED: $*"; failed=1; }

expected=$(grep -oE '^ +zq[A-Za-z0-9]+;' "$map" | tr -d ' ;' | LC_ALL=C sort)
[ "$(wc -l <<<"$expected")" -eq 13 ] || fail "the export list does not hold thirteen names"
# Each name carries the version node, which is an absolute symbol itself.
node=$(sed -n '1s/ {$//p' "$map")
exported=$(nm -D --with-symbol-versions --defined-only "$library" | awk '$2 != "A" { print $3 }' | LC_ALL=C sort)
versioned=$(sed "s/\$/@@$node/" <<<"$expected")
[ "$exported" = "$versioned" ] || fail "exports differ from the list: $(diff <(echo "$versioned") <(echo "$exported"))"

needed=$(readelf -d "$library" | sed -n 's/.*NEEDED.*\[\(.*\)\]/\1/p')
[ "$needed" = "libc.so.6" ] || fail "needs more than the C library: $needed"

# Weak names belong to the linker's own start-up code.
undefined=$(nm -D --undefined-only "$library" | awk '$1 == "U" {sub(/@.*/, "", $2); print $2}')
for name in $undefined; do
  case $name in
    malloc|free|memcpy|memmove|memset|__stack_chk_fail|__memcpy_chk) ;;
    *) fail "calls $name" ;;
  esac
done
[ -n "$undefined" ] || fail "no undefined names at all: was the library read?"

initialisers=$(readelf -SW "$static" | grep -E '\.(init_array|ctors|preinit_array)' || true)
[ -z "$initialisers" ] || fail "static constructors: $initialisers"
# The node and the object's name change together.
soname=$(readelf -d "$library" | sed -n 's/.*SONAME.*\[\(.*\)\]/\1/p')
[ "$soname" = "libzqColorConversion.so.${node#ZQCC_}" ] || fail "soname $soname, but version node $node"

[ $failed -eq 0 ] && echo "13 exports, needs libc only, calls: $(echo $undefined)"
exit $failed
