#!/bin/bash
# Measures every road that a person waits for and prints the table: bench/run.sh [--record|--short]
# With --record the table also takes the place of the one in docs/performance.md. With --short only
# some roads are measured, in at most two minutes, against looser targets; the exit code tells
# whether they hold.
# Each road runs in turns with its floor, natively or under Wine on a virtual display. Missing Debian
# packages are installed first. Takes some four minutes once all is built; anything else that runs
# meanwhile shows in the quartiles.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
python3 bench/table.py "$@"
