#!/usr/bin/env bash
# Installs the development host in a folder and runs it there without ZKTUtil next to it. Then inspects the host's
# Debian package.
#   install.sh BUILD-FOLDER PLUGIN FOLDER
set -euo pipefail
build=$1 plugin=$2 folder=$3
rm -rf "$folder"
mkdir -p "$folder/package"
cd "$folder"

DESTDIR=$folder/root cmake --install "$build" --prefix /usr >log
PATH=$folder/root/usr/bin:$PATH
expect() { # TEXT COMMAND...
  local text=$1 output
  shift
  output=$("$@" 2>&1) || true
  [[ $output == *"$text"* ]] || {
    printf '%s: expected "%s", but got:\n%s\n' "$*" "$text" "$output" >&2
    exit 1
  }
}
[ "$(readlink -f "$(command -v xojo-host)")" = "$folder/root/usr/libexec/xojo-host/xojo-host" ]
expect "PluginRegisterMethod" xojo-host services
echo 'Print "a" + Str(1)' >script.xojo
expect "a1" xojo-host run script.xojo
expect "no plug-in to load; name one with --plugin FILE" xojo-host catalogue
expect "no plug-in to check; name its file" xojo-host stress
expect "script.xojo: it is not a library for Linux or macOS" xojo-host --plugin script.xojo catalogue
expect "0 failures" xojo-host stress "$plugin" --only exports

# The manual page must list every command and option.
page=$(sed 's/\\-/-/g' root/usr/share/man/man1/xojo-host.1)
words=$({ xojo-host --help; for command in run catalogue doctor split examples; do xojo-host "$command" --help; done } |
  sed -nE 's/^  (-[a-z],)?(--[a-z-]+|[a-z]+)( .*|$)/\2/p' | sort -u)
[ "$(wc -w <<<"$words")" -ge 20 ]
for word in $words; do
  [[ $page == *"$word"* ]] || {
    echo "the manual page does not mention $word" >&2
    exit 1
  }
done

(cd package && cpack --config "$build/CPackConfig.cmake" -B . >log)
content=$(dpkg-deb -c package/xojo-host_*.deb)
for file in bin/xojo-host libexec/xojo-host/xojo-stress share/man/man1/xojo-host.1 share/doc/xojo-host/copyright; do
  [[ $content == *" ./usr/$file"* ]] || {
    printf 'The package does not contain %s:\n%s\n' "$file" "$content" >&2
    exit 1
  }
done
expect libffi dpkg-deb -f package/xojo-host_*.deb Depends
