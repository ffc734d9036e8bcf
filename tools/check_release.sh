#!/bin/bash
# Checks the ZIP before a release: tools/check_release.sh
# The version must be the same everywhere, two builds must give the same bytes, hosts must build and
# run from the unpacked ZIP, a second compiler must accept all sources without a warning, and the
# reference of the public headers must be complete.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { echo "---- $*"; }

say "packing"
tools/make_package.sh
say "packing again in another folder"
tools/check_reproducible.sh
say "using the package"
tools/check_package.sh
say "a second compiler"
cmake --preset clang >/dev/null
cmake --build --preset clang --target horivo_map horivo_host horivo_demo horivo_tour
say "the reference of the public headers"
doxygen docs/Doxyfile
echo "The release is ready"
