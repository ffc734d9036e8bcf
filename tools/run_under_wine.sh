#!/bin/bash
# Runs a Windows program: tools/run_under_wine.sh PROGRAM ARGS. CTest calls it for every Windows
# test. Below test.sh, Wine and the display are running already; otherwise this script starts and
# ends them.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine_env.sh"
wine_env_start tests

# Wine: a program that shows a window starts a desktop process, which inherits the program's output
# and ends a second later. The program writes to a file instead, so that the caller's pipe closes when
# the program ends.
file=$(mktemp "${TMPDIR:-/tmp}/run_under_wine.XXXXXX")
exec 3<"$file" 4>"$file"
rm -f "$file"
wine "$@" >&4 2>&4 </dev/null 3<&- 4>&- &
program=$!
exec 4>&-
tail -s 0.05 -n +1 -f --pid=$program <&3 &
reader=$!
status=0
wait $program || status=$?
wait $reader || true
exit $status
