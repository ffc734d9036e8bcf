#!/bin/bash
# Packs what tries the library on real Windows into build/kit/: tools/make_test_kit.sh
# The ZIP has the library, all Windows test programs with their data, the tour, the benchmarks, and
# check.cmd, which runs them on any machine. Missing Debian packages are installed first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/install_packages.sh build demo package
cmake --preset mingw
rm -rf build/mingw/tests/bin  # may hold test programs that the project no longer has
cmake --build --preset mingw
cmake --build --preset mingw --target horivo_demo_photos
cmake --preset bench-mingw
cmake --build --preset bench-mingw --target horivo_bench

version=$(sed -n 's/^#define HORIVO_MAP_VERSION_[MP][A-Z]* //p' include/horivo_map.h | paste -sd.)
name=horivo_map-$version-windows-test-kit
kit=build/kit/$name
rm -rf build/kit
mkdir -p "$kit"/{bench,tests,tour}
for file in check.cmd README.txt; do
    sed 's/\r*$/\r/' "tools/test_kit/$file" >"$kit/$file"  # the line ends that cmd needs
done
cp -r LICENSE NOTICE.md licenses assets "$kit"
cp build/mingw/tests/bin/* "$kit/tests"
cp -r tests/data "$kit/tests"
cp -r build/mingw/bin/* "$kit/tour"
cp build/bench-mingw/bin/bench/* "$kit/bench"
x86_64-w64-mingw32-strip "$kit"/{bench,tests,tour}/*.exe

# A path of this machine in a program would be missing on another one.
for program in "$kit"/*/*.{exe,dll}; do
    if tr -d '\0' <"$program" | grep -qF "$PWD"; then  # narrow or wide characters
        echo "$program names the folder where it was built" >&2
        exit 1
    fi
done
(cd build/kit && cmake -E tar cf "$name.zip" --format=zip "$name")
ls -l build/kit/*.zip
