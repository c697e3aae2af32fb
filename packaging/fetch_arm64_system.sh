#!/usr/bin/env bash
# Unpacks the packages of a Debian system for arm64 that the development host needs into a folder. apt resolves their
# dependencies. Nothing is installed, no privileges are needed, and the machine's own packages do not change.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=(libstdc++6 libffi-dev libedit-dev libzip-dev libmd-dev libcairo2-dev libpangocairo-1.0-0 fonts-dejavu-core
  fonts-dejavu-extra fonts-sawarabi-gothic)
folder=$PWD/$package_folder/arm64-system
[ "$(cat "$folder/packages" 2>/dev/null)" != "${packages[*]}" ] || exit 0
say "fetching a Debian system for arm64 (in $package_folder/arm64-system)"
rm -rf "$folder"
mkdir -p "$folder/apt/lists/partial" "$folder/apt/archives/partial" "$folder/root"
: >"$folder/apt/status"
options=(-qq -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o APT::Install-Recommends=0
  -o Dir::State::Lists="$folder/apt/lists" -o Dir::State::status="$folder/apt/status" -o Debug::NoLocking=1
  -o Dir::Cache::Archives="$folder/apt/archives" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
quietly apt-get "${options[@]}" update
quietly apt-get "${options[@]}" install --yes --download-only "${packages[@]}"
for archive in "$folder"/apt/archives/*.deb; do dpkg-deb --extract "$archive" "$folder/root"; done
rm -rf "$folder/apt"
printf '%s' "${packages[*]}" >"$folder/packages"
