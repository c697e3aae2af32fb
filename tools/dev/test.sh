#!/usr/bin/env bash
# Builds a preset, or only some of its programs, and runs its tests:
#   test.sh [--preset PRESET] [--target PROGRAM]... [CTEST ARGUMENTS]
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=dev
if [ "${1:-}" = --preset ]; then
  preset=$2
  shift 2
fi
targets=()
while [ "${1:-}" = --target ]; do
  targets+=(--target "$2")
  shift 2
done
case "$preset" in
  arm64)
    need "${arm64_test_packages[@]}"
    packaging/fetch_arm64_system.sh
    # Emulated programs load their libraries from this folder.
    export QEMU_LD_PREFIX=$PWD/build/package/arm64-system/root
    not_emulated=(
      CrashSafeCall.WorksOnEveryThread           # counts resident pages, including the emulator's own
      CrashSafeCall.WorksWithoutAnAlternateStack # limits the address space, which the emulator also needs
      xojo_self_check                            # expects the processor's name from `uname`, which is not emulated
    )
    set -- -E "^($(
      IFS='|'
      echo "${not_emulated[*]}"
    ))\$" "$@"
    ;;
  libcxx) need "${libcxx_test_packages[@]}" ;;
  *) need "${test_packages[@]}" ;;
esac
build "$preset" "${targets[@]}"
say "testing ($preset)"
ctest --preset "$preset" --parallel "$(nproc)" --progress "$@"
