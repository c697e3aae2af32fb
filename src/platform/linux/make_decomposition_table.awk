# Generates decomposition_table.inc from UnicodeData.txt (Debian package unicode-data):
#   awk -v version=15.0.0 -f make_decomposition_table.awk /usr/share/unicode/UnicodeData.txt >decomposition_table.inc
BEGIN { FS = ";" }

$4 != "0" { classes[++class_count] = "C(0x" $1 ", " $4 ")" }

# Skips compatibility decompositions, which begin with a tag such as <font>. UnicodeData.txt does not list the
# decompositions of Hangul syllables, which can be computed.
$6 != "" && $6 !~ /^</ {
  count = split($6, parts, " ")
  pairs[++pair_count] = "D(0x" $1 ", 0x" parts[1] ", " (count > 1 ? "0x" parts[2] : "0") ")"
}

function write(name, type, rows, count, per_line,    i) {
  printf "\nconstexpr %s %s[] = {\n", type, name
  for (i = 1; i <= count; i++)
    printf "%s%s,%s", (i % per_line == 1 ? "    " : " "), rows[i], (i % per_line == 0 || i == count ? "\n" : "")
  print "};"
}

END {
  print "// Canonical decompositions and combining classes of Unicode " version ", both ordered by the character."
  print "// Made by make_decomposition_table.awk: do not edit."
  write("kDecompositions", "std::uint64_t", pairs, pair_count, 3)
  write("kCombiningClasses", "std::uint32_t", classes, class_count, 6)
}
