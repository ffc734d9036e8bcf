#!/bin/bash
# Measures how time and memory grow with the map picture, the cities, the window and the labels, and
# plots them into docs/pictures/growth.png: bench/growth.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
source bench/prepare.sh
bench_prepare
# Sets the coarsest level of detail. The library would otherwise lower the detail where frames are
# slow, and the curve over the sizes of windows would have steps.
printf '[map]\r\nlag_factor=8\r\n' >"$library_folder/horivo.ini"
python3 bench/growth.py
