#!/usr/bin/env bash
# Fails when an include in src points to a higher layer of docs/architecture.md or to another subsystem, or when modules
# of the folders given include each other in a circle: includes.sh FOLDER...
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

edges=$(find "$@" -name '*.h' -o -name '*.cpp' -o -name '*.mm' -o -name '*.inc' | LC_ALL=C sort |
  awk -v roots="$*" -v diagram=docs/architecture.md -f tests/plugin/includes.awk | LC_ALL=C sort -u)
[ "$(wc -l <<<"$edges")" -ge 100 ] || {
  printf 'Only these includes were found:\n%s\n' "$edges" >&2
  exit 1
}
# tsort names the modules of a circle.
tsort <<<"$edges" >/dev/null
