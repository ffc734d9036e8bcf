#!/bin/bash
# Runs a Windows program: tools/run_under_wine.sh PROGRAM ARGS. CTest calls it for every Windows
# test. Inside test.sh the servers are up already; on its own it starts and ends them itself.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine_env.sh"
wine_env_start tests

# Wine: a program that shows a window starts a desktop process, which inherits the program's output
# and outlives it by a second. Through a file the caller's pipe closes with the program itself.
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
