#!/usr/bin/env bash
# Follows the instructions on a page in an empty folder: copies the sample, runs the commands, applies the changes, and
# compares all output with the page.
#   follow_page.sh PAGE SAMPLE FOLDER
set -euo pipefail
page=$1
sample=$2
rm -rf "$3"
mkdir "$3"
cd "$3"
unset LOCPATH TZ  # the command that replays a failure sets them again

# Library offsets and call counts depend on the compiler.
stable() { sed -E 's/0x[0-9a-f]+/0x…/g; s/[0-9]+ calls/… calls/; s/O\(n\^[-0-9.]+\)/O(n^…)/'; }

expect_nothing() {
  [ -z "$printed" ] || {
    printf 'The page does not show what its commands print:\n%s' "$printed" >&2
    exit 1
  }
}

language='' printed='' compared=0
while IFS= read -r line; do
  if [[ -z $language ]]; then
    [[ $line != '```'?* ]] || language=${line#'```'} block=''
  elif [[ $line != '```' ]]; then
    block+=$line$'\n'
  else
    [[ $language = text ]] || expect_nothing
    case $language in
      cpp)
        diff "$sample" - <<<"${block%$'\n'}"
        cp "$sample" .
        ;;
      diff) patch --quiet --strip=0 <<<"$block" ;;
      sh)
        printed=$(bash -c "$block" 2>&1 || true; echo .)
        printed=${printed%.}
        ;;
      text)
        diff <(printf %s "$block" | stable) <(printf %s "$printed" | stable)
        printed='' compared=$((compared + 1))
        ;;
    esac
    language=''
  fi
done <"$page"
expect_nothing
[ "$compared" -ge 3 ]
