#!/bin/bash
# Uses the ZIP as the author of a host would: tools/check_package.sh [ZIP]
# Unpacks the ZIP into a temporary folder and builds the hosts of examples/ against it: C++ and C
# with find_package, C++ also with the library's sources in the same build, C# with Mono's compiler.
# Then runs the hosts in C++ and C, and the sample host, whose map must show a lit globe.
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
diff <(awk '/^```$/ { shown = 0 } shown { print } /^```cpp$/ { shown = 1 }' "$package/README.md") \
    "$package/examples/cpp/globe.cpp"

for language in cpp c; do
    say "building examples/$language"
    cmake -S "$package/examples/$language" -B "$work/$language" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" "-DCMAKE_PREFIX_PATH=$package" \
        "-DCMAKE_${language^^}_FLAGS=-Wall -Wextra -Wno-missing-field-initializers -Werror" \
        "-DCMAKE_EXE_LINKER_FLAGS=-static" >"$work/log" 2>&1 &&
        cmake --build "$work/$language" >>"$work/log" 2>&1 || {
        cat "$work/log"
        exit 1
    }
done

say "building examples/cpp with the library's sources in the same build"
mkdir "$work/consumer"
cat >"$work/consumer/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.25)
project(consumer LANGUAGES CXX)
include(FetchContent)
FetchContent_Declare(horivo_map)
FetchContent_MakeAvailable(horivo_map)
add_executable(globe WIN32 ${horivo_map_SOURCE_DIR}/examples/cpp/globe.cpp)
target_link_libraries(globe PRIVATE horivo_map::horivo_map horivo_map::horivo_host)
add_custom_command(TARGET globe POST_BUILD
                   COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_RUNTIME_DLLS:globe> $<TARGET_FILE_DIR:globe>
                   COMMAND_EXPAND_LISTS)
if(TARGET horivo_demo OR TARGET horivo_portable_tests OR HORIVO_TESTS)
  message(FATAL_ERROR "the library adds more than itself to another build")
endif()
END
{
    cmake -S "$work/consumer" -B "$work/consumer/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        "-DCMAKE_TOOLCHAIN_FILE=$root/cmake/mingw.cmake" \
        "-DFETCHCONTENT_SOURCE_DIR_HORIVO_MAP=$root" && cmake --build "$work/consumer/build"
} >"$work/log" 2>&1 || {
    cat "$work/log"
    exit 1
}
[ -s "$work/consumer/build/horivo_map.dll" ]

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
trap 'wine_env_end; rm -rf "$work"' EXIT

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
# A window with this title must appear; hosts show it only after CreateMapWindow has succeeded. CHECK
# must succeed while the host runs, and the host must end with exit code 0. For the host it is noon
# on a day in June in Lagos, so that the world clock starts above Africa, in daylight.
run_host() {
    local data="$WINEPREFIX/drive_c/ProgramData/Zelmo" host window='' status=0
    say "running $2 in $1"
    rm -rf "$data"
    (cd "$1" && TZ=Africa/Lagos DONT_FAKE_MONOTONIC=1 exec faketime -f "@2026-06-21 12:00:00" wine "$2") &
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
run_host "$work/cpp" globe.exe 'My globe' 'sleep 3'  # no check of the map: Wine does not show it there
run_host "$work/c" globe.exe 'My globe' 'sleep 3'
run_host "$package/bin" horivo_demo.exe '.* - Horivo World Clock' check_map
[ -s "$WINEPREFIX/drive_c/ProgramData/Zelmo/City Photos/France/Paris/index.tsv" ] ||
    { echo "the sample photos were not copied"; exit 1; }
say "the package is as it should be"
