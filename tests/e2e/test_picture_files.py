"""BMP and PCX files of ImageMagick and netpbm, in every variant that they write, show the pixels that these programs see
in them; so do, there, the files that the program writes back, as they were and inverted.

The environment says which program: KRV_PICTURE, made from bench/pictures.cpp."""

import os
import pathlib
import random
import struct
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["KRV_PICTURE"]
SOURCES = (((37, 11), 2), ((37, 11), 4), ((8, 3), 7), ((37, 11), 16), ((37, 11), 200), ((37, 11), 5000))


def output(*command, data=None) -> bytes:
    return subprocess.run([str(part) for part in command], input=data, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          check=True, timeout=60).stdout


def pixels_of(pnm: bytes) -> tuple[bytes, bytes]:
    """Size and pixels, red, green and blue."""
    _, size, _, pixels = output("ppmtoppm", data=pnm).split(b"\n", 3)
    return size, pixels


def imagemagick(path):
    return pixels_of(output("convert", path, "-background", "white", "-alpha", "remove", "-depth", "8", "ppm:-"))


def netpbm(path):
    return pixels_of(output("pcxtoppm" if path.suffix == ".pcx" else "bmptopnm", path))


def ours(path):
    return pixels_of(output(PROGRAM, "pnm", path))


def variant(content: bytes) -> tuple:
    """BMP: header size, bits, compression. PCX: bits, planes, encoding."""
    if content.startswith(b"BM"):
        size, = struct.unpack_from("<I", content, 14)
        bits, compression = struct.unpack_from("<HI", content, 28) if size > 12 else (content[24], 0)
        return "BMP", size, bits, compression
    return "PCX", content[3], content[65], content[2]


def readers_of(content: bytes) -> list:
    """The programs that can be asked. ImageMagick takes 1 for black in PCX files of one bit, where the format says white,
    and misreads the 16-bit files with alpha that it writes; netpbm knows no plain and no translucent PCX files, and no
    run lengths in which the padding of rows is compressed, as ImageMagick writes them."""
    kind = variant(content)
    if kind[:3] == ("PCX", 1, 1) or (kind[0] == "BMP" and kind[2] == 16 and any(content[66:70])):
        return [netpbm]
    if (kind[0] == "PCX" and (kind[3] == 0 or kind[2] == 4 and kind[1] == 8)) or (kind[0] == "BMP" and kind[3] == 1):
        return [imagemagick]
    return [imagemagick, netpbm]


def commands(source, target):
    """Every way to write the picture; some are refused because of its colours."""
    for system in ("-windows", "-os2"):
        for bits in (1, 4, 8, 24):
            yield f"{target}{system}{bits}.bmp", ["ppmtobmp", system, f"-bpp={bits}", source]
    for kind in ("BMP", "BMP2", "BMP3", "PCX"):
        for color in ("Palette", "TrueColor", "TrueColorMatte", "Bilevel"):
            for compression in ("None", "RLE"):
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
    width, height = size
    chance = random.Random(colors)
    palette = [bytes(3), b"\xFF" * 3] if colors == 2 else [chance.randbytes(3) for _ in range(colors)]
    pixels = b""
    while len(pixels) < 3 * width * height:
        pixels += chance.choice(palette) * chance.choice((1, 1, 1, 2, 3, 9, 30, 100))
    path.write_bytes(b"P6\n%d %d\n255\n" % size + pixels[:3 * width * height])


def reader_of_ours(content: bytes):
    """Run lengths of ours do not have the padding in them, so netpbm reads those as well."""
    return netpbm if variant(content)[0] == "BMP" else readers_of(content)[-1]


EVERY_VARIANT = {
    *(("BMP", size, bits, 0) for size in (12, 40) for bits in (1, 4, 8, 24)),
    ("BMP", 40, 8, 1), ("BMP", 124, 8, 1), ("BMP", 108, 1, 0), ("BMP", 124, 24, 0),
    ("BMP", 124, 16, 3), ("BMP", 124, 32, 3),
    *(("PCX", 1, planes, 1) for planes in (1, 2, 3, 4)), ("PCX", 2, 1, 1), ("PCX", 4, 1, 1),
    *(("PCX", 8, planes, encoding) for planes in (1, 3, 4) for encoding in (0, 1)),
}

class PictureFiles(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def files(self):
        """Each file once, however many ways lead to it."""
        known = set()
        for size, colors in SOURCES:
            source = self.folder / f"{size[0]}-{colors}.ppm"
            write_source(source, size, colors)
            for path, command in commands(source, source.with_suffix("")):
                made = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
                path = pathlib.Path(path)
                if made.stdout:
                    path.write_bytes(made.stdout)
                if made.returncode == 0 and path.read_bytes() not in known:
                    known.add(path.read_bytes())
                    yield path

    def assert_same(self, expected, path, reader):
        """netpbm cuts channels of five and six bits off where it turns them into eight; others repeat their bits."""
        seen = reader(path)
        self.assertEqual(seen[0], expected[0], path)
        kind = variant(path.read_bytes())
        if reader is netpbm and kind[0] == "BMP" and kind[2] == 16:
            self.assertLessEqual(max(abs(a - b) for a, b in zip(seen[1], expected[1], strict=True)), 1, path)
        else:
            self.assertEqual(seen[1], expected[1], f"{path} by {reader.__name__}")

    def test_other_programs_see_the_same(self):
        seen = set()
        for path in self.files():
            content = path.read_bytes()
            kind = variant(content)
            seen.add(kind)
            size, pixels = ours(path)
            opposite = bytes(255 - value for value in pixels)
            written = path.with_name("out" + path.suffix)
            for reader in readers_of(content):
                self.assert_same((size, pixels), path, reader)
            for order, expected in (("rewrite", pixels), ("invert", opposite)):
                output(PROGRAM, order, path, written)
                self.assertEqual(variant(written.read_bytes()), kind, path)
                self.assert_same((size, expected), written, reader_of_ours(content))
            output(PROGRAM, "invert", written, written.with_suffix(".twice"))
            self.assertEqual(ours(written.with_suffix(".twice")), (size, pixels), path)
        self.assertEqual(EVERY_VARIANT - seen, set())


if __name__ == "__main__":
    unittest.main()
