#!/bin/bash
# Builds all fuzzers and runs each for a while: tools/fuzz.sh [SECONDS_EACH [FUZZER...]]
# The default of 15 seconds each finds obvious faults; run longer after a change of a parser. FUZZER is
# the name of a file in tests/fuzz without its extension. For each fuzzer one line shows how many
# inputs it tried and what they reached: cov is the number of code edges, ft the number of features
# (edges with counts of their executions). The inputs that reached something new are kept in
# build/fuzz/corpus for the next run. An input that fails is written to build/fuzz/finds, and the exit
# code is 1: run the fuzzer with that file alone, mend the fault and add a test for it.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
seconds=${1:-15}
shift
fuzzers=("$@")

tools/install_packages.sh build fuzz || exit 1
cmake --preset fuzz >/dev/null && cmake --build --preset fuzz || exit 1
tools/make_fuzz_seeds.py build/fuzz/seeds
if [ ${#fuzzers[@]} -eq 0 ]; then
    for program in build/fuzz/bin/fuzz_*; do fuzzers+=("${program##*/fuzz_}"); done
fi

finds=build/fuzz/finds
mkdir -p $finds
failed=()
for name in "${fuzzers[@]}"; do
    corpus=build/fuzz/corpus/$name
    log=build/fuzz/$name.log
    mkdir -p "$corpus"
    # -timeout: seconds for a single input, far more than one takes even on a busy machine.
    if build/fuzz/bin/fuzz_"$name" -max_total_time="$seconds" -timeout=20 -max_len=16384 \
        -print_final_stats=1 -artifact_prefix="$finds/$name-" \
        "$corpus" "build/fuzz/seeds/$name" >"$log" 2>&1; then
        runs=$(awk '/number_of_executed_units/ { print $2 }' "$log")
        reached=$(grep -o 'DONE .*cov: [0-9]* ft: [0-9]*' "$log" | sed 's/DONE *//')
        echo "$name: $runs inputs, $reached"
    else
        failed+=("$name")
        tail -n 60 "$log"
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    echo "Faults found by: ${failed[*]}; the inputs lie in $finds"
    exit 1
fi
