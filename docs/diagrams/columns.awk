# Prints each column of a Markdown table as a line: columns.awk -v table='BEGINNING OF THE HEADER ROW' PAGE
BEGIN { FS = " *[|] *" }
index($0, table) == 1 { isInside = 1 }
!/^[|]/ { isInside = 0 }
isInside && !/^[|]-/ {
  for (i = 2; i < NF; i++) {
    gsub(/,|`/, "", $i)
    sub(/ million$/, "000000", $i)
    columns[i] = columns[i] (rows == 0 ? "" : "|") $i
  }
  width = NF
  rows++
}
END { for (i = 2; i < width; i++) print columns[i] }
