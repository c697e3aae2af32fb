#!/usr/bin/env bash
# Checks formatting, the generated table and all scripts, builds with clang, and runs clang-tidy.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${lint_packages[@]}"
say "formatting"
sources | xargs clang-format --dry-run --Werror

# The table can be compared where the system has the Unicode version from which it was made.
data=/usr/share/unicode
table=src/platform/linux/decomposition_table.inc
version=$(sed -n '1s/.*Unicode \([0-9.]*\),.*/\1/p' "$table")
if grep -qF "Version $version" "$data/ReadMe.txt"; then
  say "generated table"
  awk -v version="$version" -f "$(dirname "$table")/make_decomposition_table.awk" "$data/UnicodeData.txt" | diff - "$table"
fi

say "shell scripts"
git ls-files --cached --others --exclude-standard -- '*.sh' | xargs shellcheck dev .ci/run

say "licenses"
quietly reuse lint

build clang
say "clang-tidy"
# Only the files that this build compiles: those of other systems and processors cannot be parsed with its options. The
# vector sort is the same code for each instruction set: one is enough.
sed -n "s|^ *\"file\": \"$PWD/\(.*\)\".*|\1|p" build/clang/compile_commands.json | grep -E '^(src|host|tools)/' | grep -v 'vector_sort_avx' |
  sort -u |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2>/dev/null
