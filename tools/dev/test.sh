#!/usr/bin/env bash
# Builds a preset and runs its tests: test.sh [--preset PRESET] [CTEST ARGUMENTS]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=dev
if [ "${1:-}" = --preset ]; then
  preset=$2
  shift 2
fi
case "$preset" in
  arm64)
    need "${arm64_test_packages[@]}"
    packaging/fetch_arm64_system.sh
    # Emulated programs load their libraries from this folder.
    export QEMU_LD_PREFIX=$PWD/build/package/arm64-system/root
    ;;
  libcxx) need "${libcxx_test_packages[@]}" ;;
  *) need "${test_packages[@]}" ;;
esac
build "$preset"
say "testing ($preset)"
ctest --preset "$preset" --parallel "$(nproc)" --progress "$@"
