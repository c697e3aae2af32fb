#!/usr/bin/env bash
# Loads the plug-in in the development host and shows what it does with real input.
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
say "a tour: Xojo code, and below each line what it prints"
# The system's log goes to a file: it has a backtrace for each crash, and the font of each text. A filter in a pipe would
# be a child of the host, which waits for its children.
LOCPATH=build/release/locales "$host" run --show examples/tour.xojo 2>build/tour.log
(cd build && "../$host" run ../examples/scripts/rotated_text.xojo >/dev/null 2>&1)
say "rotated text: look at build/rotated-text.png"
say "every reference was given back, or the host would have complained"
say "try it yourself: $host repl, $host catalogue, $host --help; more examples: examples/scripts, docs/guide/recipes.md"
