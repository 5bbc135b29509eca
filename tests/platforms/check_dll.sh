#!/usr/bin/env bash
# Reads a Windows DLL: exports exactly the names in the module definition file, undecorated, and needs nothing beyond the
# system and its C runtime.
# usage: check_dll.sh OBJDUMP DLL EXPORTS_DEF
set -euo pipefail
objdump=$1 dll=$2 definition=$3
failed=0
fail() { echo "FAILED: $*"; failed=1; }

expected=$(tr -d '\r' <"$definition" | awk 'found { print $1 } $1 == "EXPORTS" { found = 1 }' | LC_ALL=C sort)
case $definition in
  */zqPicture.def) count=9 ;;
  *) count=13 ;;
esac
[ "$(wc -l <<<"$expected")" -eq $count ] || fail "the definition file does not hold $count names"
exported=$("$objdump" -p "$dll" | awk '
  /^\[Ordinal\/Name Pointer\] Table/ { found = 1; next }
  found && /^\t\[/ { print $NF; next }
  { found = 0 }' | LC_ALL=C sort)
[ "$exported" = "$expected" ] || fail "exports differ: $(diff <(echo "$expected") <(echo "$exported"))"

libraries=$("$objdump" -p "$dll" | awk '/DLL Name:/ { print $3 }' | tr '\n' ' ')
[ -n "$libraries" ] || fail "no imports at all: was the library read?"
for name in $libraries; do
  case ${name,,} in
    kernel32.dll | msvcrt.dll | ucrtbase.dll | api-ms-win-crt-*.dll) ;;
    *) fail "needs $name" ;;
  esac
done
[ $failed -eq 0 ] && echo "$count undecorated exports, needs $libraries"
exit $failed
