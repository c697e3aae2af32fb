#!/usr/bin/env bash
# Checks that every debug file has the build id of its library, and that an address in a backtrace from the packaged
# library maps to a source line: check_debug_files.sh HOST... HOST is the command that runs the development host.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

libraries="$package_folder/tree/ZKTUtil/Build Resources"
say "comparing the build ids of libraries and debug files"
build_id() { llvm-readelf-19 --notes "$1" | sed -n 's/.*Build ID: //p'; }
for target in "Linux x86-64" "Linux arm64"; do
  id=$(build_id "$libraries/$target/ZKTUtil.so")
  [ -n "$id" ] || fail "the library for $target has no build id"
  [ "$id" = "$(build_id "$debug_files/$target/ZKTUtil.so.debug")" ] || fail "the debug file for $target does not match"
done
mac=ZKTUtil.dylib.dSYM/Contents/Resources/DWARF/ZKTUtil.dylib
llvm-dwarfdump-19 --uuid "$libraries/Mac Universal/ZKTUtil.dylib" | cut -d' ' -f1-3 >"$package_folder/uuids"
[ "$(wc -l <"$package_folder/uuids")" -eq 2 ] || fail "ZKTUtil.dylib does not have two UUIDs"
llvm-dwarfdump-19 --uuid "$debug_files/Mac Universal/$mac" | cut -d' ' -f1-3 | diff - "$package_folder/uuids"
[ "$(llvm-dwarfdump-19 --name PrintBacktrace "$debug_files/Mac Universal/$mac" | grep -c DW_AT_low_pc)" -eq 2 ] ||
  fail "the debug file for macOS does not have the functions of both processors"

# The first address in a backtrace is in the function that takes the backtrace. It is a return address, so it
# points past the call.
say "tracing an address to its line"
script=$package_folder/backtrace.xojo
echo 'CallDelegateCrashSafeZKT.PrintBacktraceZKT' >"$script"
addresses=$("$@" --plugin "$libraries/Linux x86-64/ZKTUtil.so" run "$script" 2>&1 |
  sed -n 's/.*ZKTUtil\.so(+\(0x[0-9a-f]*\)).*/\1/p')
address=${addresses%%$'\n'*}
[ -n "$address" ] || fail "the backtrace has no address in the library"
line=$(addr2line -e "$debug_files/Linux x86-64/ZKTUtil.so.debug" "$(printf '%#x' $((address - 1)))")
echo "  $address is $line"
[[ $line =~ ^/ZKTUtil/(src/process/backtrace\.cpp):([0-9]+) ]] || fail "$address is not in src/process/backtrace.cpp"
sed -n "${BASH_REMATCH[2]}p" "${BASH_REMATCH[1]}" | grep -q 'backtrace(' || fail "$line does not call backtrace"
