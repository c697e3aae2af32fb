#!/usr/bin/env bash
# Loads the packaged library for Linux x86-64 with the C library of Debian 11 (glibc 2.31) and runs an example there.
# The packages of Debian 11 are unpacked into a folder, so nothing is installed and no privileges are needed.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

folder=$PWD/$package_folder/debian-11
library="$PWD/$package_folder/tree/ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so"
[ -f "$library" ] || packaging/package.sh
packaging/fetch_system.sh amd64 bullseye "$folder" libc6 libgcc-s1 python3.9-minimal libpython3.9-stdlib libffi7

root=$folder/root
say "formatting a number with the packaged library on Debian 11"
output=$(PYTHONHOME=$root/usr "$root/lib/x86_64-linux-gnu/ld-2.31.so" \
  --library-path "$root/lib/x86_64-linux-gnu:$root/usr/lib/x86_64-linux-gnu" \
  "$root/usr/bin/python3.9" packaging/old_system/example.py "$library")
printf '  %s\n' "$output"
[[ $output == "glibc 2.31: "*" methods; 1234.50 kg" ]]
