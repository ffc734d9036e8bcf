#!/bin/bash
# Builds and runs the sample host: ./demo.sh [--tour]
# With a display, the world clock opens. You can search and choose a city, drag the globe, turn the
# wheel and click a place; the menus and F1 list the keys.
# Without a display, or with --tour, another program operates the same windows on a virtual display
# and writes pictures to build/demo/. Missing Debian packages are installed first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
if [ $# -gt 1 ] || { [ $# -eq 1 ] && [ "$1" != --tour ]; }; then
    echo "usage: ./demo.sh [--tour]" >&2
    exit 2
fi

tools/install_packages.sh build run demo
cmake --preset mingw
cmake --build --preset mingw --target horivo_demo horivo_tour
source tools/wine_env.sh

# Makes sample city photos in the library's photo folder, once for each Wine prefix.
prepare_photos() {
    [ ! -e "$WINEPREFIX/horivo-photos" ] || return 0
    tools/make_sample_photos.py "$WINEPREFIX/drive_c/ProgramData/Zelmo/City Photos"
    touch "$WINEPREFIX/horivo-photos"
}

if [ $# -eq 0 ] && [ -n "${DISPLAY:-}" ]; then
    wine_env_start desktop
    prepare_photos
    wine build/mingw/bin/horivo_demo.exe
    exit
fi

wine_env_start tour
prepare_photos
rm -rf build/demo
mkdir -p build/demo
echo "Taking the tour"
tour=build/mingw/bin/horivo_tour.exe
wine "$tour" globe build/demo
# Runs a part of the tour at a given hour. faketime changes the clock that the program reads, but not
# how long it waits.
tour_at() {
    local hour=$1 part=$2
    shift 2
    TZ=UTC DONT_FAKE_MONOTONIC=1 faketime -f "@2026-06-21 $hour" wine "$tour" "$part" build/demo "$@"
}
tour_at 20:00:00 june
tour_at 12:00:00 pointer
tour_at 12:00:00 sizes 800 600
tour_at 12:00:00 sizes 2560 1440
# The whole program in several languages, with two scalings of the monitor.
for scaling in '96 800 600' '144 1280 800'; do
    read -r dpi width height <<<"$scaling"
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    tour_at 12:00:00 clock "$width" "$height"
done
wine reg delete 'HKCU\Control Panel\Desktop' /v LogPixels /f >/dev/null
echo "Pictures of the tour:"
ls build/demo/*.png
