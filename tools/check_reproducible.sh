#!/bin/bash
# Checks that the same sources always give the same ZIP: tools/check_reproducible.sh
# Builds the ZIP a second time from a copy in another folder, without compiler cache, and compares its
# bytes with the ZIP of tools/make_package.sh.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
copy=$(mktemp -d "${TMPDIR:-/tmp}/horivo-again.XXXXXX")
trap 'rm -rf "$copy"' EXIT

git ls-files -z | xargs -0 cp --parents -t "$copy"
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER
(cd "$copy" && CCACHE_DISABLE=1 tools/make_package.sh) >"$copy/log" 2>&1 || {
    tail -40 "$copy/log"
    exit 1
}

zip=$(ls build/mingw/package/*.zip)
if ! cmp "$zip" "$copy/$zip"; then
    echo "Two builds of the same sources differ:"
    diff <(unzip -v "$zip") <(unzip -v "$copy/$zip") || true
    exit 1
fi
echo "Two builds of the same sources give the same bytes: $(sha256sum <"$zip" | cut -d' ' -f1)"
