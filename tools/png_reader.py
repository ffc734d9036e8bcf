"""Reads the PNG files that the tour writes: 8 bits per channel, RGB or RGBA."""

import struct
import zlib

CHANNELS = {2: 3, 6: 4}  # number of channels by PNG colour type


class Picture:
    """A picture with its rows from the top down; pixel(x, y) is (red, green, blue)."""

    def __init__(self, width, height, channels, rows):
        self.width, self.height = width, height
        self._channels, self._rows = channels, rows

    def pixel(self, x, y):
        start = x * self._channels
        return tuple(self._rows[y][start:start + 3])


def _chunks(data):
    position = 8
    while position < len(data):
        length, name = struct.unpack(">I4s", data[position:position + 8])
        yield name, data[position + 8:position + 8 + length]
        position += 12 + length


def _paeth(left, up, corner):
    estimate = left + up - corner
    by_left, by_up = abs(estimate - left), abs(estimate - up)
    by_corner = abs(estimate - corner)
    if by_left <= by_up and by_left <= by_corner:
        return left
    return up if by_up <= by_corner else corner


def _unfilter(kind, row, above, step):
    if kind == 0:
        return
    for i, value in enumerate(row):
        left = row[i - step] if i >= step else 0
        if kind == 1:
            guess = left
        elif kind == 2:
            guess = above[i]
        elif kind == 3:
            guess = (left + above[i]) // 2
        else:
            guess = _paeth(left, above[i], above[i - step] if i >= step else 0)
        row[i] = (value + guess) & 0xFF


def read_png(path):
    with open(path, "rb") as file:
        data = file.read()
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError(f"{path}: not a PNG file")
    chunks = list(_chunks(data))
    header = next(body for name, body in chunks if name == b"IHDR")
    width, height, depth, colour, _, _, interlaced = struct.unpack(">IIBBBBB", header)
    if depth != 8 or colour not in CHANNELS or interlaced:
        raise ValueError(f"{path}: a kind of PNG that the tour does not write")
    channels = CHANNELS[colour]
    raw = zlib.decompress(b"".join(body for name, body in chunks if name == b"IDAT"))
    stride = width * channels
    rows, above = [], bytearray(stride)
    for y in range(height):
        start = y * (stride + 1)
        row = bytearray(raw[start + 1:start + 1 + stride])
        _unfilter(raw[start], row, above, channels)
        rows.append(row)
        above = row
    return Picture(width, height, channels, rows)
