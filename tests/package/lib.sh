# shellcheck shell=bash
# What the check_*.sh scripts here share: a directory of their own in $work, which goes when they end, and their verdict.
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0
fail() { echo "FAILED: $*"; failed=1; }
equal() { # WHAT GOT WANTED
  [ "$2" = "$3" ] || fail "$1 is $2, not $3"
}
# What the caller's environment wishes does not count.
unset CMAKE_BUILD_TYPE DESTDIR

# verdict TEXT: ends the script, with the text if nothing failed.
verdict() {
  [ "$failed" -eq 0 ] && echo "$1"
  exit "$failed"
}
# compile_lines DIRECTORY WORD: how many compilations of the build there have the word among their options.
compile_lines() {
  grep '"command"' "$1/compile_commands.json" | grep -c -e " $2 " || true
}
