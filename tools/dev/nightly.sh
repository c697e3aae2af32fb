#!/usr/bin/env bash
# Runs the checks that take too long for every change. All steps run, even if an earlier step fails.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

failed=()
step() {
  say "$*"
  "$@" || failed+=("$*")
}
step ./dev analyze
step ./dev test --preset arm64
step ./dev test --preset asan
step ./dev tsan
step ./dev valgrind
step build/dev/bin/xojo-host stress build/dev/bin/ZKTUtil.so --level 3 --expect packaging/zktutil.expectations
step ./dev coverage
step ./dev fuzz
step ./dev docs --check
step ./dev package --other-systems
step ./dev release --reproducible
step ./dev mutate
[ ${#failed[@]} -eq 0 ] || {
  printf 'failed: %s\n' "${failed[@]}"
  exit 1
}
