# Sums the rows of gcovr's file table by folder of src/.
NR == 1 {
  for (i = 1; i <= NF; ++i) column[$i] = i
  next
}
{
  split($column["filename"], parts, "/")
  folder = parts[1] "/" parts[2]
  lines[folder] += $column["line_total"]
  lines_run[folder] += $column["line_covered"]
  branches[folder] += $column["branch_total"]
  branches_run[folder] += $column["branch_covered"]
}
function percent(part, all) { return all > 0 ? sprintf("%.1f%%", 100 * part / all) : "-" }
END {
  printf "%-16s %8s %9s\n", "folder", "lines", "branches"
  for (folder in lines)
    printf "%-16s %8s %9s\n", folder, percent(lines_run[folder], lines[folder]),
           percent(branches_run[folder], branches[folder]) | "sort"
}
