#!/bin/bash
# Soak and races: tools/endurance.sh [short|full] [GTEST_FILTER]
#   short  minutes: what every change has to pass
#   full   the better part of an hour for the soak, ten minutes more for the races
# The filter ("Soak*", "Race*") chooses among the tests. Each runs in a process of its own, from
# copies of the programs, in a Wine of its own: meanwhile the tree may be built and tested.
# HORIVO_SEED=NUMBER repeats a run whose seed was printed.
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
export HORIVO_ENDURANCE=$form
run() { tools/run_under_wine.sh "$folder/horivo_endurance_tests.exe" "$@"; }

failed=()
tests=$(run --gtest_list_tests "--gtest_filter=$filter" |
    tr -d '\r' | awk '/^[A-Z][A-Za-z]*\.$/ { suite = $1 } /^  / { print suite $1 }')
for test in $tests; do
    echo "==== $test ($form)"
    run "--gtest_filter=$test" --gtest_brief=1 </dev/null || failed+=("$test")
done
rm -rf "$folder"

if [ ${#failed[@]} -gt 0 ]; then
    echo "FAILED: ${failed[*]}"
    exit 1
fi
[ -n "$tests" ]
