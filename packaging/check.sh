#!/usr/bin/env bash
# Builds the package, checks it, and tests its Linux libraries.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

unpacked=$package_folder/unpacked
host=$PWD/build/dev/bin/xojo-host
need "${package_check_packages[@]}"
packaging/package.sh
build dev --target xojo-host
say "reading $package back"
"$host" doctor --strict --supported-systems docs/packaging.md --unwanted "$PWD" "$package"
rm -rf "$unpacked"
unzip -q "$package" -d "$unpacked"
diff -r "$unpacked/ZKTUtil" "$package_folder/folder/ZKTUtil.xojo_plugin"

packaging/check_debug_files.sh "$host"

library="$unpacked/ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so"
say "running the examples against the packaged library for Linux x86-64"
tests/run_examples.sh "$package_folder" "$library" "$host"
say "running the stress checks on the packaged library for Linux x86-64"
quietly "$host" stress "$library" --level 1 --expect packaging/zktutil.expectations

packaging/fetch_arm64_system.sh
build arm64 --target xojo-host
say "running the examples against the packaged library for Linux arm64, on an emulated processor"
QEMU_LD_PREFIX=$PWD/$package_folder/arm64-system/root \
  tests/run_examples.sh "$package_folder" "$unpacked/ZKTUtil/Build Resources/Linux arm64/ZKTUtil.so" \
  qemu-aarch64 "$PWD/build/arm64/bin/xojo-host"
