#!/usr/bin/python3
"""Writes the address of a DLL's load configuration into its headers: set_load_config.py NM FILE

GNU's linker leaves this entry empty. FILE is a 64-bit image with symbols; NM is the tool that lists
them.
"""
import struct
import subprocess
import sys

SYMBOL = "_load_config_used"
LOAD_CONFIG = 10  # index in the table of data directories
# Offsets and sizes in the PE format, bytes.
HEADERS_POINTER = 0x3C  # where the file stores the offset of its PE headers
SECTION_COUNT = 6  # in the PE headers
FILE_HEADER_SIZE = 24  # with the signature; the optional header follows
SECTION_HEADER_SIZE = 40
SECTION_SIZES = 8  # in a section header: virtual size, address, raw size, raw offset
IMAGE_BASE = 24  # in the optional header, like the next two
CHECKSUM = 64
DIRECTORIES = 112
DIRECTORY_SIZE = 8


def symbol_address(nm, path):
    lines = subprocess.run([nm, path], check=True, capture_output=True, text=True).stdout
    for line in lines.splitlines():
        if line.endswith(" " + SYMBOL):
            return int(line.split()[0], 16)
    sys.exit(f"{path}: no {SYMBOL}")


def file_offset(image, headers, rva):
    count, optional_size = struct.unpack_from("<H12xH", image, headers + SECTION_COUNT)
    for section in range(count):
        entry = headers + FILE_HEADER_SIZE + optional_size + SECTION_HEADER_SIZE * section
        size, address, raw_size, raw = struct.unpack_from("<IIII", image, entry + SECTION_SIZES)
        if address <= rva < address + min(size, raw_size):
            return raw + rva - address
    sys.exit("the load configuration lies in no section")


def checksum(image, place):
    """The image's checksum: the sum of its 16-bit words with carry, without the checksum itself, plus
    the length of the file."""
    padded = bytes(image[:place]) + bytes(4) + bytes(image[place + 4:]) + bytes(len(image) % 2)
    total = sum(struct.unpack(f"<{len(padded) // 2}H", padded))
    while total > 0xFFFF:
        total = (total & 0xFFFF) + (total >> 16)
    return total + len(image)


def main():
    nm, path = sys.argv[1:]
    with open(path, "r+b") as file:
        image = bytearray(file.read())
        headers = struct.unpack_from("<I", image, HEADERS_POINTER)[0]
        optional = headers + FILE_HEADER_SIZE
        base = struct.unpack_from("<Q", image, optional + IMAGE_BASE)[0]
        rva = symbol_address(nm, path) - base
        size = struct.unpack_from("<I", image, file_offset(image, headers, rva))[0]
        entry = optional + DIRECTORIES + DIRECTORY_SIZE * LOAD_CONFIG
        struct.pack_into("<II", image, entry, rva, size)
        place = optional + CHECKSUM
        struct.pack_into("<I", image, place, checksum(image, place))
        file.seek(0)
        file.write(image)


if __name__ == "__main__":
    main()
