#!/usr/bin/env bash
# Makes the package: builds the library for all platforms and puts it where Xojo expects it. Debug information goes
# into separate files, which debuggers match with the libraries by build id or UUID.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$package_folder/tree
folder_form=$package_folder/folder/ZKTUtil.xojo_plugin

build_library() { # PRESET
  quietly cmake --fresh --preset "$1"
  quietly cmake --build --preset "$1" --target ZKTUtil -- --quiet
}

add_library_for_linux() { # PROCESSOR FOLDER
  local built=$package_folder/linux-$1/bin/ZKTUtil.so folder="$tree/ZKTUtil/Build Resources/$2"
  say "building for $2"
  build_library "package-linux-$1"
  mkdir -p "$folder" "$debug_files/$2"
  llvm-objcopy-19 --only-keep-debug "$built" "$debug_files/$2/ZKTUtil.so.debug"
  llvm-strip-19 --strip-all "$built" -o "$folder/ZKTUtil.so"
}

# Combines the libraries for both processors into one file, and their debug information into another file.
add_library_for_macos() {
  local folder="$tree/ZKTUtil/Build Resources/Mac Universal" processor built
  local debug="$debug_files/Mac Universal/ZKTUtil.dylib.dSYM" dwarf=Contents/Resources/DWARF/ZKTUtil.dylib
  say "building for Mac Universal"
  mkdir -p "$folder" "$debug_files/Mac Universal"
  for processor in arm64 x86_64; do
    # Without ZERO_AR_DATE, the library's UUID would depend on the modification times of the object files.
    ZERO_AR_DATE=1 build_library "package-macos-$processor"
    built=$package_folder/macos-$processor
    quietly dsymutil-19 --oso-prepend-path "$built" "$built/bin/ZKTUtil.dylib" -o "$built/ZKTUtil.dSYM"
    llvm-strip-19 -S -x "$built/bin/ZKTUtil.dylib" -o "$built/ZKTUtil.dylib"
  done
  llvm-lipo-19 -create "$package_folder"/macos-{arm64,x86_64}/ZKTUtil.dylib -output "$folder/ZKTUtil.dylib"
  mkdir -p "$debug/${dwarf%/*}"
  cp "$package_folder/macos-arm64/ZKTUtil.dSYM/Contents/Info.plist" "$debug/Contents"
  llvm-lipo-19 -create "$package_folder"/macos-{arm64,x86_64}/ZKTUtil.dSYM/$dwarf -output "$debug/$dwarf"
}

# Xojo ignores files outside "Build Resources".
add_licenses() {
  cp LICENSE "$tree/ZKTUtil/LICENSE.txt"
  cat THIRD-PARTY.md LICENSES/Unicode-DFS-2016.txt /usr/share/common-licenses/Apache-2.0 >"$tree/ZKTUtil/THIRD-PARTY.txt"
}

need "${package_packages[@]}"
packaging/fetch_darwin_headers.sh
rm -rf "$tree" "$debug_files" "$folder_form"
add_library_for_linux x86_64 "Linux x86-64"
add_library_for_linux arm64 "Linux arm64"
add_library_for_macos
add_licenses
zip_folder "$tree" "$package" ZKTUtil
mkdir -p "$(dirname "$folder_form")"
cp -r "$tree/ZKTUtil" "$folder_form"
say "made $package ($(stat -c %s "$package") bytes) and the folder $folder_form"
