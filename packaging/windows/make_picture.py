#!/usr/bin/env python3
"""Draws the picture at the left of the installer's first and last page, the program's icon on a plain ground, at twice
the size of a screen with 96 dots per inch: make_picture.py krvwinpr.ico picture.bmp"""
import pathlib
import struct
import sys
import zlib

WIDTH, HEIGHT = 328, 628
GROUND = (0xE9, 0xEE, 0xF3)
PNG = b"\x89PNG\r\n\x1a\n"


def large_icon(data):
    """The rows of the icon's PNG, which cmake/make_icon.py writes without filters: red, green, blue, opacity."""
    png = data[data.index(PNG):]
    width, height = struct.unpack(">II", png[16:24])
    length, = struct.unpack(">I", png[33:37])
    lines = zlib.decompress(png[41:41 + length])
    return [lines[row * (width * 4 + 1) + 1:(row + 1) * (width * 4 + 1)] for row in range(height)]


def mixed(pixel):
    red, green, blue, opacity = pixel
    return bytes((c * opacity + g * (255 - opacity)) // 255 for c, g in zip((blue, green, red), reversed(GROUND)))


def main(icon, picture):
    ground = bytes(reversed(GROUND))
    lines = [ground * WIDTH] * HEIGHT
    rows = large_icon(pathlib.Path(icon).read_bytes())
    left, top = (WIDTH - len(rows)) // 2, (HEIGHT - len(rows)) // 2
    for number, row in enumerate(rows):
        middle = b"".join(mixed(row[at:at + 4]) for at in range(0, len(row), 4))
        lines[top + number] = ground * left + middle + ground * (WIDTH - left - len(rows))
    content = b"".join(reversed(lines))  # 328 pixels of three bytes: no padding
    header = struct.pack("<2sIIIIiiHHIIiiII", b"BM", 54 + len(content), 0, 54, 40, WIDTH, HEIGHT, 1, 24, 0,
                         len(content), 5669, 5669, 0, 0)
    pathlib.Path(picture).write_bytes(header + content)


if __name__ == "__main__":
    main(*sys.argv[1:])
