#!/usr/bin/env bash
# Makes changes to a catalogue of declarations and checks the kind of release that each change requires:
#   compare_catalogues.sh CATALOGUE
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
changed=$(mktemp)
trap 'rm -f "$changed"' EXIT
status=0

expect() { # KIND SED-SCRIPT NOTE
  local found
  sed "$2" "$catalogue" >"$changed"
  [ "$1" = patch ] || ! cmp -s "$catalogue" "$changed" || { echo "$3: nothing was changed"; status=1; }
  found=$(awk -f packaging/release/compare_catalogues.awk "$catalogue" "$changed" | tail -n 1)
  [ "$found" = "$1" ] || { echo "$3: $found instead of $1"; status=1; }
}

catalogue=$1
old_host='/^== host version 2020.010/,/module SortZKT/{/module SortZKT/a -   '
reverse='method ReverseZKT(extends theArray() as Color)'
expect patch '' 'no change'
expect patch 's/  getter standard/  getter own/' 'another way to read a property'
expect patch 's/^Differences/Changes/' 'another heading'
expect minor "/^  $reverse/{p;s/Color/Point/}" 'a new method'
expect minor "/^  $reverse/{p;s/Color/Point/};$old_host${reverse/Color/Point}
}" \
  'a new method that older hosts lack'
expect minor '/^-   method /{0,/^-/d}' 'an old host gains a method'
expect minor '/property CrashCounter/s/setter none/setter own/' 'a property becomes writable'
expect major '/property Debugging/s/setter own/setter none/' 'a property becomes read-only'
expect major "/^  $reverse/d" 'a missing method'
expect major "/^  $reverse/s/flags 0x14/flags 0x4/" 'other flags'
expect major "/^  $reverse/{h;d};/ReverseZKT(extends theArray() as Currency)/G" 'another order'
expect major 's/sourceCount as Integer = -2/sourceCount as Integer = -1/' 'another default'
expect major 's/super RuntimeException/super Object/' 'another super class'
expect major "$old_host$reverse
}" 'an old host loses a method'
exit "$status"
