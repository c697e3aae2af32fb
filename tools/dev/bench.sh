#!/usr/bin/env bash
# Builds the release preset and runs the benchmarks, which compare the plug-in with reference loops:
#   bench.sh [BENCHMARK ARGUMENTS]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${build_packages[@]}"
build release --target benchmarks
ZKT_PLOT=build/benchmarks.svg build/release/bin/benchmarks "$@"
say "chart of the ratios: build/benchmarks.svg"
