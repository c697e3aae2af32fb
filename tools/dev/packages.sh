# The Debian packages that each job needs. Sourced by common.sh.
# shellcheck shell=bash disable=SC2034

build_packages=(g++ cmake ninja-build pkg-config libgtest-dev libbenchmark-dev libboost-dev libcli11-dev libedit-dev
  libffi-dev libcairo2-dev libcsv-dev libhwy-dev libmd-dev libutf8proc-dev libzip-dev locales)
# Libraries and fonts for drawing text at run time. The fonts include an oblique style and Arabic and Japanese glyphs.
text_packages=(libpangocairo-1.0-0 fonts-dejavu-core fonts-dejavu-extra fonts-sawarabi-gothic)
# The AppKit code is tested on GNUstep, which needs clang and a display. The doctor is tested on macOS libraries that
# lld links.
test_packages=("${build_packages[@]}" "${text_packages[@]}" clang lld libgnustep-gui-dev gnustep-back0.29-cairo
  libobjc-12-dev python3 xvfb xauth zip unzip dpkg-dev file)
# Packages for running the same tests with the C++ library of macOS, with coverage, and on emulated arm64.
libcxx_test_packages=("${test_packages[@]}" googletest clang-19 libc++-19-dev libc++abi-19-dev libclang-rt-19-dev)
coverage_packages=("${test_packages[@]}" clang-19 libclang-rt-19-dev llvm-19)
arm64_test_packages=("${build_packages[@]}" googletest g++-aarch64-linux-gnu python3 qemu-user)
lint_packages=("${build_packages[@]}" git clang-format clang-tidy clang shellcheck unicode-data reuse)
fuzz_packages=("${build_packages[@]}" clang libclang-rt-14-dev)
package_packages=(g++ cmake ninja-build zip libhwy-dev
  clang-19 lld-19 llvm-19 libc++-19-dev libc++abi-19-dev
  g++-aarch64-linux-gnu libc6-arm64-cross libstdc++6-arm64-cross)
docs_packages=(git python3-sphinx python3-myst-parser)
docs_check_packages=("${build_packages[@]}" "${text_packages[@]}" graphviz gnuplot-nox chromium-headless-shell)
release_packages=("${build_packages[@]}" git jq minisign python3-jsonschema)
package_check_packages=("${arm64_test_packages[@]}" "${text_packages[@]}" unzip)

# Installs missing packages. Without root privileges, prints the command that installs them, and fails.
need() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! sudo -n true 2>/dev/null; then
      printf 'Packages are missing. Install them with\n  sudo apt-get install -y %s\n' "${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  say "installing ${missing[*]}"
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
