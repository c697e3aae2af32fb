#!/usr/bin/env bash
# Formats all C++ sources.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need git clang-format
sources | xargs clang-format -i
