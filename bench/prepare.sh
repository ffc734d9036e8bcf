# Source this file (bash) from the root of the project to prepare the benchmarks.
source tools/wine_env.sh

# Builds the programs, makes the maps, starts Wine and puts the map into the library's data folder.
bench_prepare() {
    tools/install_packages.sh build run bench
    mkdir -p build/bench/data
    {
        cmake --preset bench && cmake --build --preset bench
        cmake --preset bench-mingw && cmake --build --preset bench-mingw --target horivo_bench
    } >build/bench.log 2>&1 || {
        tail -40 build/bench.log >&2
        return 1
    }
    local large=build/bench/data/map_8192.jpg
    [ -s $large ] || convert assets/map.jpg -resize '8192x4096!' -quality 90 $large
    wine_env_start bench
    library_folder="$WINEPREFIX/drive_c/ProgramData/Zelmo/Horivo"
    mkdir -p "$library_folder"
    cp assets/map.jpg "$library_folder/map.jpg"
    rm -f "$library_folder/horivo.ini"
}
