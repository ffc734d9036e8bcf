#!/bin/bash
# Installs the Debian packages that are missing: tools/install_packages.sh PURPOSE...
# PURPOSE is build, run, demo, check, fuzz, package or bench. The script asks no questions, and needs
# root or sudo only when a package is missing. Exits non-zero when one could not be installed.
set -euo pipefail

# Both compilers, both generators, the sources of the test framework, and Python with time zone data
# for the check of the sample cities.
build_packages=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix googletest libgl1-mesa-dev
    libglu1-mesa-dev python3 tzdata)
# Wine loads the X libraries at run time, so its package does not depend on them. Without
# libxcomposite1 Wine draws OpenGL child windows in another way. Without fonts-wine it replaces the
# window's font by a stretched one.
run_packages=(wine wine64 fonts-wine xvfb faketime libgl1 libgl1-mesa-dri libxcomposite1
    libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1 procps python3-pefile
    util-linux)
# For the sample photos.
demo_packages=(imagemagick python3 fonts-vlgothic)
check_packages=(clang-format clang-tidy python3)
fuzz_packages=(clang libclang-rt-dev)
# For the ZIP, hosts built from it in three languages, the reference, and the second compiler.
package_packages=(clang doxygen git lld llvm mono-mcs mono-runtime pkgconf unzip xdotool)
# For native benchmarks, large maps, the table and the plots.
bench_packages=(libbenchmark-dev imagemagick python3 gnuplot-nox)

wanted=()
for purpose in "$@"; do
    case $purpose in
        build) wanted+=("${build_packages[@]}") ;;
        run) wanted+=("${run_packages[@]}") ;;
        demo) wanted+=("${demo_packages[@]}") ;;
        check) wanted+=("${check_packages[@]}") ;;
        fuzz) wanted+=("${fuzz_packages[@]}") ;;
        package) wanted+=("${package_packages[@]}") ;;
        bench) wanted+=("${bench_packages[@]}") ;;
        *)
            echo "install_packages: no such purpose: $purpose" >&2
            exit 2
            ;;
    esac
done

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

missing=()
for package in "${wanted[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "These packages are missing and neither root nor sudo is at hand:" >&2
        echo "  ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing: ${missing[*]}"
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y
    -o Dpkg::Options::=--force-confold -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3)
"${apt[@]}" update
"${apt[@]}" install --no-install-recommends "${missing[@]}"
