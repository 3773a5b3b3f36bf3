"""Barcodes read back from rendered pages, by two readers that are not ours.

Besides the environment of support.py: KRVWINPR_SHEET names barcode_sheet."""

import os
import random
import subprocess
import unittest
from pathlib import Path
from typing import NamedTuple

from barcode_readers import full_ascii, zbar, zxing
from support import OK_TEXT, SLOW, JobTest

SHEET = os.environ["KRVWINPR_SHEET"]
LINE = 7.5  # inches: what margins leave of the width of A4
RESOLUTIONS = (203,) if SLOW else (150, 203, 300, 600)

CODE_39 = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ-. $/+%"
DIGITS = "0123456789"


class Symbology(NamedTuple):
    number: int
    kinds: tuple[str, str]  # as the readers name it
    alphabet: str
    ratio: float
    overhead: float   # narrow elements of a symbol without data
    per_character: float  # narrow elements at most; where the encoder chooses, about the usual number


def characters(first, last):
    return "".join(map(chr, range(first, last + 1)))


CODE_128 = ("CODE-128", "Code128")
SYMBOLOGIES = (
    Symbology(1, ("CODE-39", "Code39"), CODE_39, 3, 31, 16),
    Symbology(2, ("CODE-39", "Code39"), characters(0, 127), 2.5, 28, 29),
    Symbology(3, CODE_128, characters(0, 127), 0, 35, 14),
    Symbology(4, CODE_128, characters(0, 95), 0, 35, 11),
    Symbology(5, CODE_128, characters(32, 126), 0, 35, 11),
    Symbology(6, CODE_128, DIGITS, 0, 35, 5.5),
    Symbology(8, ("I2/5", "ITF"), DIGITS, 3, 9, 9),
    Symbology(9, ("CODE-93", "Code93"), CODE_39, 0, 37, 9),
    Symbology(10, ("Codabar", "Codabar"), "0123456789-$:/.+", 0, 21, 11),
)


class Request(NamedTuple):
    symbology: Symbology
    rotation: int
    data: bytes
    text: int
    long: bool

    def line(self) -> str:
        return f"{self.symbology.number} {self.rotation} {self.symbology.ratio} 0 {self.text} {self.data.hex()}\n"


def requests(dpi, choose) -> list[Request]:
    """Of each symbology, in each rotation, short ones and the longest that fits the line."""
    narrow = max(1, round(dpi * 0.01))
    made = []
    for symbology in SYMBOLOGIES:
        longest = int((LINE * dpi / narrow - symbology.overhead) / symbology.per_character)
        for rotation in (0, 90, 180, 270):
            for length in (*(choose.randint(6, 16) for _ in range(1 if SLOW else 3)), longest):
                if symbology.alphabet == DIGITS:
                    length -= length % 2
                data = "".join(choose.choice(symbology.alphabet) for _ in range(length)).encode("latin-1")
                long = length >= longest - 1
                text = 0 if long else choose.randint(0, 2)  # beside bars of many digits text would be longer
                made.append(Request(symbology, rotation, data, text, long))
    return made


class Readers(JobTest):
    def test_every_symbol_is_read_as_what_was_encoded(self):
        choose = random.Random(20261121)
        for dpi in RESOLUTIONS:
            made = requests(dpi, choose)
            sizes, pictures = self.rendered(made, dpi)
            by_zbar, by_zxing = zbar(*pictures), zxing(*pictures)
            self.assertEqual({len(made)}, {len(sizes), len(by_zbar), len(by_zxing)})
            for request, width, picture, zbar_found, zxing_found in zip(made, sizes, pictures, by_zbar, by_zxing):
                symbology = request.symbology
                with self.subTest(dpi=dpi, number=symbology.number, rotation=request.rotation, data=request.data):
                    self.assertEqual([found.kind for found in zbar_found], [symbology.kinds[0]])
                    self.assertEqual(zbar_found[0].degrees, request.rotation)
                    self.assertEqual(self.meaning(symbology, zbar_found[0].data), request.data)
                    self.assertEqual([found.kind for found in zxing_found], [symbology.kinds[1]])
                    self.assertEqual(self.meaning(symbology, zxing_found[0].data), request.data)
                    if request.text == 0:
                        self.assertEqual(self.greys(picture), 0, "an edge is not on a pixel")
                    if request.long:
                        self.assertLessEqual(width, LINE * dpi)
                        self.assertGreater(width, 0.7 * LINE * dpi)

    def meaning(self, symbology, data):
        if symbology.number == 2:
            return full_ascii(data)
        return data.strip(b"A") if symbology.number == 10 else data  # framed by A and A

    def greys(self, picture):
        pixels = picture.read_bytes().split(b"\n", 3)[3]
        return len(pixels) - pixels.count(b"\x00") - pixels.count(b"\xff")

    def rendered(self, made, dpi):
        """The symbols' widths in pixels, and a picture of each."""
        folder = self.job.folder
        pdf = folder / f"{dpi}.pdf"
        result = subprocess.run([SHEET, pdf, str(dpi)], input="".join(request.line() for request in made), text=True,
                                stdout=subprocess.PIPE, check=True, env=self.job.environment)
        subprocess.run(["pdftoppm", "-r", str(dpi), "-gray", pdf, folder / str(dpi)], check=True)
        widths = [int(line.split()[0]) for line in result.stdout.splitlines()]
        return widths, sorted(folder.glob(f"{dpi}-*.pgm"))


