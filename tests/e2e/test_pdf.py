"""Reads back the PDFs that the built-in printer writes: text, positions, colours, names, pages."""

import re
import subprocess
import unittest
from collections import Counter

from support import OK_TEXT, SAMPLES, JobTest, output_of

POINTS_PER_PIXEL = 72 / 600
MARGIN = 100 * POINTS_PER_PIXEL  # what the printer cannot print on
KNOWN_MACRO = re.compile(r"\^(?:BC[^\\]*\\|(?:TR|LR|PL).|[FUKHTBESO][EA]|10|12|15|17|20|C[SRGHBMC]|LS)", re.DOTALL)

CONTROL_GLYPHS = "☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼"


def dos_character(byte: int, code_page: str) -> str:
    """What DOS showed for a byte; nothing for a blank."""
    if 1 <= byte < 32:
        return CONTROL_GLYPHS[byte - 1]
    return "⌂" if byte == 127 else bytes([byte]).decode(code_page).strip("\0 \xa0")


def pixel(twips: float) -> int:
    return int(twips * 600 / 1440 + 0.5)


def page_lines(name) -> list[list[str]]:
    """The lines of a sample's pages. Indentations are left out: their parameter may be a line end."""
    text = (SAMPLES / name).read_bytes().decode("cp850")
    return [page.split("\r\n") for page in re.sub(r"\^LR.", "", text, flags=re.DOTALL).split("\f")[:-1]]


def shown(line: str) -> str:
    text = KNOWN_MACRO.sub("", line).replace("^", "")
    return " ".join("".join(dos_character(byte, "cp850") or " " for byte in text.encode("cp850")).split())


class Samples(JobTest):
    def check_text(self, name, pages):
        """Every line is there once and in order; lines of several heights are compared by their characters alone."""
        self.assertEqual(len(pages), len(page_lines(name)))
        for page, expected in zip(pages, page_lines(name)):
            # What is printed over itself reads once.
            once = [re.sub(r"^(.*: )(.*)\r\1", r"\1\2", line) for line in expected]
            missing = Counter("".join(shown(line) for line in once))
            missing.subtract("".join(page))
            self.assertEqual({c: n for c, n in missing.items() if n != 0 and c != " "}, {})
            rest = iter(page)
            for line in expected:
                if shown(line) and not re.search(r"\^[HTB]E|\r", line):
                    self.assertIn(shown(line), rest)

    def test_samples_are_there_whole_and_once(self):
        for name, faces in (("RECHNUNG", ["", "-Bold", "-Italic"]),
                            ("TESTSEIT", ["", "-Bold", "-BoldItalic", "-Italic"])):
            with self.subTest(name):
                job = self.new_job()
                job.sample(f"{name}.OUT")
                run = job.run(f"{name}.OUT")
                self.assertEqual(run.errors, "")
                self.assertEqual(job.names(), ["KRVWINPR.OK", f"{name}.OUT", f"{name}.pdf"])
                self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)
                pdf = job.folder / f"{name}.pdf"
                job.assert_sound(pdf.name)
                self.check_text(f"{name}.OUT", job.lines(pdf.name))
                fonts = [line.split() for line in output_of("pdffonts", pdf).splitlines()[2:]]
                self.assertEqual({tuple(font[-7:-6] + font[-5:-2]) for font in fonts},
                                 {("TrueType", "yes", "yes", "yes")})  # embedded, subset, with a map to Unicode
                self.assertEqual(sorted(re.sub("^[A-Z]{6}[+][A-Za-z]+", "", font[0]) for font in fonts), faces)

    def test_two_passes_print_what_one_does(self):
        job = self.job
        job.sample("TESTSEIT.OUT")
        job.run("TESTSEIT.OUT", SOURCE_DATE_EPOCH="1000000000")
        job.run("TESTSEIT.OUT", "/TWOPASS", SOURCE_DATE_EPOCH="1000000000")
        one, two = (output_of("pdftotext", "-bbox", job.folder / name, "-") for name in job.pdfs())
        self.assertIn("Schattenschrift", one)
        self.assertEqual(one, two)

    def test_same_input_gives_the_same_bytes_under_the_next_free_name(self):
        job = self.job
        job.sample("RECHNUNG.OUT")
        for _ in range(3):
            job.run("RECHNUNG.OUT", SOURCE_DATE_EPOCH="1000000000")
        self.assertEqual(job.pdfs(), ["RECHNUNG (2).pdf", "RECHNUNG (3).pdf", "RECHNUNG.pdf"])
        self.assertEqual(len({job.read(name) for name in job.pdfs()}), 1)
        self.assertIn("2001", output_of("pdfinfo", job.folder / "RECHNUNG.pdf"))


