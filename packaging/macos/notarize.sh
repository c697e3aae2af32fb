#!/usr/bin/env bash
# Signs the macOS library in a package with a Developer ID and has Apple notarize it. Runs on a Mac:
#   notarize.sh PACKAGE IDENTITY PROFILE
# IDENTITY is the name of a certificate in the keychain ("Developer ID Application: NAME (TEAM)"), and PROFILE is the
# name under which `xcrun notarytool store-credentials` has stored the credentials.
set -euo pipefail

[ $# -eq 3 ] || {
  echo "usage: notarize.sh PACKAGE IDENTITY PROFILE" >&2
  exit 2
}
package=$1 identity=$2 profile=$3
for tool in codesign ditto xcrun unzip zip; do
  command -v "$tool" >/dev/null || {
    echo "$tool is missing: this script needs macOS with Xcode's command-line tools" >&2
    exit 1
  }
done

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
result=$(cd "$(dirname "$package")" && pwd)/ZKTUtil-notarized.xojo_plugin
unzip -q "$package" -d "$folder"
library="$folder/ZKTUtil/Build Resources/Mac Universal/ZKTUtil.dylib"
codesign --force --timestamp --options runtime --sign "$identity" "$library"
codesign --verify --strict "$library"

# Apple's service recognizes archives by their suffix.
ditto -c -k --keepParent "$library" "$folder/submission.zip"
xcrun notarytool submit "$folder/submission.zip" --keychain-profile "$profile" --wait | tee "$folder/answer"
grep -q 'status: Accepted' "$folder/answer" || {
  echo "Apple did not accept the library; xcrun notarytool log shows the reasons" >&2
  exit 1
}
rm -f "$result"
(cd "$folder" && zip -q -9 -X -D -r "$result" ZKTUtil)
echo "made $result"
