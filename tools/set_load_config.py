#!/usr/bin/python3
"""Tells Windows' loader where a DLL keeps its load configuration: set_load_config.py NM FILE

GNU's linker leaves that entry of the headers empty. FILE is a 64-bit image with its symbols, NM
the tool that lists them.
"""
import struct
import subprocess
import sys

SYMBOL = "_load_config_used"
LOAD_CONFIG = 10  # index in the table of directories


def symbol_address(nm, path):
    lines = subprocess.run([nm, path], check=True, capture_output=True, text=True).stdout
    for line in lines.splitlines():
        if line.endswith(" " + SYMBOL):
            return int(line.split()[0], 16)
    sys.exit(f"{path}: no {SYMBOL}")


def file_offset(image, headers, rva):
    count, optional_size = struct.unpack_from("<H12xH", image, headers + 6)
    for section in range(count):
        entry = headers + 24 + optional_size + 40 * section
        size, address, raw_size, raw = struct.unpack_from("<IIII", image, entry + 8)
        if address <= rva < address + min(size, raw_size):
            return raw + rva - address
    sys.exit("the load configuration lies in no section")


def checksum(image, place):
    """The sum that the headers carry: 16-bit words with carry, without itself, and the length."""
    padded = bytes(image[:place]) + bytes(4) + bytes(image[place + 4:]) + bytes(len(image) % 2)
    total = sum(struct.unpack(f"<{len(padded) // 2}H", padded))
    while total > 0xFFFF:
        total = (total & 0xFFFF) + (total >> 16)
    return total + len(image)


def main():
    nm, path = sys.argv[1:]
    with open(path, "r+b") as file:
        image = bytearray(file.read())
        headers = struct.unpack_from("<I", image, 0x3C)[0]
        optional = headers + 24
        base = struct.unpack_from("<Q", image, optional + 24)[0]
        rva = symbol_address(nm, path) - base
        size = struct.unpack_from("<I", image, file_offset(image, headers, rva))[0]
        struct.pack_into("<II", image, optional + 112 + 8 * LOAD_CONFIG, rva, size)
        struct.pack_into("<I", image, optional + 64, checksum(image, optional + 64))
        file.seek(0)
        file.write(image)


if __name__ == "__main__":
    main()
