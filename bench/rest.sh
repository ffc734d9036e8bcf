#!/bin/bash
# Measures the processor time of the sample host while it is open and untouched:
# bench/rest.sh [SECONDS]. Takes four minutes for each of two levels of detail, if not told otherwise.
# Run it on a machine that does nothing else: where threads share caches, each takes longer.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
python3 bench/rest.py "$@"
