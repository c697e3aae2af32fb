#!/usr/bin/env bash
# Builds for release, and prints the ratios to the references: bench.sh [ARGUMENTS of the benchmarks]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${build_packages[@]}"
build release --target benchmarks
ZKT_PLOT=build/benchmarks.svg build/release/bin/benchmarks "$@"
say "the ratios as a picture: build/benchmarks.svg"
