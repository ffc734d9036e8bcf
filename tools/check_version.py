#!/usr/bin/env python3
"""Checks that the version is the same everywhere: tools/check_version.py DLL ZIP

The newest released version in CHANGELOG.md, the DLL's version resource and the name of the package
must have the version of include/horivo_map.h.
"""

import re
import struct
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FIXED_VERSION = struct.pack("<II", 0xFEEF04BD, 0x10000)  # first bytes of VS_FIXEDFILEINFO


def header_version():
    header = (ROOT / "include/horivo_map.h").read_text()
    return ".".join(re.search(rf"^#define HORIVO_MAP_VERSION_{part} (\d+)$", header, re.M).group(1)
                    for part in ("MAJOR", "MINOR", "PATCH"))


def changelog_version():
    return re.search(r"^## (\d\S*)", (ROOT / "CHANGELOG.md").read_text(), re.M).group(1)


def resource_versions(dll):
    """Versions of file and product in the resource, each as a number and as a text."""
    image = dll.read_bytes()
    place = image.index(FIXED_VERSION) + len(FIXED_VERSION)
    for name, (high, low) in (("file", struct.unpack_from("<II", image, place)),
                              ("product", struct.unpack_from("<II", image, place + 8))):
        yield f"resource, {name} number", f"{high >> 16}.{high & 0xFFFF}.{low >> 16}"
    for key in ("FileVersion", "ProductVersion"):
        start = image.index((key + "\0").encode("utf-16-le")) + 2 * len(key) + 2
        text = image[start:start + 64].decode("utf-16-le", "replace").lstrip("\0").split("\0")[0]
        yield f"resource, {key}", text


def main():
    dll, package = map(Path, sys.argv[1:3])
    wanted = header_version()
    found = [("CHANGELOG.md", changelog_version()), *resource_versions(dll),
             ("package", package.name.split("-")[1])]
    wrong = [(place, version) for place, version in found if version != wanted]
    for place, version in wrong:
        print(f"{place} says {version}, horivo_map.h {wanted}")
    print(f"Version {wanted}: " + ("not everywhere" if wrong else "everywhere"))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
