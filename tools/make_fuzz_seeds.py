#!/usr/bin/python3
"""Writes the first inputs of every fuzzer: tools/make_fuzz_seeds.py FOLDER

Each fuzzer gets a folder with the name of its source in tests/fuzz. It has a file for each code path
of the parser that the fuzzer would need a long time to find.
"""
import pathlib
import struct
import sys


def utf16(text):
    return text.encode("utf-16-le", "surrogatepass")


def jpeg(*segments, frame=0xC0, width=5400, height=2700, components=3):
    """The start of a JPEG file: start marker, segments of (marker, payload), and frame header."""
    bytes_ = b"\xff\xd8"
    for marker, payload in segments:
        bytes_ += bytes([0xFF, marker]) + struct.pack(">H", len(payload) + 2) + payload
    return bytes_ + bytes([0xFF, frame]) + struct.pack(">HBHHB", 8, 8, height, width, components)


def texture(width, height, kind=8, limits=(0, 0), scalers=0x80, fit=(512, 512), columns=2):
    """An input of the fuzzer texture_fit: its settings, then a few bytes of noise."""
    words = struct.pack(">BHHB", 0, width, height, kind) + struct.pack(">HH", *limits)
    return words + bytes([scalers]) + struct.pack(">HHBB", *fit, columns, 0) + bytes(range(64))


def profile(x, y, compression, lag, size, elapsed, text):
    return struct.pack("<iiiiiI", x, y, compression, lag, size, elapsed) + text


CITY_INDEX = b"# remark\r\n1\t-\t-\tOld harbour\t/1.htm\r\n12\t\t\tcaf\xc3\xa9\tx.htm\n"
COUNTRY_INDEX = b"\xef\xbb\xbf7\tLyon\t-\t-\tbridge\t/7.htm\n8\tS\xe3o\t..\t\t\t@other\n\x1a9\n"

SEEDS = {
    "jpeg_header": [
        jpeg(),
        jpeg((0xE0, b"JFIF\0\1\1\0\0\1\0\1\0\0"), (0xE1, b"Exif\0\0" * 7), frame=0xC2),
        jpeg((0xDB, bytes(65)), width=65535, height=65535, components=4),
        b"\xff\xd8\xff\xff\xff\xd8\x00\x00",
        b"\xff\xd8\xff\xe0\x00\x00\xff\xc0\x00\x01",
    ],
    "index_file": [
        CITY_INDEX,
        COUNTRY_INDEX,
        b"4294967296\t..\t..\t. .\t//\n-1\ta\n+5\t%\tb:\tc?\td\"e\n",
        b"1\t" + "ü".encode() * 2050 + b"\t\t\t\n2\n",
        b"1\0\t2\r\t3\n;\n\n#\n" + b"\xed\xa0\x80\xf4\x90\x80\x80\xc0\xaf\n3",
    ],
    "index_line": [
        b"\0\0\x0c0\x1fLyon\x1f-\x1fOld harbour\x1f/12.htm\x1fmore",
        b"\1\1\0" + b"0\x1fLyon\x1f-\x1f-\x1fbridge\x1f/7.htm",
        b"\1\0\1" + b"\x1f" + b"x" * 4090 + b"\x1fy\x1fz",
    ],
    "profile_values": [
        profile(0, -1, 0, 1, 16384, 40, b"1252"),
        profile(-9, 9, -1, 800, 1024, 0, b"JPN"),
        profile(2**31 - 1, -(2**31), 2**31 - 1, 2**31 - 1, 2**31 - 1, 2**32 - 1, b"99999999999"),
        profile(0, 0, 0, 0, 0, 1000, "Zürich\tCH\t47.4\t8.5\tW. Europe Standard Time\n".encode()),
        profile(0, 0, 0, 0, 64, 500, b"#\nA\tB\tnan\tinf\t\n\tB\t1\t1\n\xf0\x9f\x8c\x8d\tB\t-9e99\t1"),
    ],
    "escapes": [
        b"\0a\\\\b\\nc\\rd\\te\\xf\\",
        b"\2&File [new]\t= Ctrl;N & more_and-more.",
        b"\1\\\0n\0&\0 \0" * 4,
    ],
    "unit_table": [
        b"days;1 day",
        "дней;1,21,31 день;2-4,22-24 дня".encode(),
        b"h;99-0 a;4294967295-4294967296 b;1-,-2,, c;;;" + b"0 " * 40,
        b"w;" + b"x" * 1030 + b";1 y",
    ],
    "command_line": [
        utf16('"C:\\Program Files\\clock\\clock.exe" /quiet "D:\\x"'),
        utf16("clock.exe old\\list.txt"),
        utf16('"' + "\\a" * 200),
        utf16('""\\\\?\\\ud800\\'),
    ],
    "texture_fit": [
        texture(96, 48),
        texture(65535, 1, limits=(4097, 4097), fit=(1024, 16)),
        texture(3, 65535, kind=10, fit=(16, 2048)),
        texture(128, 64, kind=9, limits=(65, 65), columns=0),
        texture(127, 129, kind=0),
        texture(127, 129, kind=5),
        bytes([0xA7]) + texture(65535, 40000)[1:],
        texture(640, 25, kind=11, limits=(257, 17), scalers=0xE7, fit=(1, 65535)),
    ],
}


def main():
    for fuzzer, inputs in SEEDS.items():
        folder = pathlib.Path(sys.argv[1], fuzzer)
        folder.mkdir(parents=True, exist_ok=True)
        for number, data in enumerate(inputs):
            (folder / f"seed_{number}").write_bytes(data)


if __name__ == "__main__":
    main()
