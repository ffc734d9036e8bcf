#!/bin/bash
# Runs the long tests: anything in random order, failures of every call.
# tools/endurance.sh [short|full] [GTEST_FILTER]
#   short  some minutes; every change has to pass it
#   full   each random profile for ten minutes, a failure of each single call
# The filter ("*Races*", "Random*", "Failures*") selects tests. Each test runs in its own process, with
# copies of the programs and its own Wine, so that the tree can be built and tested at the same time.
# HORIVO_SEED=NUMBER repeats the run that printed this seed; HORIVO_ACTIONS="make,move,paint" leaves
# only these random actions in.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

form=${1:-short}
filter=${2:-*}
case $form in
    short | full) ;;
    *)
        echo "usage: tools/endurance.sh [short|full] [GTEST_FILTER]" >&2
        exit 2
        ;;
esac

tools/install_packages.sh build run || exit 1
cmake --preset mingw >/dev/null && ninja -C build/mingw horivo_endurance_tests || exit 1
source tools/wine_env.sh
wine_env_start endurance || exit 1

folder=$(mktemp -d build/endurance.XXXXXX)
cp build/mingw/tests/bin/horivo_{endurance_tests.exe,map.dll} "$folder"
if [ "$form" = full ]; then export HORIVO_FULL_RUN=1; fi
program=$folder/horivo_endurance_tests.exe
if [ "$form" = full ]; then limit=2h; else limit=5m; fi  # for one test, which needs much less

failed=()
tests=$(tools/run_under_wine.sh "$program" --gtest_list_tests "--gtest_filter=$filter" |
    tr -d '\r' | awk '/^[A-Z][A-Za-z]*\.$/ { suite = $1 } /^  / { print suite $1 }')
for test in $tests; do
    echo "==== $test ($form)"
    timeout -k 10 "$limit" tools/run_under_wine.sh "$program" "--gtest_filter=$test" \
        --gtest_brief=1 </dev/null || failed+=("$test")
done
rm -rf "$folder"

if [ ${#failed[@]} -gt 0 ]; then
    echo "FAILED: ${failed[*]}"
    exit 1
fi
[ -n "$tests" ]
