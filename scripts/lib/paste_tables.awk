# awk -f paste_tables.awk OUTPUT DOCUMENT: the document with its tables replaced by those of the benchmarks' output. A
# table is known by the first cell of its heading. A paragraph that begins with "Measured at commit" is replaced by the
# one of the output that does. What the document has no place for is an error.
function keyOf(line) {
  if (line ~ /^Measured at commit /) return "measured"
  if (line !~ /^\| /) return ""
  split(line, cells, " *[|] *")
  return cells[2]
}
FNR == 1 { ++file; inside = ""; fresh = 1 }
/^$/ { inside = ""; fresh = 1 }
fresh && /./ {
  fresh = 0
  key = keyOf($0)
  if (file == 1 && key != "") inside = key
  if (file == 2 && (key in block)) {
    inside = key
    printf "%s", block[key]
    pasted[key] = 1
  }
}
file == 1 && inside != "" { block[inside] = block[inside] $0 "\n" }
file == 2 && inside == ""
END {
  for (key in block)
    if (!(key in pasted)) {
      print "no place for: " key > "/dev/stderr"
      status = 1
    }
  exit status
}
