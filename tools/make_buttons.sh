#!/bin/sh
# Makes assets/buttons.png from assets/buttons.svg. Needs rsvg-convert (Debian: librsvg2-bin).
# The PNG file is committed: run this after a change of the SVG file and look at the result.
set -eu
cd "$(dirname "$0")/.."
rsvg-convert --width 128 --height 256 --output assets/buttons.png assets/buttons.svg
# Reads width, height, bits per channel and colour type (6: red, green, blue, alpha) from the PNG
# header.
header=$(od -An -tx1 -j16 -N10 assets/buttons.png | tr -d ' \n')
if [ "$header" != 00000080000001000806 ]; then
    echo "buttons.png is not 128 x 256 pixels of 32 bits: $header" >&2
    exit 1
fi
