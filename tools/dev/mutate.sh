#!/usr/bin/env bash
# Makes one small change at a time to src/ and shows which changes no test detects. For the options, see mutate.py.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${test_packages[@]}" git python3
exec python3 tools/dev/mutate.py "$@"
