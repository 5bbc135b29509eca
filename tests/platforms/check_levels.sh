#!/usr/bin/env bash
# Reads the x86-64 library's own objects: the code of a level has no instruction but those that its detection proves,
# and what is shared by all levels none but those that every such processor has. On Windows the code of levels moves no
# wide register to or from memory that would have to be aligned, since the stack is not.
# usage: check_levels.sh OBJDUMP STATIC_LIBRARY [windows]
set -euo pipefail
objdump=$1 library=$2 system=${3:-}

# The functions of a level have Highway's name for it in theirs; a shared inline function has not, whoever calls it.
"$objdump" -dC --no-show-raw-insn "$library" | awk -v target="$system" '
  BEGIN {
    after_sse2 = "^(pshufb|palignr|pabs[bwd]|ph(add|sub)s?[wd]|psign[bwd]|pmulhrsw|pmaddubsw|pblend(w|vb)|blendv?p[sd]" \
      "|ptest|pmov[sz]x|pm(in|ax)(sb|sd|uw|ud)|pmul(ld|dq)|pcmp(eq|gt)q|packusdw|pinsr[bdq]|pextr[bdq]|insertps" \
      "|extractps|round[sp][sd]|dpp[sd]|mpsadbw|phminposuw|movntdqa|lddqu|mov(d|sh|sl)dup|hadd|hsub|addsub|popcnt|crc32" \
      "|lzcnt|pclmul|aes)"
    beyond_all = "^((andn|bextr|blsi|blsr|blsmsk|bzhi|mulx|pdep|pext|rorx|sarx|shlx|shrx|lzcnt)$" \
      "|v?aes|v?pclmul|v?gf2p8|vcvtph|vcvtps2ph)"
    fused = "^vfn?m(add|sub)" # of 512 bits they belong to AVX-512F, narrower ones may be those of FMA
    beyond_avx512 = "^(vpmultishiftqb|vp(compress|expand)[bw]|vpsh[lr]d|vpopcnt|vpdp|vplzcnt" \
      "|vpconflict|vp2intersect|v.*ph$)"
    vbmi = "^(vpermi2b|vpermt2b|vpermb)$"
    wide_aligned = "^vmov(aps|apd|dqa|dqa32|dqa64)$"
  }
  /^[0-9a-f]+ <.*>:$/ {
    name = $0
    sub(/^[0-9a-f]+ </, "", name)
    sub(/>:$/, "", name)
    level = name ~ /N_AVX3_VBMI::/ ? "avx512vbmi" : name ~ /N_AVX3::/ ? "avx512" : name ~ /N_AVX2::/ ? "avx2" : name ~ /N_SSE4::/ ? "sse4" : "portable"
    next
  }
  /^ *[0-9a-f]+:\t/ {
    split($0, parts, "\t")
    split(parts[2], words, " ")
    mnemonic = words[1]
    if (mnemonic ~ /^(rep|repz|repnz|lock|notrack|bnd|data16|cs|ds)$/) mnemonic = words[2]
    text = parts[2]
    ++instructions[level]
    wrong = ""
    if (mnemonic ~ beyond_all || mnemonic ~ beyond_avx512) wrong = "no level has this"
    if (mnemonic ~ vbmi && level != "avx512vbmi") wrong = "VBMI"
    if (mnemonic ~ fused && !(level ~ /^avx512/ && text ~ /%zmm/)) wrong = "no level has this"
    if (level == "portable" && mnemonic ~ after_sse2) wrong = "not on every processor"
    if (level ~ /^(portable|sse4)$/ && (mnemonic ~ /^v[a-z]/ || text ~ /%[yz]mm/)) wrong = "AVX"
    if (level == "avx2" && (text ~ /%zmm|%[xy]mm(1[6-9]|2[0-9]|3[01])|%k[0-7]/)) wrong = "AVX-512"
    if (target == "windows" && mnemonic ~ wide_aligned && text ~ /%[yz]mm/) wrong = "wants aligned memory"
    if (wrong != "" && ++findings <= 1000) printf "FAILED: %s in %s code: %s (%s)\n", wrong, level, text, name
  }
  END {
    printf "instructions: portable %d, sse4 %d, avx2 %d, avx512 %d, avx512vbmi %d\n", instructions["portable"],
      instructions["sse4"], instructions["avx2"], instructions["avx512"], instructions["avx512vbmi"]
    if (!instructions["portable"] || !instructions["sse4"] || !instructions["avx2"] || !instructions["avx512"] ||
        !instructions["avx512vbmi"]) {
      print "FAILED: a level has no code"
      exit 1
    }
    exit (findings > 0)
  }'
