#!/usr/bin/env bash
# Shows which lines and branches of src/ the tests run, in a table by folder and on a page with every line.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${test_packages[@]}" gcovr
build coverage
find build/coverage -name '*.gcda' -delete
say "testing (coverage)"
# The stress checks are excluded, because they measure running times, which instrumentation distorts. The other two
# examine libraries and object files, in which instrumentation adds symbols.
ctest --preset coverage --parallel "$(nproc)" --progress -E '^(stress_|Doctor|vector_objects)' "$@"
page=build/coverage/page/index.html
mkdir -p "$(dirname "$page")"
# The compiler adds a branch for each call that can throw. Such branches are excluded.
gcovr --root . --filter src/ --object-directory build/coverage --exclude-throw-branches --exclude-unreachable-branches \
  --gcov-ignore-parse-errors --html-details "$page" --csv build/coverage/coverage.csv --print-summary
awk -F, -f tools/dev/coverage_by_folder.awk build/coverage/coverage.csv
echo "every line: $page"
