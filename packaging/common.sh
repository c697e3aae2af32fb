# Settings and functions that the scripts in this folder share. Sourcing this file changes to the project's root folder.
# shellcheck shell=bash disable=SC2034
source "$(dirname "${BASH_SOURCE[0]}")/../tools/dev/common.sh"

version=$(sed -n 's/^project(ZKTUtil VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package_folder=build/package
package=$package_folder/ZKTUtil.xojo_plugin
debug_files=$package_folder/debug

# Build ids depend on debug information, which contains paths. A compiler cache must therefore neither rewrite paths nor
# reuse files that were compiled in another folder.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR

# Zips a folder, or some of its contents. The same files always produce an identical archive: their order, times, and
# permissions are fixed, and their owners are not stored.
zip_folder() { # FOLDER ARCHIVE [NAME in the folder...]
  local archive=$PWD/$2
  rm -f "$archive"
  find "$1" -type f -exec chmod 644 {} + -exec touch -d 1980-01-01T00:00:00Z {} +
  (
    cd "$1" || exit
    find "${@:3}" -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -D "$archive" -@
  )
}
