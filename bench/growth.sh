#!/bin/bash
# Measures how time and memory grow with the map picture, the cities, the window and the labels, and
# plots them into docs/pictures/growth.png: bench/growth.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
python3 bench/growth.py
