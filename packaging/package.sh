#!/usr/bin/env bash
# Makes the package: builds the library for all platforms and puts it where Xojo expects it.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

tree=$package_folder/tree

build_library() { # PRESET
  quietly cmake --fresh --preset "$1"
  quietly cmake --build --preset "$1" --target ZKTUtil -- --quiet
}

add_library_for_linux() { # PROCESSOR FOLDER
  local folder="$tree/ZKTUtil/Build Resources/$2"
  say "building for $2"
  build_library "package-linux-$1"
  mkdir -p "$folder"
  cp "$package_folder/linux-$1/bin/ZKTUtil.so" "$folder/ZKTUtil.so"
}

# Combines both processors in one file.
add_library_for_macos() {
  local folder="$tree/ZKTUtil/Build Resources/Mac Universal"
  say "building for Mac Universal"
  build_library package-macos-arm64
  build_library package-macos-x86_64
  mkdir -p "$folder"
  llvm-lipo-19 -create "$package_folder"/macos-{arm64,x86_64}/bin/ZKTUtil.dylib -output "$folder/ZKTUtil.dylib"
}

# Packages of the same libraries are identical files: one order, one time, one set of permissions, no owner.
zip_tree() {
  rm -f "$package"
  find "$tree" -type f -exec chmod 644 {} + -exec touch -d 1980-01-01T00:00:00Z {} +
  (
    cd "$tree" || exit
    find ZKTUtil -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -D "$OLDPWD/$package" -@
  )
}

need "${package_packages[@]}"
packaging/fetch_darwin_headers.sh
rm -rf "$tree"
add_library_for_linux x86_64 "Linux x86-64"
add_library_for_linux arm64 "Linux arm64"
add_library_for_macos
zip_tree
say "made $package ($(stat -c %s "$package") bytes), and as a folder $tree/ZKTUtil"
