#!/usr/bin/env bash
# Builds a preset and runs its tests: test.sh PRESET [ARGUMENTS of ctest]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=$1
shift
need "${test_packages[@]}"
build "$preset"
say "testing ($preset)"
ctest --preset "$preset" --parallel "$(nproc)" --progress "$@"
