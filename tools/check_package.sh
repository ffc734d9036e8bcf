#!/bin/bash
# Uses the ZIP as the author of a host would: tools/check_package.sh [ZIP]
# Unpacks the ZIP into a temporary folder and builds the hosts of examples/ against it: C++ and C
# with find_package, C++ also in every other way of the guides, as written there, C# with Mono's
# compiler. Then runs the hosts in C++ and C, and the sample host, whose map must show a lit globe.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
root=$PWD
tools/install_packages.sh build run demo package
zip=$(realpath "${1:-$(ls build/mingw/package/*.zip)}")
work=$(mktemp -d "${TMPDIR:-/tmp}/horivo package.XXXXXX")  # a path with a space, as users have
trap 'rm -rf "$work"' EXIT

say() { echo "-- $*"; }

unzip -q "$zip" -d "$work"
package=$(echo "$work"/horivo_map-*)

say "README shows the C++ host unchanged"
diff <(awk '/^```$/ { shown = 0 } shown { print } /^```cpp$/ { shown = 1 }' README.md) \
    "$package/examples/cpp/globe.cpp"

say "every link in the package's texts leads to a file in it"
for text in "$package"/*.md "$package"/docs/*.md; do
    while read -r link; do
        [ -e "$(dirname "$text")/$link" ] || { echo "$text: $link"; exit 1; }
    done < <(grep -oP '\]\((?!https:)\K[^)#]+' "$text")
done

for language in cpp c; do
    say "building examples/$language"
    cmake -S "$package/examples/$language" -B "$work/$language" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" "-DCMAKE_PREFIX_PATH=$package" \
        "-DCMAKE_${language^^}_FLAGS=-Wall -Wextra -Wno-missing-field-initializers -Werror" \
        >"$work/log" 2>&1 &&
        cmake --build "$work/$language" >>"$work/log" 2>&1 || {
        cat "$work/log"
        exit 1
    }
done

say "building the first host of the package's README, as written there"
(cd "$package" && export "CMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" CMAKE_GENERATOR=Ninja &&
    eval "$(grep '^cmake ' README.md)" && [ -s globe/globe.exe ] && rm -r globe) >"$work/log" 2>&1 || {
    cat "$work/log"
    exit 1
}

say "configuring the package's sources alone"
cmake -S "$package/source" -B "$work/source" -G Ninja \
    "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

# The CMake lines number $1 of the host guide, for the package in this test.
guide_lines() {
    awk -v block="$1" '/^```$/ { shown = 0 } shown && seen == block { print }
                       /^```cmake$/ { shown = 1; ++seen }' "$package/docs/host-guide.md" |
        sed "s|FOLDER|$package|; s|\"ZIP\"|\"$zip\"|"
}
for way in 1 2; do
    say "building examples/cpp with the CMake lines number $way of the host guide"
    consumer=$work/consumer$way
    mkdir "$consumer"
    cp "$package/examples/cpp/globe.cpp" "$consumer"
    echo '#include "horivo_host.h"
          extern const bool started = StartHostServices();' >"$consumer/services.cpp"
    {
        echo 'cmake_minimum_required(VERSION 3.25)
              project(consumer LANGUAGES CXX)'
        guide_lines $way
        echo 'target_sources(globe PRIVATE services.cpp)
              if(TARGET horivo_demo OR TARGET horivo_portable_tests OR HORIVO_TESTS)
                message(FATAL_ERROR "the library adds more than itself to another build")
              endif()'
    } >"$consumer/CMakeLists.txt"
    {
        cmake -S "$consumer" -B "$consumer/build" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
            "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" && cmake --build "$consumer/build"
    } >"$work/log" 2>&1 || {
        cat "$work/log"
        exit 1
    }
    [ -s "$consumer/build/globe.exe" ] && [ $way = 2 -o -s "$consumer/build/map.jpg" ]
done

say "find_package refuses other systems, 32 bits, ARM and unknown components, and says why"
cat >"$work/refuse.cmake" <<'END'
cmake_minimum_required(VERSION 3.21)
find_package(horivo_map CONFIG NO_DEFAULT_PATH PATHS "${package}" COMPONENTS ${component})
if(horivo_map_FOUND OR NOT horivo_map_NOT_FOUND_MESSAGE MATCHES "${reason}")
  message(FATAL_ERROR "not refused for \"${reason}\": ${horivo_map_NOT_FOUND_MESSAGE}")
endif()
END
refuse() { cmake "-Dpackage=$package" "-Dreason=$1" "${@:2}" -P "$work/refuse.cmake" 2>"$work/log" ||
    { cat "$work/log"; return 1; }; }
refuse "this build is for Linux" -DCMAKE_SYSTEM_NAME=Linux
refuse "32-bit" -DWIN32=1 -DCMAKE_SIZEOF_VOID_P=4
refuse "for ARM" -DWIN32=1 -DCMAKE_CXX_COMPILER_ARCHITECTURE_ID=ARM64
refuse "no component globe" -DWIN32=1 -Dcomponent=globe
refuse "no component horivo_host" -DWIN32=1 -DMSVC=1 -Dcomponent=horivo_host

say "building examples/cpp without CMake, with the lines of the host guide"
plain=$(mktemp -u "${TMPDIR:-/tmp}/horivo.XXXXXX")  # no blanks: the guide's lines have no quotes
ln -s "$package" "$plain"
trap 'rm -rf "$work" "$plain"' EXIT
mkdir "$work/plain"
cp "$package"/examples/c*/*.c* "$work/consumer1/services.cpp" "$work/plain"
guide_line() {
    sed -n "s|^. $1 . \`\{1,2\}\([^|]*[^\`]\)\`\{1,2\} .*|\1|p" "$package/docs/host-guide.md" |
        sed "s|FOLDER|$plain|g; s/^g\(++\|cc\)/x86_64-w64-mingw32-g\1-posix/"
}
for compiler in "g++ of MinGW-w64" "g++, pkg-config" "g++, services for hosts" "gcc, for C" mcs; do
    line=$(guide_line "$compiler")
    (cd "$work/plain" && rm -f globe.exe && eval "$line" && [ -s globe.exe ]) ||
        { echo "$compiler: $line"; exit 1; }
