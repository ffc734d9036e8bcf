#!/bin/bash
# Builds all fuzzers and lets each run for a while: tools/fuzz.sh [SECONDS_EACH [FUZZER...]]
# Without an argument 15 seconds each, which finds what a careless change breaks; a longer run is
# for a change of a parser. FUZZER is a name of tests/fuzz without its ending. One line a fuzzer tells
# how many inputs it tried and what they reached: cov, places in the program, and ft, features
# (places with how often they were passed). What it learnt lies in build/fuzz/corpus and serves
# the next run. An input that breaks something is left in build/fuzz/finds and the exit code is 1:
# run the fuzzer with that file alone, mend the fault and turn it into a test.
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
    # A single input may take long on a busy machine, but never this long.
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
