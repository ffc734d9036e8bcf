#!/bin/bash
# Builds and runs all tests: ./test.sh [native|windows]
#   native   the portable sources, on this machine, under the address and undefined-behaviour sanitizers
#   windows  the Windows sources and the finished DLL, cross-built, under Wine on a virtual display
# Without an argument both run, the second also when the first fails. Missing Debian packages are
# installed first. The exit code is 0 only when everything passed.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

test_native() {
    cmake --preset native && cmake --build --preset native && ctest --preset native -j2
}

# The Windows tests run one after the other: they share one data folder and one input focus.
test_windows() {
    cmake --preset mingw && cmake --build --preset mingw && wine_env_start tests &&
        ctest --preset mingw
}

case ${1:-all} in
    native) sides=(native) ;;
    windows) sides=(windows) ;;
    all) sides=(native windows) ;;
    *)
        echo "usage: ./test.sh [native|windows]" >&2
        exit 2
        ;;
esac

purposes=(build)
if [[ " ${sides[*]} " == *" windows "* ]]; then purposes+=(run); fi
tools/install_packages.sh "${purposes[@]}" || exit 1
source tools/wine_env.sh

failed=()
for side in "${sides[@]}"; do
    "test_$side" || failed+=("$side")
done
[ ${#failed[@]} -eq 0 ]