class Program(JobTest):
    def page(self, name, dpi) -> Path:
        picture = self.job.folder / "page"
        subprocess.run(["pdftoppm", "-r", str(dpi), "-gray", "-f", "1", "-singlefile", self.job.folder / name, picture],
                       check=True)
        return picture.with_suffix(".pgm")

    def data_on_first_page(self, name, dpi):
        return [found.data for found in zbar(self.page(name, dpi))[0]]

    def test_the_macro_prints_what_a_reader_reads(self):
        for passes in ((), ("/TWOPASS",)):
            self.new_job().write("A.OUT", "Lieferschein^BC2.5,1,LS-4711 / 26\\ Ende\r\n")
            self.assertEqual(self.job.run("A.OUT", *passes).errors, "")
            self.assertEqual(self.data_on_first_page("A.pdf", 150), [b"LS-4711 / 26"])
            self.assertEqual(self.job.lines("A.pdf"), [["Lieferschein Ende"]])
            self.assertEqual(subprocess.run(["pdfimages", "-list", self.job.folder / "A.pdf"], stdout=subprocess.PIPE,
                                            check=True).stdout.count(b"\n"), 2)  # a heading, no picture

    def test_refused_data_ends_the_job_behind_the_finished_pages_and_is_named(self):
        self.job.write("A.OUT", "eins\fzwei^BC1,1,ls-4711\\\fdrei")
        run = self.job.run("A.OUT", "/DEBUG")
        self.assertIn("Fehler 5970: Invalid character in the Barcode. Zeichen 'l' an Stelle 1 von 'ls-4711'",
                      run.errors)
        log = self.job.log()
        self.assertIn(">       Barcodeausgabe: (Y,X) 1,1 Text: 'ls-4711'", log)
        self.assertIn(">     DoPage Fehler in DoReport 5970 Invalid character in the Barcode.", log)
        self.assertEqual(self.job.lines("A.pdf"), [["eins"]])
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_a_symbol_far_wider_than_the_page_is_drawn_as_far_as_it_is(self):
        data = "WEIT " * 20_000
        self.job.write("A.OUT", f"links^BC1,1,{data}\\^BC2,1,NAH\\")
        self.assertEqual(self.job.run("A.OUT", "/DEBUG").errors, "")
        right_edge = 1 + 0.01 * (16 * (len(data) + 2) - 1)  # inches
        beyond = f"{(right_edge - 11424 / 1440) * 25.4:.1f}".replace(".", ",")
        self.assertEqual([line for line in self.job.log() if "ragt" in line],
                         [f">       Barcode ragt über den bedruckbaren Bereich hinaus: rechts {beyond} mm"])
        self.assertEqual(self.data_on_first_page("A.pdf", 200), [b"NAH"])
        self.assertLess(len(self.job.read("A.pdf")), 50_000)

    def test_the_sample_invoice_carries_its_number(self):
        self.job.sample("RECHNUNG.OUT")
        self.job.run("RECHNUNG.OUT")
        self.assertEqual(self.data_on_first_page("RECHNUNG.pdf", 200), [b"2026-10456"])


if __name__ == "__main__":
    unittest.main()
