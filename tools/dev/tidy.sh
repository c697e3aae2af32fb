#!/usr/bin/env bash
# Runs clang-tidy on the sources for this system and processor: tidy.sh [CLANG-TIDY OPTIONS]
# Nothing is compiled, because clang-tidy only needs the list of files and their compiler options.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${lint_packages[@]}"
cmake --preset clang >/dev/null
# The vector sort is the same code for each instruction set, so only one variant is checked.
sed -n "s|^ *\"file\": \"$PWD/\(.*\)\".*|\1|p" build/clang/compile_commands.json |
  grep -E '^(src|host|tools)/' | grep -v 'vector_sort_avx' | sort -u |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet "$@" 2>/dev/null
