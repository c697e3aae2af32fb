# Compares two catalogues of the plug-in's declarations, and prints each difference that a user can notice, with the
# kind of release that it requires. The last line is the smallest allowed kind: major, minor, or patch.
#   awk -f compare_catalogues.awk OLD NEW
# docs/releases.md defines breaking changes. The `xojo-host catalogue` command prints a catalogue.
FNR == 1 { ++list; section = host = "" }
/^host version/ || /^$/ { next }
/^== host version/ { host = $4; next }
/^[A-Z]/ { host = "?" }  # the heading of the differences
host != "" { ReadDifference(); next }
/^[a-z]/ { section = Declared($0) }
{ Read(list, (/^ / ? section ": " : "") Declared($0), $0) }

END {
  for (i = 1; i <= count[1]; ++i) {
    name = names[1, i]
    if (!((2, name) in attributes)) Report("major", "gone: " name)
    else {
      Compare(name)
      if (place[2, name] < last) Report("major", "in another order: " name)
      last = place[2, name]
    }
  }
  for (i = 1; i <= count[2]; ++i)
    if (!((1, names[2, i]) in attributes)) Report("minor", "new: " names[2, i])
  for (key in declaration) CompareDifference(key)
  print worst == 2 ? "major" : worst == 1 ? "minor" : "patch"
}

# Returns the part of a line that identifies the declaration. Two spaces separate it from the attributes.
function Declared(line) {
  sub(/^ */, "", line)
  sub(/  .*/, "", line)
  return line
}

function Read(list, name, line) {
  names[list, ++count[list]] = name
  place[list, name] = count[list]
  attributes[list, name] = (match(line, /  super [^ ]+/) ? substr(line, RSTART, RLENGTH) : "") \
    (match(line, /  flags [^ ]+/) ? substr(line, RSTART, RLENGTH) : "") (line ~ /  Hidden=/ ? "  Hidden" : "")
  writable[list, name] = line ~ /  setter / && line !~ /  setter none/
}

function Compare(name) {
  if (attributes[1, name] != attributes[2, name])
    Report("major", "changed from" attributes[1, name] " to" attributes[2, name] ": " name)
  if (writable[1, name] != writable[2, name])
    Report(writable[2, name] ? "minor" : "major", (writable[2, name] ? "writable: " : "read-only: ") name)
}

# Reads a line about another host version: + marks a declaration that only that version has, - marks one that it lacks,
# and ~ marks one that differs.
function ReadDifference() {
  if (/^  [a-z]/) section = Declared($0)
  if (!/^[-+~]/) return
  isIn[list, host, $0]
  declaration[host, $0] = section ": " Declared(substr($0, 2))
}

function CompareDifference(key,    part, kind) {
  split(key, part, SUBSEP)
  kind = substr(part[2], 1, 1)
  if (!((2, key) in isIn))
    Report(kind == "-" ? "minor" : "major", "no longer on host version " part[1] ": " part[2])
  else if (!((1, key) in isIn))
    Report(kind == "+" || !((1, declaration[key]) in attributes) ? "minor" : "major", "now on host version " part[1] ": " part[2])
}

function Report(kind, text) {
  print kind ": " text
  level = kind == "major" ? 2 : 1
  if (level > worst) worst = level
}
