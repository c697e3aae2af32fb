#!/usr/bin/env bash
# Makes a release of the checked-out commit: release.sh [MINISIGN-KEY]. docs/releases.md describes the files of a
# release.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

key=${1:-}
release=build/release-$version
content=$package_folder/release/ZKTUtil-$version
host=build/dev/bin/xojo-host

[ -z "$(git status --porcelain)" ] || {
  echo "A release is made from a commit: commit or remove your changes first." >&2
  git status --short >&2
  exit 1
}
if grep -qx '## Unreleased' CHANGELOG.md; then
  echo 'CHANGELOG.md has a section "Unreleased": replace the heading with the version and the date first.' >&2
  exit 1
fi
# Set the commit ID before the build. Otherwise, the build would determine it, and would mark it as changed if a file
# had been edited in the meantime.
ZKT_COMMIT=$(git rev-parse --short=12 HEAD)
export ZKT_COMMIT
need "${package_packages[@]}" "${release_packages[@]}"
packaging/release/allowed_version.sh
packaging/package.sh
tools/dev/docs.sh
rm -rf "$release" "$package_folder/release"
mkdir -p "$release" "$content"

say "making $release"
cp "$package" LICENSE CHANGELOG.md "$content"
mv "$content/LICENSE" "$content/LICENSE.txt"
cp "$package_folder/tree/ZKTUtil/THIRD-PARTY.txt" "$content"
sed "s/@version@/$version/" packaging/release/README.txt >"$content/README.txt"
git archive "$ZKT_COMMIT" examples | tar -x -C "$content"
mv "$content/examples" "$content/Examples"
cp -r build/docs/html "$content/Documentation"
zip_folder "$package_folder/release" "$release/ZKTUtil-$version.zip" "ZKTUtil-$version"
zip_folder "$debug_files" "$release/ZKTUtil-$version-debug.zip" .
cp "$package" "$release"
packaging/release/sbom.sh "$release/ZKTUtil-$version.spdx.json"

build dev --target xojo-host
say "reading the release back"
"$host" doctor --strict --supported-systems docs/packaging.md --unwanted "$PWD" "$release/ZKTUtil.xojo_plugin" |
  tee "$package_folder/report"
[ "$(grep -c "^  version    ZKTUtil $version, commit $ZKT_COMMIT$" "$package_folder/report")" -eq 4 ]
packaging/check_debug_files.sh "$host"

(cd "$release" && sha256sum -- * >../SHA256SUMS && mv ../SHA256SUMS .)
if [ -n "$key" ]; then
  minisign -S -s "$key" -m "$release/SHA256SUMS" -t "ZKTUtil $version"
else
  say "not signed: ./dev release KEY signs SHA256SUMS with a minisign key"
fi
say "made $release"
(cd "$release" && ls -l)
