#!/usr/bin/env bash
# Runs the example scripts with a library and compares what they print with what stands beside them:
#   run_examples.sh FOLDER LIBRARY HOST...
# The scripts save their files in FOLDER. HOST is the development host as a command that works in any folder.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
library=$(realpath "$2")
cd "$1"
shift 2
for script in "$root"/examples/scripts/*.xojo; do
  printf "  %s\n" "${script#"$root/"}"
  cmake -D expected="${script%.xojo}.txt" -P "$root/tests/support/compare_output.cmake" \
    "$@" --plugin "$library" run "$script"
done
