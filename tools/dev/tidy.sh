#!/usr/bin/env bash
# Runs clang-tidy on the sources of this system and processor: tidy.sh [OPTIONS of clang-tidy]
# Compiles nothing: clang-tidy only needs the list of files with their options.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${lint_packages[@]}"
cmake --preset clang >/dev/null
# The vector sort is the same code for each instruction set: one is enough.
sed -n "s|^ *\"file\": \"$PWD/\(.*\)\".*|\1|p" build/clang/compile_commands.json |
  grep -E '^(src|host|tools)/' | grep -v 'vector_sort_avx' | sort -u |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet "$@" 2>/dev/null
