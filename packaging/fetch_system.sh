#!/usr/bin/env bash
# Unpacks Debian packages and their dependencies into FOLDER/root: fetch_system.sh PROCESSOR SUITE FOLDER PACKAGE...
# The script uses apt to resolve the dependencies. Nothing is installed, no privileges are needed, and the machine's own
# packages do not change.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

processor=$1 suite=$2 folder=$3 packages="${*:4}"
[ "$(cat "$folder/packages" 2>/dev/null)" != "$packages" ] || exit 0
say "fetching packages of Debian $suite for $processor (in $folder)"
rm -rf "$folder"
mkdir -p "$folder/apt/lists/partial" "$folder/apt/archives/partial" "$folder/root"
: >"$folder/apt/status"
keys=/usr/share/keyrings/debian-archive-keyring.gpg
echo "deb [signed-by=$keys] http://deb.debian.org/debian $suite main" >"$folder/apt/sources.list"
options=(-qq -o APT::Architecture="$processor" -o APT::Architectures="$processor" -o APT::Install-Recommends=0
  -o Dir::Etc::SourceList="$folder/apt/sources.list" -o Dir::Etc::SourceParts=-
  -o Dir::State::Lists="$folder/apt/lists" -o Dir::State::status="$folder/apt/status" -o Debug::NoLocking=1
  -o Dir::Cache::Archives="$folder/apt/archives" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
quietly apt-get "${options[@]}" update
quietly apt-get "${options[@]}" install --yes --download-only "${@:4}"
for archive in "$folder"/apt/archives/*.deb; do dpkg-deb --extract "$archive" "$folder/root"; done
rm -rf "$folder/apt"
printf '%s' "$packages" >"$folder/packages"
