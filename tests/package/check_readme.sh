#!/usr/bin/env bash
# The examples in the README are, line for line, the files that the tests build and run.
# usage: check_readme.sh SOURCE_DIR
set -euo pipefail
shows() { # LANGUAGE FILE
  local shown
  shown=$(awk -v fence='^```'"$1"'$' '$0 ~ fence {inside=1; next} /^```$/ {inside=0} inside' README.md)
  [ -n "$shown" ] || { echo "FAILED: README.md shows no example in $1"; exit 1; }
  diff <(echo "$shown") "$2" && echo "README.md shows $2"
}
cd "$1"
shows c examples/convert_frame.c
shows cpp examples/decoder_to_panel.cpp
