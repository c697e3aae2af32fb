#!/usr/bin/env bash
# Shows which lines and branches of src/ the tests run, in a table by folder and on a page with every line.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${coverage_packages[@]}"
build coverage
folder=build/coverage/counters
rm -rf "$folder"
say "testing (coverage)"
# The counters live in a shared mapping of a file (%c), so child processes count too, even if a signal kills them.
# The stress checks are excluded, because they measure running times, which instrumentation distorts. The other two
# examine libraries and object files, in which instrumentation adds symbols.
LLVM_PROFILE_FILE=$PWD/$folder/%c%m.profraw \
  ctest --preset coverage --parallel "$(nproc)" --progress -E '^(stress_|Doctor|vector_objects)' "$@"
llvm-profdata-19 merge "$folder"/*.profraw -o "$folder/all.profdata"
arguments=(-instr-profile "$folder/all.profdata" build/coverage/bin/ZKTUtil.so)
for program in build/coverage/bin/*_tests; do arguments+=(-object "$program"); done
llvm-cov-19 show "${arguments[@]}" --sources src --format html --show-branches count --output-dir build/coverage/page >/dev/null
llvm-cov-19 export "${arguments[@]}" --sources src | python3 tools/dev/coverage.py
echo "every line: build/coverage/page/index.html"
