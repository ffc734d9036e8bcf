#!/bin/bash
# Makes the ZIP for hosts in build/mingw/package/: tools/make_package.sh
# The same commit gives the same bytes, because files get the time of the commit. Missing Debian
# packages are installed first.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
tools/install_packages.sh build demo package
cmake --preset mingw
cmake --build --preset mingw --target horivo_map horivo_demo horivo_demo_photos horivo_msvc_import_library

# ZIP stores local times, so every machine uses the same time zone.
export TZ=UTC
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
rm -rf build/mingw/package
cpack --config build/mingw/CPackConfig.cmake
rm -rf build/mingw/package/_CPack_Packages
tools/settle_zip.py build/mingw/package/*.zip
tools/check_version.py build/mingw/bin/horivo_map.dll build/mingw/package/*.zip
ls -l build/mingw/package/*.zip
