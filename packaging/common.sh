# What the scripts of this folder share. Sourced; it changes to the project's folder.
# shellcheck shell=bash disable=SC2034
source "$(dirname "${BASH_SOURCE[0]}")/../tools/dev/common.sh"

version=$(sed -n 's/^project(ZKTUtil VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
package_folder=build/package
package=$package_folder/ZKTUtil.xojo_plugin
debug_files=$package_folder/debug

# Debug information contains paths, and build ids depend on it: a compiler cache must not rewrite paths, nor take what was
# compiled in another folder.
unset CCACHE_BASEDIR CCACHE_NOHASHDIR

# Makes archives of the same files identical: one order, one time, one set of permissions, no owner.
zip_folder() { # FOLDER ARCHIVE [NAME in the folder...]
  local archive=$PWD/$2
  rm -f "$archive"
  find "$1" -type f -exec chmod 644 {} + -exec touch -d 1980-01-01T00:00:00Z {} +
  (
    cd "$1" || exit
    find "${@:3}" -type f | LC_ALL=C sort | TZ=UTC zip -q -9 -X -D "$archive" -@
  )
}
