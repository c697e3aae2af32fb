#!/usr/bin/env bash
# Builds a small site with every kind of broken link. The documentation build must report each of them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
links=(nope.md SECURITY.md#nope '#nope' nope.txt docs)
mkdir -p "$folder/source/docs"
printf '%s\n' --- 'orphan: true' --- '# Security' '' '## Reports' >"$folder/source/SECURITY.md"
{
  printf '# Index\n\n## Here\n\n[page](SECURITY.md) [heading](SECURITY.md#reports) [here](#here) [file](conf.txt)\n\n'
  printf '[broken](%s)\n\n' "${links[@]}"
  printf '![broken](nope.png)\n'
} >"$folder/source/index.md"
touch "$folder/source/conf.txt"
errors=$(sphinx-build -q -n -b html -c tools/docs -d "$folder/trees" "$folder/source" "$folder/html" 2>&1)
status=0
for link in "${links[@]}" nope.png; do
  grep -q "WARNING: .*[: ]$link\$" <<<"$errors" || { echo "not reported: $link"; status=1; }
done
count=$(grep -c WARNING <<<"$errors")
[ "$count" -eq $((${#links[@]} + 1)) ] || { printf '%s\n' "$errors"; status=1; }
exit "$status"
