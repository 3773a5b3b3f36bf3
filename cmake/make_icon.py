#!/usr/bin/env python3
"""Draws the program's icon, a printer whose sheet shows a caret, as the ending of each file says (the size of a PNG file
stands in its name):

    cmake/make_icon.py src/platform/windows/program/krvwinpr.ico packaging/desktop/krvwinpr{.svg,-32.png,-48.png,-256.png}
"""
import re
import struct
import sys
import zlib

SIZES = (48, 32, 24, 16)
LARGE = 256  # as a PNG file, which Windows XP skips: it asks for the others
SAMPLES = 4  # per pixel, in each direction

INK = (0x26, 0x32, 0x3E)
BODY = (0x4A, 0x61, 0x78)
SLOT = (0x1B, 0x25, 0x2F)
SHEET = (0xFB, 0xFB, 0xF8)
CARET = (0xD2, 0x45, 0x1E)
LAMP = (0x6F, 0xD0, 0x5C)


class Box:
    def __init__(self, left, top, right, bottom):
        self.svg = f'<path fill="{{}}" d="M{left} {top}H{right}V{bottom}H{left}z"/>'
        self.inside = lambda x, y: left <= x < right and top <= y < bottom


class Stroke:
    def __init__(self, x0, y0, x1, y1, width):
        self.svg = f'<path stroke="{{}}" stroke-width="{width}" stroke-linecap="round" d="M{x0} {y0}L{x1} {y1}"/>'
        dx, dy = x1 - x0, y1 - y0

        def inside(x, y):
            along = max(0.0, min(1.0, ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy)))
            return (x - x0 - along * dx) ** 2 + (y - y0 - along * dy) ** 2 <= (width / 2) ** 2
        self.inside = inside


# In a square of 48 units, from back to front.
SHAPES = (
    (Box(11, 2, 37, 22), INK), (Box(13, 4, 35, 22), SHEET),
    (Stroke(18, 16, 24, 8, 3.6), CARET), (Stroke(24, 8, 30, 16, 3.6), CARET),
    (Box(3, 19, 45, 40), INK), (Box(5, 21, 43, 38), BODY),
    (Box(37, 24, 40, 27), LAMP),
    (Box(9, 29, 39, 33), SLOT),
    (Box(11, 31, 37, 46), INK), (Box(13, 31, 35, 44), SHEET),
    (Box(16, 35, 32, 37), INK), (Box(16, 39, 27, 41), INK),
)


def colour_at(x, y):
    found = None
    for shape, colour in SHAPES:
        if shape.inside(x, y):
            found = colour
    return found


def pixel(column, row, size):
    """Blue, green, red, opacity: the mean of the samples."""
    total, hits = [0, 0, 0], 0
    for i in range(SAMPLES * SAMPLES):
        x = (column + (i % SAMPLES + 0.5) / SAMPLES) * 48 / size
        y = (row + (i // SAMPLES + 0.5) / SAMPLES) * 48 / size
        colour = colour_at(x, y)
        if colour:
            hits += 1
            total = [sum(pair) for pair in zip(total, colour)]
    red, green, blue = (round(part / hits) if hits else 0 for part in total)
    return bytes((blue, green, red, round(255 * hits / SAMPLES ** 2)))


def rows(size):
    return [[pixel(column, row, size) for column in range(size)] for row in range(size)]


def picture(size):
    """A bitmap of 32 bits, rows from the bottom, and the mask that old systems want behind it."""
    header = struct.pack('<IiiHHIIiiII', 40, size, 2 * size, 1, 32, 0, 0, 0, 0, 0, 0)
    colours = b''.join(b''.join(row) for row in reversed(rows(size)))
    stride = (size + 31) // 32 * 4
    mask = bytearray(stride * size)
    for row in range(size):
        for column in range(size):
            if colours[(row * size + column) * 4 + 3] < 128:
                mask[row * stride + column // 8] |= 0x80 >> column % 8
    return header + colours + bytes(mask)


def png(size):
    def chunk(kind, data):
        return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))
    lines = b''.join(b'\0' + b''.join(bytes((red, green, blue, opacity)) for blue, green, red, opacity in row)
                     for row in rows(size))
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', size, size, 8, 6, 0, 0, 0))
            + chunk(b'IDAT', zlib.compress(lines, 9)) + chunk(b'IEND', b''))


def svg():
    lines = (shape.svg.format('#' + bytes(colour).hex()) for shape, colour in SHAPES)
    return ('<svg xmlns="http://www.w3.org/2000/svg" width="48" height="48" viewBox="0 0 48 48">\n  '
            + '\n  '.join(lines) + '\n</svg>\n').encode()


def ico():
    pictures = [(size, picture(size)) for size in SIZES] + [(LARGE, png(LARGE))]
    offset = 6 + 16 * len(pictures)
    directory = struct.pack('<HHH', 0, 1, len(pictures))
    for size, data in pictures:
        directory += struct.pack('<BBBBHHII', size % 256, size % 256, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    return directory + b''.join(data for _, data in pictures)


def main(paths):
    for path in paths:
        size = re.search(r'-(\d+)\.png$', path)
        data = png(int(size[1])) if size else svg() if path.endswith('.svg') else ico()
        with open(path, 'wb') as file:
            file.write(data)


if __name__ == '__main__':
    main(sys.argv[1:])
