#!/usr/bin/env bash
# Builds the documentation as a site in build/docs/html, from the Markdown pages.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${docs_packages[@]}"

# Sphinx reads a copy, to which pages are added. A link to any file of the project works, and a broken one is an error.
make_site() { # FOLDER
  rm -rf "$1"
  mkdir -p "$1/source"
  git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents --target-directory="$1/source"
  cat README.md tools/docs/contents.md >"$1/source/index.md"
  tools/docs/entries.py "$1/source"
  # Search data depend on the order in which Python iterates over sets.
  PYTHONHASHSEED=0 LC_ALL=C.UTF-8 sphinx-build -q -W --keep-going -n -b html -c tools/docs -d "$1/trees" "$1/source" "$1/html"
  rm "$1/html/.buildinfo"
}

say "building the site"
make_site build/docs
say "made build/docs/html/index.html"
