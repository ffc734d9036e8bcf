#!/bin/bash
# Measures every operation that a user waits for and prints the table: bench/run.sh [--record]
# With --record the table also replaces the one in docs/performance.md.
# Each operation runs in turns with its baseline, natively or under Wine on a virtual display. Missing
# Debian packages are installed first. Takes about four minutes after the build. Other programs that
# run at the same time widen the quartiles.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
python3 bench/table.py "$@"
