#!/usr/bin/env bash
# The project's scripts where they cannot have it their way: no git, no sources, another apt at work. Programs that they
# call are replaced by stand-ins that write down how they were called.
# usage: check_scripts.sh SOURCE_DIR
source=$1
# shellcheck source=tests/package/lib.sh
. "$(dirname "$0")/lib.sh"
mkdir "$work/bin"
PATH=$work/bin:$PATH
stand_in() { # NAME: its text comes on standard input
  { echo '#!/bin/sh'; cat; } >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}

# --- scripts/check in an unpacked archive ------------------------------------------------------------------------------
tree=$work/tree
mkdir -p "$tree"/{scripts,src/room,build/release,tools}
cp -r "$source/scripts/check" "$source/scripts/lib" "$source/scripts/packages" "$tree/scripts"
echo 'echo "Status: install ok installed"' | stand_in dpkg
: | stand_in apt-get
# Written down, and no further: the status ends the script.
echo "printf '%s\n' \"\$@\" | grep -v '^-' | tr '\n' ' ' >'$work/formatted'; exit 9" | stand_in clang-format
if "$tree/scripts/check" >"$work/log" 2>&1; then fail "scripts/check is content with no sources"; fi
[ ! -e "$work/formatted" ] || fail "scripts/check formats nothing"
touch "$tree/src/room/one.cpp" "$tree/src/room/one.h" "$tree/tools/two.cpp" "$tree/build/release/made.cpp"
status=0
"$tree/scripts/check" >"$work/log" 2>&1 || status=$?
equal "the status of scripts/check" "$status" 9
equal "what scripts/check looks at" "$(cat "$work/formatted")" "src/room/one.cpp src/room/one.h tools/two.cpp "

# --- Another apt at work ------------------------------------------------------------------------------------------------
# In apt's words. The lock is free at the third attempt.
stand_in apt-get <<STAND_IN
echo "\$*" >>'$work/calls'
if [ \$(wc -l <'$work/calls') -lt \$LOCKED ]; then
  echo 'E: Could not get lock /var/lib/apt/lists/lock. It is held by process 7 (apt-get)' >&2
  exit 100
fi
STAND_IN
echo 'exit 1' | stand_in dpkg
echo 'exec "$@"' | stand_in sudo
. "$source/scripts/lib/packages.sh"
LOCKED=3 need_packages one-package 2>"$work/log" || fail "packages are not waited for: $(cat "$work/log")"
equal "the number of calls" "$(wc -l <"$work/calls")" 4
equal "the last call" "$(tail -n 1 "$work/calls" | sed 's/Timeout=[0-9]*/Timeout=/')" \
  "-o DPkg::Lock::Timeout= install -y -qq --no-install-recommends one-package"
grep -q 'Another apt is at work' "$work/log" || fail "nothing is said about waiting"

rm "$work/calls"
apt_patience=2
if LOCKED=1000 need_packages one-package 2>"$work/log"; then fail "a lock that stays is no failure"; fi
grep -q 'Another apt has kept its lock for 2 seconds' "$work/log" || fail "the reason is missing: $(cat "$work/log")"

# Anything else is told at once.
rm "$work/calls"
echo "echo call >>'$work/calls'; echo 'E: Failed to fetch' >&2; exit 100" | stand_in apt-get
if need_packages one-package 2>"$work/log"; then fail "what cannot be installed is no failure"; fi
equal "the number of calls without a network" "$(wc -l <"$work/calls")" 1
grep -q 'Is the network up?' "$work/log" || fail "the question for the network is missing"

verdict "scripts find their sources without git and wait for another apt"
