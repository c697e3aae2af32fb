#!/usr/bin/env bash
# Builds the package from the same sources again in another folder and expects identical bytes.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

twin=$package_folder/twin
need git
packaging/package.sh
say "building once more in $twin"
rm -rf "$twin"
mkdir -p "$twin/$package_folder"
git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents -t "$twin"
ln -s "$PWD/$package_folder/darwin" "$twin/$package_folder/darwin"
"$twin/dev" package
cmp "$package" "$twin/$package"
say "both packages are the same, byte for byte"
