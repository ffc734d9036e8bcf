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
    "texts": [
        b"\0a\\\\b\\nc\\rd\\te\\xf\\",
        b"\0&File [new]\t= Ctrl;N & more_and-more.",
        b"\0days;1 day",
        b"\x001252",
        b"\0JPN",
        b"\1" + utf16("дней;1,21,31 день;2-4,22-24 дня"),
        b"\0h;99-0 a;4294967295-4294967296 b;1-,-2,, c;;;" + b"0 " * 40,
        b"\0w;" + b"x" * 1030 + b";1 y",
        b"\0\"C:\\Program Files\\clock\\clock.exe\" /quiet \"D:\\x\"",
        b"\0clock.exe old\\list.txt",
        b"\1" + utf16('"' + "\\a" * 200),
        b"\1" + utf16('""\\\\?\\\ud800\\'),
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
