#!/bin/bash
# What the ZIP must pass before anybody gets it: tools/check_release.sh
# One version everywhere, the same bytes from two builds, hosts built and run from the unpacked ZIP,
# a second compiler content with every line, a reference without gaps.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "---- $*"; }

say "packing"
tools/make_package.sh
say "packing again elsewhere"
tools/check_reproducible.sh
say "using the package"
tools/check_package.sh
say "a second compiler"
cmake --preset clang >/dev/null
cmake --build --preset clang --target horivo_map horivo_host horivo_demo horivo_tour
say "the reference of the public headers"
doxygen docs/Doxyfile
echo "The release is ready"
