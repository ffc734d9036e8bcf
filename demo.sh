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
cmake --build --preset mingw --target horivo_demo horivo_demo_photos horivo_tour
source tools/wine_env.sh

if [ $# -eq 0 ] && [ -n "${DISPLAY:-}" ]; then
    wine_env_start desktop
    wine build/mingw/bin/horivo_demo.exe
    exit
fi

wine_env_start tour
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
    TZ=${zone:-UTC} DONT_FAKE_MONOTONIC=1 faketime -f "@2026-06-21 $hour" \
        wine "$tour" "$part" build/demo "$@"
}
tour_at 20:00:00 june
tour_at 12:00:00 pointer
tour_at 12:00:00 sizes 800 600
tour_at 12:00:00 sizes 2560 1440
# The whole program in its languages, in London, on monitors of two scalings. How Windows is set to
# write times must show in list and globe, whatever the language.
for settings in '96 800 600 h:mm:ss tt' '144 1280 800 HH:mm:ss'; do
    read -r dpi width height format <<<"$settings"
    wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$dpi" /f >/dev/null
    wine reg add 'HKCU\Control Panel\International' /v sTimeFormat /d "$format" /f >/dev/null
    zone=Europe/London tour_at 12:00:00 clock "$width" "$height"
done
wine reg delete 'HKCU\Control Panel\Desktop' /v LogPixels /f >/dev/null
wine reg delete 'HKCU\Control Panel\International' /v sTimeFormat /f >/dev/null
echo "Pictures of the tour:"
ls build/demo/*.png
