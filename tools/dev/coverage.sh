#!/usr/bin/env bash
# Shows which lines and branches of src/ the tests run, in a table by folder and on a page with every line.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${coverage_packages[@]}"
build coverage
folder=build/coverage/counters
rm -rf "$folder"
say "testing (coverage)"
# The counters live in a shared mapping of a file (%c), so child processes count too, even if a signal kills them.
# The excluded tests are the stress checks of faulty libraries, some of which measure running times, and the tests that
# examine libraries and object files, to which instrumentation adds symbols.
LLVM_PROFILE_FILE=$PWD/$folder/%c%m.profraw \
  ctest --preset coverage --parallel "$(nproc)" --progress -E '^(stress_[A-Z]|Doctor|vector_objects)' "$@"
llvm-profdata-19 merge "$folder"/*.profraw -o "$folder/all.profdata"
arguments=(-instr-profile "$folder/all.profdata" build/coverage/bin/ZKTUtil.so --sources src)
for program in build/coverage/bin/*_tests; do arguments+=(-object "$program"); done
# The compiler runs the code that checks the declarations, so the counters do not show that it ran.
arguments+=(--ignore-filename-regex 'src/frame/catalogue/(declaration_syntax|rows|type_names)\.h')
llvm-cov-19 show "${arguments[@]}" --format html --show-branches count --output-dir build/coverage/page >/dev/null
llvm-cov-19 export "${arguments[@]}" | python3 tools/dev/coverage.py
echo "every line: build/coverage/page/index.html"
