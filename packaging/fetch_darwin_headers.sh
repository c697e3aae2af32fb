#!/usr/bin/env bash
# Fetches the C headers of macOS from a compiler package that contains the headers for all its target systems. npm
# rejects a download if its checksum differs from the one in package-lock.json.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

pins=packaging/macos/headers
folder=$package_folder/darwin
! cmp -s "$pins/package-lock.json" "$folder/fetched" || exit 0
command -v npm >/dev/null || need nodejs npm
say "fetching the C headers of macOS (231 MB in $folder)"
mkdir -p "$folder"
cp "$pins"/package{,-lock}.json "$folder"
quietly npm ci --prefix "$folder" --no-audit --no-fund
cp "$pins/package-lock.json" "$folder/fetched"
