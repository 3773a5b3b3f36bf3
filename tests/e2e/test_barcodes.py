"""Barcodes read back from rendered pages, by two readers that are not ours.

Besides the environment of support.py: KRVWINPR_SHEET names barcode_sheet."""

import os
import random
import subprocess
import unittest
from typing import NamedTuple

from barcode_readers import zbar, zxing
from support import SLOW, JobTest, output_of

LINE = 7.5  # inches: what margins leave of the width of A4
RESOLUTIONS = (203,) if SLOW else (150, 203, 300, 600)

CODE_39 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"
PRINTABLE = "".join(map(chr, range(32, 127)))
DIGITS = "0123456789"


class Symbology(NamedTuple):
    number: int
    kinds: tuple[str, str]  # as the readers name it
    alphabet: str
    ratio: float
    overhead: float   # narrow elements of a symbol without data
    per_character: float  # narrow elements at most; where the encoder chooses, about the usual number


SYMBOLOGIES = (
    Symbology(1, ("CODE-39", "Code39"), CODE_39, 3, 31, 16),
    Symbology(2, ("CODE-39", "Code39"), CODE_39[:-4], 2.5, 28, 14.5),
    Symbology(3, ("CODE-128", "Code128"), PRINTABLE, 0, 35, 11),
    Symbology(4, ("CODE-128", "Code128"), PRINTABLE[:64], 0, 35, 11),
    Symbology(5, ("CODE-128", "Code128"), PRINTABLE, 0, 35, 11),
    Symbology(6, ("CODE-128", "Code128"), DIGITS, 0, 35, 5.5),
    Symbology(8, ("I2/5", "ITF"), DIGITS, 3, 9, 9),
    Symbology(9, ("CODE-93", "Code93"), CODE_39, 0, 37, 9),
    Symbology(10, ("Codabar", "Codabar"), "0123456789-$:/.+", 0, 21, 11),
)


def requests(dpi, choose):
    """Of each symbology, in each rotation, short ones and the longest that fits the line."""
    for symbology in SYMBOLOGIES:
        narrow = max(1, round(dpi * 0.01))
        longest = int((LINE * dpi / narrow - symbology.overhead) / symbology.per_character)
        for rotation in (0, 90, 180, 270):
            for length in (*(choose.randint(6, 16) for _ in range(1 if SLOW else 3)), longest):
                length -= length % 2 if symbology.alphabet == DIGITS else 0
                text = 0 if length >= longest - 1 else choose.randint(0, 2)  # beside many bars text would be longer
                yield symbology, rotation, "".join(choose.choices(symbology.alphabet, k=length)), text


class Readers(JobTest):
    def test_every_symbol_is_read_as_what_was_encoded(self):
        choose = random.Random(20261121)
        for dpi in RESOLUTIONS:
            made = list(requests(dpi, choose))
            pictures = self.rendered(made, dpi)
            for (symbology, rotation, data, text), picture, by_zbar, by_zxing in zip(
                    made, pictures, zbar(*pictures), zxing(*pictures), strict=True):
                with self.subTest(dpi=dpi, number=symbology.number, rotation=rotation, data=data):
                    framed = f"A{data}A" if symbology.number == 10 else data
                    self.assertEqual((by_zbar, by_zxing),
                                     ([(symbology.kinds[0], rotation, framed)], [(symbology.kinds[1], data)]))
                    if text == 0:
                        pixels = picture.read_bytes().split(b"\n", 3)[3]
                        self.assertEqual(set(pixels), {0, 255}, "an edge is not on a pixel")

    def rendered(self, made, dpi):
        """A picture of each symbol."""
        folder = self.job.folder
        lines = "".join(f"{kind.number} {rotation} {kind.ratio} {text} {data}\n" for kind, rotation, data, text in made)
        subprocess.run([os.environ["KRVWINPR_SHEET"], folder / "sheet.pdf", str(dpi)], input=lines, text=True,
                       check=True, env=self.job.environment)
        output_of("pdftoppm", "-r", dpi, "-gray", folder / "sheet.pdf", folder / str(dpi))
        return sorted(folder.glob(f"{dpi}-*.pgm"))


class Program(JobTest):
    def test_the_macro_prints_what_a_reader_reads(self):
        self.job.write("A.OUT", "Lieferschein^BC2.5,1,LS-4711 / 26\\ Ende\r\n")
        for passes, name in (((), "A"), (("/TWOPASS",), "A (2)")):
            self.assertEqual(self.job.run("A.OUT", *passes).errors, "")
            pdf, picture = self.job.folder / f"{name}.pdf", self.job.folder / f"{name}.pgm"
            output_of("pdftoppm", "-r", 150, "-gray", "-singlefile", pdf, picture.with_suffix(""))
            self.assertEqual(zbar(picture), [[("CODE-39", 0, "LS-4711 / 26")]])
            self.assertEqual(self.job.lines(pdf), [["Lieferschein Ende"]])
            self.assertEqual(len(output_of("pdfimages", "-list", pdf).splitlines()), 2)  # a heading, no picture


if __name__ == "__main__":
    unittest.main()
