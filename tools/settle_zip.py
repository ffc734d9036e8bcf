#!/usr/bin/env python3
"""Sorts the entries of a ZIP by name: tools/settle_zip.py ZIP

The packer adds files in the order of the file system, which differs between machines.
"""

import sys
import zipfile
from pathlib import Path


def main():
    path = Path(sys.argv[1])
    settled = path.with_suffix(".settled")
    with zipfile.ZipFile(path) as source, zipfile.ZipFile(settled, "w") as target:
        for entry in sorted(source.infolist(), key=lambda entry: entry.filename):
            plain = zipfile.ZipInfo(entry.filename, entry.date_time)
            plain.external_attr = entry.external_attr
            plain.create_system = entry.create_system
            plain.compress_type = entry.compress_type
            target.writestr(plain, source.read(entry), compresslevel=9)
    settled.replace(path)


if __name__ == "__main__":
    main()
