#!/usr/bin/env bash
# Changes src/ in small ways, one at a time, and shows which changes no test notices. mutate.py has the options.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${test_packages[@]}" git python3
exec python3 tools/dev/mutate.py "$@"
