#!/usr/bin/env bash
# Writes and validates the package's software bill of materials: sbom.sh FILE
source "$(dirname "${BASH_SOURCE[0]}")/../common.sh"

tree=$package_folder/tree
libraries=()
while IFS= read -r library; do
  libraries+=("${library#"$tree"/}" "$(sha1sum <"$library" | cut -c1-40)" "$(sha256sum <"$library" | cut -c1-64)")
done < <(find "$tree" -name 'ZKTUtil.so' -o -name 'ZKTUtil.dylib' | LC_ALL=C sort)
created=$(TZ=UTC git log -1 --date=format-local:%Y-%m-%dT%H:%M:%SZ --format=%cd)
jq -n --arg version "$version" --arg commit "$(git rev-parse HEAD)" --arg created "$created" \
  --arg package_sha256 "$(sha256sum <"$package" | cut -c1-64)" \
  --arg highway "$(dpkg-query -W -f='${Version}' libhwy-dev)" --arg gcc "$(dpkg-query -W -f='${Version}' libstdc++-12-dev)" \
  --arg unicode "$(sed -n '1s/.*Unicode \([0-9.]*[0-9]\).*/\1/p' src/platform/linux/decomposition_table.inc)" \
  -f packaging/release/sbom.jq --args "${libraries[@]}" >"$1"

/usr/bin/python3 -m jsonschema -i "$1" packaging/release/sbom.schema.json
# Every relationship must name existing elements, and every element must be part of a relationship.
jq -e '([.SPDXID, .packages[].SPDXID, .files[].SPDXID] | sort) ==
  ([.relationships[] | .spdxElementId, .relatedSpdxElement] | unique)' "$1" >/dev/null || {
  echo "$1: relationships and elements differ" >&2
  exit 1
}
