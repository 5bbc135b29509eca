#!/usr/bin/env bash
# The C example in the README is, line for line, the file that the tests build and run.
# usage: check_readme.sh SOURCE_DIR
set -euo pipefail
shown=$(awk '/^```c$/ {inside=1; next} /^```$/ {inside=0} inside' "$1/README.md")
[ -n "$shown" ] || { echo "FAILED: README.md shows no C example"; exit 1; }
diff <(echo "$shown") "$1/examples/convert_frame.c" && echo "README.md shows examples/convert_frame.c"
