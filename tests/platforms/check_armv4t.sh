#!/usr/bin/env bash
# Reads a static library and fails when an object in it is not for ARMv4T, or holds an instruction that the ARM state of
# ARMv4T does not have (a list of what it has: whatever a later architecture brought is not on it).
# usage: check_armv4t.sh LIBRARY
set -euo pipefail
library=$1
failed=0

architectures=$(arm-linux-gnueabi-readelf -A "$library" | awk -F': ' '/Tag_CPU_arch:/ { print $2 }' | sort -u)
objects=$(arm-linux-gnueabi-ar t "$library" | wc -l)
tagged=$(arm-linux-gnueabi-readelf -A "$library" | grep -c 'Tag_CPU_arch:' || true)
if [ "$architectures" != v4T ] || [ "$tagged" -ne "$objects" ]; then
  echo "FAILED: $tagged of $objects objects name an architecture, namely: ${architectures//$'\n'/ }"
  failed=1
fi
if arm-linux-gnueabi-readelf -A "$library" | grep -E 'Tag_(FP_arch|Advanced_SIMD_arch|ABI_VFP_args)'; then
  echo "FAILED: an object uses floating-point registers"
  failed=1
fi

foreign=$(arm-linux-gnueabi-objdump -d --no-show-raw-insn "$library" | awk -F'\t' '
  BEGIN {
    condition = "(eq|ne|cs|hs|cc|lo|mi|pl|vs|vc|hi|ls|ge|lt|gt|le|al)?"
    arithmetic = "(and|eor|sub|rsb|add|adc|sbc|rsc|orr|mov|bic|mvn|mul|mla|umull|umlal|smull|smlal|lsl|lsr|asr|ror|rrx)s?"
    memory = "(ldr|str)(b|h|t|bt)?|ldrs[bh]|(ldm|stm)(ia|ib|da|db|fd|fa|ed|ea)?|push|pop|swpb?"
    other = "tst|teq|cmp|cmn|b|bl|bx|svc|mrs|msr"
    known = "^((" arithmetic ")|(" memory ")|(" other ")|nop)" condition "$"
    # objdump puts the condition before the s, the size and the mode in some forms and behind them in others.
    turned = "^((and|eor|sub|rsb|add|adc|sbc|rsc|orr|mov|bic|mvn|mul|mla|umull|umlal|smull|smlal|lsl|lsr|asr|ror|rrx)" \
             condition "s|(ldr|str)" condition "(b|h|t|bt|sb|sh)|(ldm|stm)" condition "(ia|ib|da|db))$"
  }
  /^ *[0-9a-f]+:/ {
    split($2, words, " ")
    if (words[1] ~ /^\./) next # data between the functions
    ++instructions
    if (words[1] !~ known && words[1] !~ turned) print words[1]
  }
  END { if (instructions < 10000) print "only " instructions " instructions read" }' | sort | uniq -c | sort -rn)
if [ -n "$foreign" ]; then
  echo "FAILED: not in ARMv4T:"
  echo "$foreign"
  failed=1
fi
[ $failed -eq 0 ] && echo "$objects objects, ARMv4T instructions only"
exit $failed
