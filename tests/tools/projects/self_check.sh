#!/usr/bin/env bash
# Runs the self-check project in the development host, first unchanged and then with one wrong line of expected output.
#   self_check.sh PROJECT_FOLDER FOLDER HOST...
# The script and its files are written to FOLDER. HOST is a command that runs the development host from any folder.
set -euo pipefail
project=$1
cd "$2"
shift 2

# The development host's language has no modules, so all methods go into one script. Module methods that are not global
# get the module's name as a prefix. A property becomes a function with a static variable.
flatten() {
  local file module method renamings
  for file in "$project"/*.xojo_code; do
    module=$(basename "$file" .xojo_code)
    renamings=(-e 's/\b(\w+Example|Checks)\.(\w+)/\1_\2/g')
    while read -r method; do
      renamings+=(-e "s/\b$method\b/${module}_$method/g")
    done < <(sed -nE 's/^\t\tProtected (Sub|Function) (\w+)\(.*/\2/p' "$file")
    sed -nE '/^\t#tag (Method|Event)/,/^\t#tag End/{/^\t#tag/d; s/^\t\t//; s/^(Protected|Private) //; p}' "$file" |
      sed -E "${renamings[@]}" -e 's/\bXojoVersionString\b/"of the development host"/'
    sed -nE 's/^\t\tPrivate (\w+)\(\) As String$/Function \1() As String()\n  Static lines() As String\n  Return lines\nEnd Function/p' "$file"
  done
  printf 'Var arguments() As String\nPrint "status " + Run(arguments).ToString\n'
}

expect() { # TEXT
  grep -qxF -- "$1" output.txt || {
    printf 'expected the line "%s" in:\n' "$1" >&2
    cat output.txt >&2
    exit 1
  }
}

count=$(grep -c '^	#tag Method' "$project/Checks.xojo_code")
flatten >self_check.xojo
"$@" run self_check.xojo >output.txt
expect "$count of $count as expected"
expect "Xojo of the development host"
expect "$(uname -srm)"
expect "status 0"

sed '0,/expected.Add("/s//&wrong /' self_check.xojo >wrong.xojo
"$@" run wrong.xojo >output.txt
expect "$((count - 1)) of $count as expected"
expect "$(sed -nE 's/^  expected.Add\("(wrong (.*))"\)$/arrays.xojo, line 1: expected '"'\1', found '\2'"'/p' wrong.xojo)"
expect "status 1"
