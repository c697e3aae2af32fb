#!/usr/bin/env bash
# Tests the script that signs and notarizes a package, with scripts in place of Apple's tools.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
libraries="ZKTUtil/Build Resources"

mkdir -p "$folder/tools" "$folder/content/$libraries/Mac Universal" "$folder/content/$libraries/Linux arm64"
printf 'mac' >"$folder/content/$libraries/Mac Universal/ZKTUtil.dylib"
printf 'linux' >"$folder/content/$libraries/Linux arm64/ZKTUtil.so"
(cd "$folder/content" && zip -q -r ../ZKTUtil.xojo_plugin ZKTUtil)

tool() { # NAME SCRIPT
  printf '#!/usr/bin/env bash\n%s\n' "$2" >"$folder/tools/$1"
  chmod +x "$folder/tools/$1"
}
# shellcheck disable=SC2016
tool codesign 'if [ "$1" = --force ]; then printf " signed by %s" "$6" >>"$7"; fi'
# shellcheck disable=SC2016
tool ditto 'cp "$4" "$5"'
notarize() { PATH=$folder/tools:$PATH packaging/macos/notarize.sh "$@" >"$folder/output" 2>&1; }
fails() { # TEXT ARGUMENTS...
  ! notarize "${@:2}" || { echo "no failure: $1" && exit 1; }
  grep -q "$1" "$folder/output" || { cat "$folder/output" && exit 1; }
  [ ! -e "$folder/ZKTUtil-notarized.xojo_plugin" ]
}
content() { unzip -p "$folder/ZKTUtil-notarized.xojo_plugin" "$libraries/$1"; }

fails 'usage:' "$folder/ZKTUtil.xojo_plugin" me
fails 'xcrun is missing' "$folder/ZKTUtil.xojo_plugin" me profile
tool xcrun 'echo "  status: Invalid"'
fails 'did not accept' "$folder/ZKTUtil.xojo_plugin" me profile
# shellcheck disable=SC2016
tool xcrun 'grep -q "signed by me" "$3" && [ "$5" = profile ] && echo "  status: Accepted"'
notarize "$folder/ZKTUtil.xojo_plugin" me profile
[ "$(content 'Mac Universal/ZKTUtil.dylib')" = 'mac signed by me' ]
[ "$(content 'Linux arm64/ZKTUtil.so')" = linux ]
[ "$(unzip -Z1 "$folder/ZKTUtil-notarized.xojo_plugin" | wc -l)" -eq 2 ]