done

say "building examples/csharp; its record must have the layout of the header"
mcs -warnaserror -warn:4 -platform:x64 "-out:$work/csharp.exe" "$package"/examples/csharp/*.cs
mcs -warnaserror "-out:$work/layout.exe" tools/csharp_layout.cs "$package/examples/csharp/HorivoMap.cs"
mono "$work/layout.exe"

say "linking with the import library for Microsoft's linker"
clang --target=x86_64-pc-windows-msvc -nostdinc -c tools/import_library_user.c \
    -o "$work/user.obj"
lld-link -nodefaultlib -entry:start -subsystem:console "-out:$work/user.exe" "$work/user.obj" \
    "$package/lib/horivo_map.lib"
x86_64-w64-mingw32-objdump -p "$work/user.exe" | grep -A12 'DLL Name: horivo_map.dll' >"$work/imports"
for function in $(sed -n 's/^    //p' src/api/horivo_map.def); do
    grep -qw "$function" "$work/imports" || { echo "$function is not imported"; exit 1; }
done

source tools/wine_env.sh
wine_env_start package
trap 'wine_env_end; rm -rf "$work" "$plain"' EXIT

# Takes pictures of the map until one shows the lit globe. After 20 failures it prints what is wrong
# with the last picture.
check_map() {
    local window
    echo "there is no map" >"$work/log"
    for _ in $(seq 20); do
        sleep 1
        window=$(xdotool search --onlyvisible --name '^GL Map$') || continue
        import -window "$window" "PNG24:$work/map.png"
        ! PYTHONPATH="$root/tools" python3 - "$work/map.png" >"$work/log" 2>&1 <<'END' || return 0
import sys
from check_pictures import Surface, demand, read_png
surface = Surface(read_png(sys.argv[1]))
demand(surface.sea > 0.05 and surface.land > 0.2,
       f"the globe shows {surface.sea:.0%} sea and {surface.land:.0%} land")
END
    done
    cat "$work/log"
    return 1
}

# Runs a host on a machine without the library's data folder: run_host FOLDER PROGRAM TITLE CHECK
# Its files are beside it, not in the current folder. A window with this title must appear; hosts show
# it only after CreateMapWindow has succeeded. CHECK must succeed while the host runs, and the host must
# end with exit code 0. For the host it is noon on a day in June in Lagos, so that the world clock starts
# above Africa, in daylight.
run_host() {
    local data="$WINEPREFIX/drive_c/ProgramData/Zelmo" host window='' status=0
    say "running $2 in $1"
    rm -rf "$data"
    (cd / && TZ=Africa/Lagos DONT_FAKE_MONOTONIC=1 exec faketime -f "@2026-06-21 12:00:00" \
        wine "$1/$2") &
    host=$!
    for _ in $(seq 120); do
        window=$(xdotool search --onlyvisible --name "^$3\$" 2>/dev/null || true)
        [ -z "$window" ] || break
        kill -0 $host 2>/dev/null || break  # the host has ended; its exit code is printed below
        sleep 0.5
    done
    if [ -z "$window" ]; then
        wine taskkill /F /IM "$2" >/dev/null 2>&1 || true
        wait $host || echo "no window; the host ended with $?"
        return 1
    fi
    $4 || return 1
    kill -0 $host 2>/dev/null || { echo "the host ended by itself"; return 1; }
    say "its window: $(xdotool getwindowgeometry "$window" | tr '\n' ' ')"
    [ -s "$data/Horivo/map.jpg" ]
    wine taskkill /IM "$2" >/dev/null 2>&1 || true
    wait $host || status=$?
    [ $status -eq 0 ] || { echo "after closing, the host ended with $status"; return 1; }
}
# Starts a host whose map.jpg is a text. It must end with exit code 2 and leave no picture behind.
refuse_picture() {
    local status=0
    say "starting the host in $1 with a bad picture"
    echo "a text" >"$1/map.jpg"
    wine "$1/globe.exe" || status=$?
    cp "$package/bin/map.jpg" "$1"
    [ $status -eq 2 ] || { echo "the host ended with $status"; return 1; }
    [ -z "$(ls "$WINEPREFIX/drive_c/ProgramData/Zelmo/Horivo")" ]
}
for language in cpp c; do
    run_host "$work/$language" globe.exe 'My globe' 'sleep 3'  # Wine does not show the globe there
    rm -rf "$WINEPREFIX/drive_c/ProgramData/Zelmo"
    refuse_picture "$work/$language"
done
run_host "$package/bin" horivo_demo.exe '.* - Horivo World Clock' check_map
[ -s "$WINEPREFIX/drive_c/ProgramData/Zelmo/City Photos/France/Paris/index.tsv" ] ||
    { echo "the sample photos were not copied"; exit 1; }
say "the package is as it should be"
