#!/bin/bash
# Makes the test kit and tries its short form: tools/check_test_kit.sh
# Runs check.cmd with Wine's cmd in a folder with blanks and letters beyond ASCII in its name. The files
# of an installed host must be there again afterwards.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/install_packages.sh build run package
tools/make_test_kit.sh

export LANG=C.UTF-8  # Wine reads the names of folders in this encoding
folder=$(mktemp -d "${TMPDIR:-/tmp}/horivo Prüfung.XXXXXX")
trap 'rm -rf "$folder"' EXIT
unzip -q build/kit/*.zip -d "$folder"
kit=$(echo "$folder"/*)
source tools/wine_env.sh
wine_env_start package
trap 'wine_env_end; rm -rf "$folder"' EXIT

installed="$WINEPREFIX/drive_c/ProgramData/Zelmo/Horivo/map.jpg"
mkdir -p "$(dirname "$installed")"
echo "of an installed host" >"$installed"
status=0
(cd / && wine cmd /c "Z:${kit//\//\\}\\check.cmd" short </dev/null) || status=$?
cat "$kit/report.txt"
[ "$(cat "$installed")" = "of an installed host" ]
[ -s "$kit/pictures/26-start-800x600.png" ]
[ $status -eq 0 ]
