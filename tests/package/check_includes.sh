#!/usr/bin/env bash
# Includes point down: a file of the library includes the public header, its own room, and rooms below it. Neighbours do
# not include one another. The order stands here once, the highest room first; rooms of one line are neighbours.
# usage: check_includes.sh SOURCE_DIR (the library's src)
set -euo pipefail
cd "$1"

order='picture
rows
frame
direct_rgb resize_rgb sameformat yuv
vector
kernels
tables
base'

# Prints what is wrong, one line a finding.
findings() {
  { grep -rn --include='*.cpp' --include='*.h' '^ *# *include *"' . || true; } | awk -F: -v order="$order" '
    BEGIN {
      floors = split(order, lines, "\n")
      for (i = 1; i <= floors; ++i) {
        rooms = split(lines[i], names, " ")
        for (k = 1; k <= rooms; ++k) floor[names[k]] = i
      }
    }
    {
      split($1, path, "/")
      room = path[2]
      included = $3
      sub(/^[^"]*"/, "", included)
      sub(/".*/, "", included)
      where = substr($1, 3) ":" $2 " includes " included
      seen = 1
      if (!(room in floor)) { print where ": no such room in the order: " room; next }
      if (included == "zqColorConversion.h" || included == "zqPicture.h") next
      split(included, parts, "/")
      target = parts[1]
      if (!(target in floor)) print where ": not in any room"
      else if (target != room && floor[target] <= floor[room]) print where ": points up or sideways"
    }
    END { if (!seen) print "no include was found: is this the place of the sources?" }'
}

found=$(findings)
if [ -n "$found" ]; then
  printf '%s\n' "$found"
  exit 1
fi
echo "all includes point down"
