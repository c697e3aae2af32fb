#!/usr/bin/env bash
# Builds the documentation as a site in build/docs/html: docs.sh [--check | --update]
# --update also redraws the pictures on the pages. --check verifies that the pictures are up to date, that two builds of
# the site are identical, and that the site's search works in a browser.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

folder=build/docs
host=$PWD/build/dev/bin/xojo-host
need "${docs_packages[@]}"

# Sphinx reads a copy of the project with additional pages. Links to any project file therefore work, and broken links
# are errors.
make_site() { # FOLDER
  rm -rf "$1"
  mkdir -p "$1/source"
  git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents --target-directory="$1/source"
  cat README.md tools/docs/contents.md >"$1/source/index.md"
  tools/docs/entries.py "$1/source"
  # The hash seed is fixed, because the order of the search data depends on hashes.
  PYTHONHASHSEED=0 LC_ALL=C.UTF-8 sphinx-build -q -W --keep-going -n -b html -c tools/docs -d "$1/trees" "$1/source" "$1/html"
  rm "$1/html/.buildinfo"
  # The site's scripts and style sheets come from these packages.
  cat /usr/share/doc/{sphinx-common,python3-alabaster,libjs-jquery,libjs-underscore}/copyright >"$1/html/_static/LICENSES.txt"
}

draw_pictures() { # FOLDER
  local diagram
  for diagram in docs/diagrams/*.dot; do
    dot -Tsvg "$diagram" -o "$1/$(basename "$diagram" .dot).svg"
  done
  gnuplot docs/diagrams/benchmarks.gnuplot >"$1/benchmarks.svg"
  (cd "$1" && quietly "$host" run "$OLDPWD/examples/scripts/rotated_text.xojo")
}

# Opens the search page from disk and checks that PAGE is among the results for WORD.
expect_found() { # WORD PAGE
  local found
  found=$(chromium-headless-shell --no-sandbox --disable-gpu --virtual-time-budget=20000 --dump-dom \
    "file://$PWD/$folder/html/search.html?q=$1" 2>/dev/null | grep -o '<ul class="search">.*' || true)
  grep -qF "href=\"$2" <<<"$found" || {
    echo "A search for $1 does not find $2. Results: $found" >&2
    exit 1
  }
}

if [ "${1:-}" != "" ]; then
  need "${docs_check_packages[@]}"
  build dev --target xojo-host
fi
if [ "${1:-}" = "--update" ]; then
  say "drawing the pictures"
  draw_pictures docs/images
fi
say "building the site"
make_site "$folder"
if [ "${1:-}" = "--check" ]; then
  say "comparing the pictures with new ones"
  mkdir -p "$folder/images"
  draw_pictures "$folder/images"
  diff -r docs/images "$folder/images" || {
    echo "Pictures are out of date: ./dev docs --update draws them." >&2
    exit 1
  }
  say "building the site again in another folder"
  make_site "$folder/twin"
  diff -r "$folder/html" "$folder/twin/html"
  say "looking for files that need the network"
  (! grep -rnE '<(script|link|img)[^>]*(src|href)="(https?:)?//' "$folder/html")
  say "searching"
  expect_found SortZKT docs/reference/entries/SortZKT.html
  expect_found DateDifferenceZKT.Year docs/reference/entries/DateDifferenceZKT.Year.html
  expect_found zombie docs/reference/UtilGlobalsZKT.html
  expect_found backtrace docs/guide/recipes/errors.html
  tests/docs/links.sh
fi
say "made $folder/html/index.html"
