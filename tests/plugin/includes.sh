#!/usr/bin/env bash
# Fails if an include in src refers to a higher layer in docs/architecture.md or to another subsystem, or if includes
# between modules of the given folders form a cycle: includes.sh FOLDER...
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

edges=$(find "$@" -name '*.h' -o -name '*.cpp' -o -name '*.mm' -o -name '*.inc' | LC_ALL=C sort |
  awk -v roots="$*" -v diagram=docs/architecture.md -f tests/plugin/includes.awk | LC_ALL=C sort -u)
[ "$(wc -l <<<"$edges")" -ge 100 ] || {
  printf 'Expected at least 100 includes, but found only these:\n%s\n' "$edges" >&2
  exit 1
}
# tsort reports the modules that form a cycle.
tsort <<<"$edges" >/dev/null
