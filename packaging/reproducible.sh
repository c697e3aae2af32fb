#!/usr/bin/env bash
# Makes a release, makes it again from the same commit in another folder, and expects identical files.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

twin=$package_folder/twin
packaging/release.sh
say "making the same release in $twin"
rm -rf "$twin"
git clone -q . "$twin"
mkdir -p "$twin/$package_folder"
ln -s "$PWD/$package_folder/darwin" "$twin/$package_folder/darwin"
# The second run must not use anything that the first run has compiled.
CCACHE_DISABLE=1 "$twin/packaging/release.sh"
diff -r "build/release-$version" "$twin/build/release-$version"
say "both releases are the same, byte for byte"
