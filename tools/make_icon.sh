#!/bin/sh
# Makes assets/horivo_demo.ico from assets/horivo_demo.svg. Needs rsvg-convert and convert (Debian:
# librsvg2-bin, imagemagick). The icon is committed; run this after a change of the drawing and look
# at the result.
set -eu
cd "$(dirname "$0")/.."
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for size in 16 20 24 32 48 64 256; do
    rsvg-convert --width $size --height $size --output "$folder/$(printf %03d $size).png" \
        assets/horivo_demo.svg
done
convert "$folder"/*.png assets/horivo_demo.ico
