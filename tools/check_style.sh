#!/bin/bash
# Format and static analysis: tools/check_style.sh
# Runs clang-format on every C++ file, and clang-tidy on src/, demo/, tour/ and bench/. clang-tidy reads
# portable files as this machine compiles them, and Windows files as cross-compiled for MinGW's
# target. Exits non-zero when one of them finds something.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/install_packages.sh build check bench || exit 1
for preset in native mingw bench bench-mingw; do cmake --preset $preset >/dev/null || exit 1; done

failed=0
mapfile -t all_files < <(find src include demo tour tests bench -name '*.cpp' -o -name '*.h' 2>/dev/null)
echo "clang-format: ${#all_files[@]} files"
clang-format --dry-run -Werror "${all_files[@]}" || failed=1

# Runs clang-tidy on the files named on standard input, on all cores; prints only its findings.
tidy() {
    xargs -P "$(nproc)" -n 4 clang-tidy --quiet "$@" 2> >(grep -v ' warnings\? generated' >&2)
}

# Debian's clang does not find the C++ headers of Debian's MinGW by itself.
mingw_headers=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-file-name=include)")/include/c++
tidy_windows() {
    tidy "$@" --extra-arg-before=--target=x86_64-w64-mingw32 --extra-arg=-nostdinc++ \
        --extra-arg="-isystem$mingw_headers" \
        --extra-arg="-isystem$mingw_headers/x86_64-w64-mingw32"
}

echo "clang-tidy: portable files"
find src -name '*.cpp' ! -name '*_win.cpp' | tidy -p build/native || failed=1
find bench/native -name '*.cpp' | tidy -p build/bench || failed=1
echo "clang-tidy: Windows files"
{
    find src -name '*_win.cpp'
    find demo tour -name '*.cpp'
} | tidy_windows -p build/mingw || failed=1
find bench/windows -name '*.cpp' | tidy_windows -p build/bench-mingw || failed=1

[ $failed -eq 0 ] && echo "Style: clean"
exit $failed
