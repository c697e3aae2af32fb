#!/usr/bin/env bash
# Loads the packaged library for Linux x86-64 with the C library of Debian 11 and with that of Debian 13, and runs an
# example each time. The packages of these systems are unpacked into folders, so nothing is installed and no privileges
# are needed.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

library="$PWD/$package_folder/tree/ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so"
[ -f "$library" ] || packaging/package.sh

run_on() { # SUITE GLIBC PYTHON LIBFFI
  local suite=$1 glibc=$2 python=python$3 libffi=$4
  local folder=$PWD/$package_folder/$suite
  local root=$folder/root output
  packaging/fetch_system.sh amd64 "$suite" "$folder" libc6 libgcc-s1 "$python-minimal" "lib$python-stdlib" "$libffi"
  say "formatting a number with the packaged library on Debian $suite"
  # Newer systems have all libraries in /usr.
  local folders=("$root"/{,usr/}lib/x86_64-linux-gnu)
  output=$(PYTHONHOME=$root/usr "$(find "${folders[@]}" -name ld-linux-x86-64.so.2 2>/dev/null | head -n 1)" \
    --library-path "${folders[0]}:${folders[1]}" "$root/usr/bin/$python" packaging/other_systems/example.py "$library")
  printf '  %s\n' "$output"
  [[ $output == "glibc $glibc: "*" methods; 1234.50 kg" ]]
}

run_on bullseye 2.31 3.9 libffi7
run_on trixie 2.41 3.13 libffi8
