#!/usr/bin/env bash
# Runs the scenario tests, the development host's tests and the examples under valgrind.
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

need "${test_packages[@]}" valgrind
build dev
folder=build/valgrind
rm -rf "$folder"
mkdir -p "$folder"
# Valgrind writes its reports to files, because the tests read standard error.
tool=(valgrind -q --error-exitcode=1 --num-callers=100
  --leak-check=full --show-leak-kinds=definite --errors-for-leak-kinds=definite
  "--suppressions=$PWD/tests/data/valgrind.supp" "--log-file=$PWD/$folder/%p.log")
trap 'cat build/valgrind/*.log' EXIT
say "running the scenario tests and those of the development host under valgrind"
"${tool[@]}" build/dev/bin/scenario_tests --gtest_brief=1
# The excluded test needs 80-bit long doubles, which valgrind computes with only 64 bits.
"${tool[@]}" build/dev/bin/host_tests --gtest_brief=1 --gtest_filter=-HostObjects.OrdersValuesOfAllKinds
say "running the examples under valgrind"
tests/run_examples.sh "$folder" build/dev/bin/ZKTUtil.so "${tool[@]}" "$PWD/build/dev/bin/xojo-host"
trap - EXIT
say "no errors"