class Positions(JobTest):
    def words(self, text, **environment):
        self.job.write("A.OUT", text)
        self.job.run("A.OUT", **environment)
        pages = self.job.words("A.pdf")
        self.assertEqual(len(pages), 1)
        (self.job.folder / "A.pdf").unlink()
        return pages[0]

    def assert_at(self, value, expected, tolerance=0.02):
        self.assertLessEqual(abs(value - expected), tolerance, f"{value} instead of {expected}")

    def test_columns_stand_at_whole_pixels_of_every_pitch(self):
        # The advance is three fifths of the size, in whole pixels.
        advances = {"^10": 60, "^12": 47, "^15": 40, "^17": 34, "^20": 30,
                    "^10^BE": 120, "^12^BE": 100, "^15^BE": 79, "^17^BE": 70, "^BE^10": 30, "^BE^20": 60}
        for macro, advance in advances.items():
            with self.subTest(macro):
                words = self.words(macro + "A bc D ef G")
                self.assertEqual([word.text for word in words], ["A", "bc", "D", "ef", "G"])
                for word, column in zip(words, (0, 2, 5, 7, 10)):
                    self.assert_at(word.x, MARGIN + column * advance * POINTS_PER_PIXEL)

    def test_attributes_do_not_move_the_text(self):
        plain = self.words("eins zwei drei vier")
        styled = self.words("^FEeins^FA ^KE^UEzwei^UA^KA ^SEdrei ^OEv^OAier^SA")
        self.assertEqual([word.text for word in styled], [word.text for word in plain])
        for word, other in zip(styled, plain):
            self.assert_at(word.x, other.x)
            self.assert_at(word.y, other.y, 0.13)

    def test_lines_keep_their_distance_to_the_end_of_the_page(self):
        words = self.words("\r\n".join(f"Z{number:02}" for number in range(80)))
        self.assertEqual([word.text for word in words], [f"Z{number:02}" for number in range(72)])
        self.assert_at(words[0].y, MARGIN + pixel(500) * POINTS_PER_PIXEL, 0.15)
        for number, word in enumerate(words):
            self.assert_at(word.x, MARGIN)
            self.assert_at(word.y - words[0].y, (pixel(500 + 222 * number) - pixel(500)) * POINTS_PER_PIXEL)
        self.assert_at((words[71].y - words[0].y) / 71, 11.1, 0.12 / 71)

    def test_settings_made_by_hand_move_the_page(self):
        before = self.words("eins\r\nzwei")
        self.job.printer_settings("linkerrand = 720", "ObererRand=REG_DWORD:0x3E8", 'Zeilenabstand="300"')
        words = self.words("^LR\x05^12eins\r\nzwei\r\n^LR\0drei")
        self.assertEqual([word.text for word in words], ["eins", "zwei", "drei"])
        indent = 5 * 60 * POINTS_PER_PIXEL  # in the pitch that was in effect with the macro
        for word, x, line in zip(words, (indent, indent, 0), range(3)):
            self.assert_at(word.x, MARGIN + 36 + x)
            self.assert_at(word.y - words[0].y, 15 * line)
        self.assert_at(self.words("eins")[0].y - before[0].y, 25, 0.13)
        # A setting that is no number counts as none.
        self.job.printer_settings("LinkerRand=breit", "ObererRand=REG_BINARY:01", "Zeilenabstand=")
        self.assertEqual(repr(self.words("eins\r\nzwei")), repr(before))

    def test_every_character_of_the_code_page_comes_back_in_every_face(self):
        text = [byte for byte in range(256) if byte not in b"\n\f\r\x1b^"]
        rows = [text[first:first + 8] for first in range(0, len(text), 8)]
        data = b"\r\n".join(b" ".join(b"%02X[%c]" % (byte, byte) for byte in row) for row in rows)
        cases = (({}, "cp850", b"^FE"), ({"LANG": "en_US.UTF-8"}, "cp437", b"^KE"),
                 ({"KRVWINPR_CODEPAGE": "437"}, "cp437", b""),
                 ({"LANG": "en_US.UTF-8", "KRVWINPR_CODEPAGE": "850"}, "cp850", b"^FE^KE"))
        for environment, code_page, face in cases:
            with self.subTest(face, **environment):
                job = self.new_job()
                job.write("A.OUT", face + data)
                job.run("A.OUT", **environment)
                found = dict(re.findall(r"([0-9A-F]{2})\[(.?)\s*\]", output_of(
                    "pdftotext", "-layout", job.folder / "A.pdf", "-")))
                expected = {f"{byte:02X}": dos_character(byte, code_page) for byte in text}
                self.assertEqual({code: text.strip("\0 \xa0") for code, text in found.items()}, expected)


