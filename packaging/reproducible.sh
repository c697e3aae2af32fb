#!/usr/bin/env bash
# Makes a release of the same commit again in another folder and expects identical files.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

twin=$package_folder/twin
packaging/release.sh
say "making the same release in $twin"
rm -rf "$twin"
git clone -q . "$twin"
mkdir -p "$twin/$package_folder"
ln -s "$PWD/$package_folder/darwin" "$twin/$package_folder/darwin"
# Nothing that the first run has compiled is used.
CCACHE_DISABLE=1 "$twin/packaging/release.sh"
diff -r "build/release-$version" "$twin/build/release-$version"
say "both releases are the same, byte for byte"
