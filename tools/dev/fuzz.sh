#!/usr/bin/env bash
# Runs fuzz targets, by default all of them, each until it fails or its time is up:
#   fuzz.sh [TARGET...] [SECONDS per target]
# Each target's folder in build/fuzz/found keeps the inputs that make the target fail, and a corpus of interesting
# inputs from which the next run continues.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

targets=()
seconds=60
for argument in "$@"; do
  case "$argument" in
    *[!0-9]*) targets+=("$argument") ;;
    *) seconds=$argument ;;
  esac
done
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(ls fuzz/corpus)

need "${fuzz_packages[@]}"
build fuzz
failed=()
for target in "${targets[@]}"; do
  folder=build/fuzz/found/$target
  mkdir -p "$folder/corpus"
  say "fuzzing $target for $seconds seconds (log: $folder/log)"
  if "build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -max_len=2000 -timeout=10 -artifact_prefix="$folder/" \
    -dict="fuzz/dictionaries/$target.dict" "$folder/corpus" "fuzz/corpus/$target" >"$folder/log" 2>&1; then
    tail -n 1 "$folder/log"
  else
    grep -E 'broken:|ERROR|SUMMARY|runtime error|Test unit written' "$folder/log" || tail "$folder/log"
    failed+=("$target")
  fi
done
[ ${#failed[@]} -eq 0 ] || {
  say "broken: ${failed[*]}"
  exit 1
}
