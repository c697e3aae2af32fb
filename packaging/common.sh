# What the scripts of this folder share. Sourced; it changes to the project's folder.
# shellcheck shell=bash disable=SC2034
source "$(dirname "${BASH_SOURCE[0]}")/../tools/dev/common.sh"

package_folder=build/package
package=$package_folder/ZKTUtil.xojo_plugin
