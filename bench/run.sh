#!/bin/bash
# Measures every operation that a user waits for and prints the table: bench/run.sh [--record|--short]
# With --record the table also replaces the one in docs/performance.md. With --short only some of the
# operations are measured, in at most two minutes, against looser targets; the exit code is 0 only when
# they hold.
# Each operation runs in turns with its baseline, natively or under Wine on a virtual display. Missing
# Debian packages are installed first. The full run takes about four minutes after the build. Other
# programs that run at the same time widen the quartiles.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
python3 bench/table.py "$@"
