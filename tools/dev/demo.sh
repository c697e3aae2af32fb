#!/usr/bin/env bash
# Runs the plug-in in the development host on real input and shows the results.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${build_packages[@]}" "${text_packages[@]}"
build release --target xojo-host test_locales
host=build/release/bin/xojo-host
orders=build/orders.csv
awk -v rows=40000 -f examples/data/make-orders.awk >"$orders"
say "real files: SplitCommaSeparatedValuesZKT(text)"
for file in examples/data/kunden.csv "$orders"; do
  "$host" split "$file"
  echo
done
say "a tour: Xojo code, with the output below each line"
# The log goes to a file, because its backtraces and font names would clutter the tour. A process substitution cannot
# filter it: the filter would be a child of the host, and the host waits for its children.
LOCPATH=build/release/locales "$host" run --show examples/tour.xojo 2>build/tour.log
(cd build && "../$host" run ../examples/scripts/rotated_text.xojo >/dev/null 2>&1)
say "rotated text: look at build/rotated-text.png"
say "all references were released; otherwise the host would have reported a leak"
say "try it yourself: $host repl, $host catalogue, $host --help; more examples: examples/scripts, docs/guide/recipes.md"
