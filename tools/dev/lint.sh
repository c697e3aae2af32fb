#!/usr/bin/env bash
# Checks formatting, the generated table, scripts and licenses, runs clang-tidy, and compiles the platform layer for macOS.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${lint_packages[@]}" "${package_packages[@]}"
say "formatting"
sources | xargs clang-format --dry-run --Werror

# The table can be checked only if the system has the Unicode version from which it was generated.
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

say "clang-tidy"
# The static analyzer takes twice as long as everything else, so it has a separate command: ./dev analyze.
tools/dev/tidy.sh '--checks=-clang-analyzer-*'

# The macOS sources may call only the framework functions that are declared in packaging/macos/frameworks.
say "the calls of macOS, for both processors"
packaging/fetch_darwin_headers.sh
for processor in arm64 x86_64; do
  cmake --preset "package-macos-$processor" >/dev/null
  cmake --build --preset "package-macos-$processor" --target zkt_platform zkt_runtime -- --quiet
done