class Picture:
    """A page as pixels, 100 to the inch."""

    def __init__(self, pdf):
        data = subprocess.run(["pdftoppm", "-r", "100", str(pdf)], stdout=subprocess.PIPE, check=True).stdout
        header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
        self.width = int(header[1])
        self.pixels = data[header.end():]

    def pixel(self, x_points, y_points):
        at = 3 * (round(y_points * 100 / 72) * self.width + round(x_points * 100 / 72))
        return tuple(self.pixels[at:at + 3])

    def coloured(self):
        return any(not r == g == b for r, g, b in zip(self.pixels[::3], self.pixels[1::3], self.pixels[2::3]))


class Rendering(JobTest):
    COLOURS = {"CS": (0, 0, 0), "CR": (255, 0, 0), "CG": (0, 255, 0), "CH": (255, 255, 0), "CB": (0, 0, 255),
               "CM": (255, 0, 255), "CC": (0, 255, 255)}

    def setUp(self):
        super().setUp()
        # Full blocks in each colour, then blanks that only an underline can be seen of.
        blocks = "\r\n".join(f"^{code}████████" for code in self.COLOURS)
        self.job.write("A.OUT", blocks + "^CS\r\n^UE          ^UA\r\nabc")

    def picture(self):
        self.job.run("A.OUT")
        return Picture(self.job.folder / "A.pdf")

    @staticmethod
    def line_middle(number):
        return MARGIN + (500 + 222 * number) / 20 + 5.5

    def test_colours_and_underline_are_where_they_belong(self):
        picture = self.picture()
        for number, (code, colour) in enumerate(self.COLOURS.items()):
            self.assertEqual(picture.pixel(MARGIN + 30, self.line_middle(number)), colour, code)
            self.assertEqual(picture.pixel(MARGIN + 65, self.line_middle(number)), (255, 255, 255), code)
        top = self.line_middle(len(self.COLOURS)) - 5
        for x in (MARGIN + 2, MARGIN + 36, MARGIN + 70):
            self.assertTrue(any(max(picture.pixel(x, top + step / 2)) < 128 for step in range(28)), x)

    def test_monochrome_printer_setting_leaves_no_colour(self):
        self.job.printer_settings("ColorMode=REG_DWORD:1")
        picture = self.picture()
        self.assertFalse(picture.coloured())
        grey = [picture.pixel(MARGIN + 30, self.line_middle(number))[0] for number in range(len(self.COLOURS))]
        self.assertEqual(grey[0], 0)
        self.assertEqual(len(set(grey)), len(grey), "colours can be told from each other")


class Names(JobTest):
    def test_files_are_found_as_the_host_writes_them(self):
        job = self.job
        files = {"Übergabe/Ordner/Rechnung.Out": "Gefunden", "Meine Liste.out": "Leerzeichen", "liste.out": "klein",
                 "LISTE.OUT": "groß", "lISTE.OUT": "vor der kleinen", "krvwinpr.ok": "nicht das des Hosts"}
        for name, text in files.items():
            job.write(name, text)
        for argument, pdf, text in ((r"ÜBERGABE\ordner\rechnung.out", "rechnung.pdf", "Gefunden"),
                                    (job.folder / "übergabe/ORDNER/RECHNUNG.OUT", "RECHNUNG.pdf", "Gefunden"),
                                    (r"übergabe\.\..//ÜBERGABE\ORDNER\Rechnung.out", "Rechnung.pdf", "Gefunden"),
                                    ("Meine Liste.out", "Meine Liste.pdf", "Leerzeichen"),
                                    ("liste.out", "liste.pdf", "klein"), ("LISTE.OUT", "LISTE.pdf", "groß"),
                                    ("Liste.out", "Liste.pdf", "groß"), ("lISTE.out", "lISTE.pdf", "groß")):
            with self.subTest(str(argument)):
                job.run(argument)
                self.assertEqual(job.lines(pdf), [[text]])


class Pages(JobTest):
    def test_form_feeds_make_the_pages(self):
        nothing = [(text, []) for text in ("", "\r\n\r\n", "\f", "^", "^FE^10\r\n^LR", "\x1b\r\n")]
        for text, pages in (*nothing, ("eins", [["eins"]]), ("eins\f", [["eins"]]),
                            ("eins\f\r\n\r\n", [["eins"]]),
                            ("eins\fzwei\f", [["eins"], ["zwei"]]),
                            ("\feins\f\f\fzwei", [[], ["eins"], [], [], ["zwei"]]),
                            ("^LR\feins\f^KE", [["eins"]]),
                            ("eins\x1b\r\nzwei^", [["eins", "zwei"]])):
            with self.subTest(text):
                job = self.new_job()
                job.write("A.OUT", text)
                self.assertEqual(job.run("A.OUT").errors, "")
                self.assertEqual(job.names(), [*(["A.OUT"]), *(["A.pdf"] if pages else []), "KRVWINPR.OK"])
                if pages:
                    self.assertEqual(job.lines("A.pdf"), pages)
                    job.assert_sound("A.pdf", len(pages))


if __name__ == "__main__":
    unittest.main()
