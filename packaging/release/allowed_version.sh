#!/usr/bin/env bash
# Fails if the version is too low for the changes to the declarations since the last release.
source "$(dirname "${BASH_SOURCE[0]}")/../common.sh"

# A tag on HEAD itself is ignored, because it belongs to the release that is being made.
last=$(git describe --tags --abbrev=0 --match 'v[0-9]*' HEAD^ 2>/dev/null) || {
  say "no release precedes $version"
  exit 0
}
IFS=. read -r major minor patch <<<"${last#v}"
catalogue=tests/catalogue/ZKTUtil.txt
changes=$(awk -f packaging/release/compare_catalogues.awk <(git show "$last:$catalogue") "$catalogue")
kind=${changes##*$'\n'}
case $kind in
  major) smallest=$((major + 1)).0.0 ;;
  minor) smallest=$major.$((minor + 1)).0 ;;
  *) smallest=$major.$minor.$((patch + 1)) ;;
esac
printf '%s\n' "$changes"
say "after ${last#v}, the smallest allowed version is $smallest"
[ "$(printf '%s\n' "$smallest" "$version" | sort -V | head -n 1)" = "$smallest" ] || {
  echo "$version is too small: change the version in CMakeLists.txt" >&2
  exit 1
}
