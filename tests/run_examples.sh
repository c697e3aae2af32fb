#!/usr/bin/env bash
# Runs the example scripts with a library and compares the output of each script with the file next to it:
#   run_examples.sh FOLDER LIBRARY HOST...
# The scripts run in FOLDER. HOST is a command that runs the development host.
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
