"""BMP and PCX files of ImageMagick and netpbm, in every variant that they write, show the pixels that these programs
see in them; so do, there, the files that the program writes back, as they were and inverted.

The environment says which program: KRV_PICTURE, made from bench/pictures.cpp."""

import os
import pathlib
import random
import struct
import subprocess
import tempfile
import unittest
from itertools import product

PROGRAM = os.environ["KRV_PICTURE"]
SOURCES = (((37, 11), 2), ((37, 11), 4), ((8, 3), 7), ((37, 11), 16), ((37, 11), 200), ((37, 11), 5000))
COLORS = ("Palette", "TrueColor", "TrueColorMatte", "Bilevel")


def pixels_by(*command) -> tuple[bytes, bytes]:
    """Size and pixels, red, green and blue, of the picture that a command writes."""
    made = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True, timeout=60).stdout
    ppm = subprocess.run(["ppmtoppm"], input=made, stdout=subprocess.PIPE, check=True).stdout
    return tuple(ppm.split(b"\n", 3)[1::2])


def imagemagick(path):
    return pixels_by("convert", path, "-background", "white", "-alpha", "remove", "-depth", "8", "ppm:-")


def netpbm(path):
    return pixels_by("pcxtoppm" if path.suffix == ".pcx" else "bmptopnm", path)


def variant(content: bytes) -> tuple:
    """BMP: header size, bits, compression. PCX: bits, planes, encoding."""
    if content.startswith(b"BM"):
        size, = struct.unpack_from("<I", content, 14)
        return "BMP", size, *(struct.unpack_from("<HI", content, 28) if size > 12 else (content[24], 0))
    return "PCX", content[3], content[65], content[2]


def readers_of(content: bytes) -> list:
    """The programs that can be asked. ImageMagick takes 1 for black in PCX files of one bit, where the format says
    white, and misreads the 16-bit files with alpha that it writes; netpbm knows no plain and no translucent PCX files,
    and no run lengths in which the padding of rows is compressed, as ImageMagick writes them."""
    match variant(content):
        case "PCX", 1, 1, _:
            return [netpbm]
        case "BMP", _, 16, _ if any(content[66:70]):
            return [netpbm]
        case ("PCX", _, _, 0) | ("PCX", 8, 4, _) | ("BMP", _, _, 1):
            return [imagemagick]
    return [imagemagick, netpbm]


def commands(source, target):
    """Every way to write the picture; some are refused because of its colours."""
    for system, bits in product(("-windows", "-os2"), (1, 4, 8, 24)):
        yield f"{target}{system}{bits}.bmp", ["ppmtobmp", system, f"-bpp={bits}", source]
    for kind, color, compression in product(("BMP", "BMP2", "BMP3", "PCX"), COLORS, ("None", "RLE")):
        path = f"{target}-{kind}-{color}-{compression}.{kind[:3].lower()}"
        yield path, ["convert", source, "-type", color, "-compress", compression, f"{kind}:{path}"]
    for bits in ("ARGB4444", "ARGB1555", "RGB555", "RGB565"):
        path = f"{target}-{bits}.bmp"
        alpha = ["-type", "TrueColorMatte"] if bits.startswith("A") else []
        yield path, ["convert", source, *alpha, "-define", f"bmp:subtype={bits}", f"BMP:{path}"]
    for options in ((), ("-24bit",), ("-8bit",), ("-packed",), ("-planes=2",), ("-planes=3",), ("-planes=4",),
                    ("-xpos=5", "-ypos=9")):
        yield f"{target}{''.join(options)}.pcx", ["ppmtopcx", *options, source]


def write_source(path, size, colors):
    """Pixels and runs of as many colours."""
    chance = random.Random(colors)
    palette = [bytes(3), b"\xFF" * 3] if colors == 2 else [chance.randbytes(3) for _ in range(colors)]
    pixels = b""
    while len(pixels) < 3 * size[0] * size[1]:
        pixels += chance.choice(palette) * chance.choice((1, 1, 1, 2, 3, 9, 30, 100))
    path.write_bytes(b"P6\n%d %d\n255\n" % size + pixels[:3 * size[0] * size[1]])


EVERY_VARIANT = {
    *(("BMP", size, bits, 0) for size in (12, 40) for bits in (1, 4, 8, 24)),
    ("BMP", 40, 8, 1), ("BMP", 124, 8, 1), ("BMP", 108, 1, 0), ("BMP", 124, 24, 0),
    ("BMP", 124, 16, 3), ("BMP", 124, 32, 3),
    *(("PCX", 1, planes, 1) for planes in (1, 2, 3, 4)), ("PCX", 2, 1, 1), ("PCX", 4, 1, 1),
    *(("PCX", 8, planes, encoding) for planes in (1, 3, 4) for encoding in (0, 1)),
}


class PictureFiles(unittest.TestCase):
    def files(self):
        """Each file once, however many ways lead to it."""
        known = set()
        with tempfile.TemporaryDirectory() as folder:
            for size, colors in SOURCES:
                source = pathlib.Path(folder, f"{size[0]}-{colors}.ppm")
                write_source(source, size, colors)
                for path, command in commands(source, source.with_suffix("")):
                    made = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
                    path = pathlib.Path(path)
                    if made.stdout:
                        path.write_bytes(made.stdout)
                    if made.returncode == 0 and path.read_bytes() not in known:
                        known.add(path.read_bytes())
                        yield path

    def assert_shows(self, path, expected, reader):
        """netpbm cuts channels of five and six bits off where it turns them into eight; others repeat their bits."""
        size, pixels = reader(path)
        self.assertEqual(size, expected[0], path)
        if pixels != expected[1]:
            self.assertEqual((reader, *variant(path.read_bytes())[::2]), (netpbm, "BMP", 16), path)
            self.assertLessEqual(max(abs(a - b) for a, b in zip(pixels, expected[1], strict=True)), 1, path)

    def test_other_programs_see_the_same(self):
        seen = set()
        for path in self.files():
            content = path.read_bytes()
            seen.add(variant(content))
            size, pixels = pixels_by(PROGRAM, "pnm", path)
            written = path.with_name("out" + path.suffix)
            for reader in readers_of(content):
                self.assert_shows(path, (size, pixels), reader)
            for order, expected in (("rewrite", pixels), ("invert", bytes(255 - value for value in pixels))):
                subprocess.run([PROGRAM, order, path, written], check=True)
                self.assertEqual(variant(written.read_bytes()), variant(content), path)
                # Run lengths of ours do not have the padding in them, so netpbm reads those of every BMP file.
                reader = netpbm if path.suffix == ".bmp" else readers_of(content)[-1]
                self.assert_shows(written, (size, expected), reader)
            subprocess.run([PROGRAM, "invert", written, written.with_suffix(".twice")], check=True)
            self.assertEqual(pixels_by(PROGRAM, "pnm", written.with_suffix(".twice")), (size, pixels), path)
        self.assertEqual(EVERY_VARIANT - seen, set())


if __name__ == "__main__":
    unittest.main()
