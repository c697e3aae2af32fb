# Functions that all ./dev scripts share. Sourcing this file also changes to the project's root folder.
# shellcheck shell=bash
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

# shellcheck source=packages.sh
source tools/dev/packages.sh

say() { printf '\033[1m== %s\033[0m\n' "$*"; }

# Shows the output of a step only if it fails.
quietly() {
  local output
  output=$("$@" 2>&1) || {
    printf '%s\n' "$output" >&2
    return 1
  }
}

# Configures and builds a preset. In a terminal, Ninja shows its progress on one line.
build() { # PRESET [ARGUMENTS of cmake --build]
  local preset=$1
  shift
  say "building ($preset)"
  cmake --preset "$preset" >/dev/null
  if [ -t 1 ]; then cmake --build --preset "$preset" "$@"; else cmake --build --preset "$preset" "$@" -- --quiet; fi
}

# Lists all C++ sources of the project, including uncommitted files.
sources() { git ls-files --cached --others --exclude-standard -- '*.cpp' '*.h' '*.mm'; }
