# Checks the #include lines of the files listed on standard input, and prints which module includes which:
#   find src -name '*.h' -o -name '*.cpp' | awk -f includes.awk -v roots="src" -v diagram=docs/architecture.md
# A header and its source form one module, as do platform/x.h and its implementations in platform/linux and
# platform/macos. `roots` are the folders that include paths may start from. Errors go to standard error.
BEGIN {
  allowed["src/arrays", "src/dates"]
  allowed["src/locale", "src/dates"]
  allowed["src/process", "src/arrays"]
  rootCount = split(roots, root)
  # Folders on the same line of the diagram form one layer.
  while (fences < 2 && (getline line < diagram) > 0) {
    ++row
    if (line ~ /^```/) ++fences
    for (; fences == 1 && match(line, /src\/[a-z\/]*[a-z]/); line = substr(line, RSTART + RLENGTH))
      layer[substr(line, RSTART, RLENGTH)] = row
  }
}

{ files[$0] }

END {
  for (file in files)
    while ((getline line < file) > 0)
      if (split(line, part, "\"") > 2 && part[1] ~ /^ *# *(include|import) *$/) Check(file, part[2])
  exit failures > 0
}

function Check(file, path,    i, target, from, to) {
  for (i = 1; i <= rootCount && !(target in files); ++i) target = root[i] "/" path
  if (!(target in files)) return Complain(file, "includes a file outside these folders: " path)
  if (file ~ /^src\//) {
    from = FolderOf(file)
    to = FolderOf(target)
    if (from == "" || to == "")
      Complain(file, "is not in a folder of the diagram, or includes a file that is not: " path)
    else if (layer[to] < layer[from])
      Complain(file, "includes a file of a higher layer: " path)
    else if (layer[to] == layer[from] && to != from && !((from, to) in allowed))
      Complain(file, "includes a file of another subsystem: " path)
  }
  if (ModuleOf(file) != ModuleOf(target)) print ModuleOf(file), ModuleOf(target)
}

# Returns the folder in the diagram that contains the file.
function FolderOf(file,    folder) {
  for (folder = file; sub(/\/[^\/]*$/, "", folder);)
    if (folder in layer) return folder
  return ""
}

function ModuleOf(file) {
  sub(/\.[a-z]+$/, "", file)
  sub(/^src\/platform\/(linux|macos)\//, "src/platform/", file)
  return file
}

function Complain(file, words) {
  print file ": " words > "/dev/stderr"
  ++failures
}
