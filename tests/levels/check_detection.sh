#!/usr/bin/env bash
# The levels that the library detects are those that the kernel says the processor has.
# usage: check_detection.sh ZQCC_LEVELS ON|OFF (whether the build has vector code)
set -euo pipefail

expected=portable
flags=$(grep -m 1 -E '^(flags|Features)[[:space:]]*:' /proc/cpuinfo || true)

# has FLAG...: all of them are there.
has() {
  local flag
  for flag; do
    [[ " ${flags#*:} " == *" $flag "* ]] || return 1
  done
}

if [ "$2" = ON ]; then
  if [ -z "$flags" ]; then
    echo "skipped: /proc/cpuinfo says nothing about the processor"
    exit 77
  fi
  if has asimd; then
    expected="portable neon"
  elif has pni ssse3 sse4_1 sse4_2 popcnt; then
    expected+=" sse4"
    if has avx avx2; then
      expected+=" avx2"
      if has avx512f avx512dq avx512bw avx512vl; then
        expected+=" avx512"
        if has avx512vbmi; then expected+=" avx512vbmi"; fi
      fi
    fi
  fi
fi

detected=$("$1" | sed -n 's/^detected //p')
if [ "$detected" != "$expected" ]; then
  echo "FAILED: detected '$detected', but the processor has '$expected'"
  exit 1
fi
echo "detected: $detected"
