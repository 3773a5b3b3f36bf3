"""Reads back the PDFs that the built-in printer writes: text, positions, colours, names, pages."""

import re
import unittest
from collections import Counter

from page_picture import BLACK, BLUE, CYAN, GREEN, MAGENTA, RED, YELLOW, PagePicture
from support import OK_TEXT, SAMPLES, JobTest, output_of

POINTS_PER_PIXEL = 72 / 600
MARGIN = 100 * POINTS_PER_PIXEL  # what the printer cannot print on
KNOWN_MACRO = re.compile(r"\^(?:BC[^\\]*\\|(?:TR|PL).|LR.|[FUKHTBESO][EA]|10|12|15|17|20|C[SRGHBMC]|LS)", re.DOTALL)
CONTROL_GLYPHS = "☺☻♥♦♣♠•◘○◙♂♀♪♫☼►◄↕‼¶§▬↨↑↓→←∟↔▲▼"


def dos_character(byte: int, code_page: str) -> str:
    """What DOS showed for a byte; nothing for a blank."""
    if 1 <= byte < 32:
        return CONTROL_GLYPHS[byte - 1]
    return "⌂" if byte == 127 else bytes([byte]).decode(code_page).strip("\0 \xa0")


def shown(text: bytes) -> str:
    return " ".join("".join(dos_character(byte, "cp850") or " " for byte in text).split())


def pages_of(sample) -> list[list[str]]:
    """The lines of each page as they read, without macros; what is printed over itself reads once."""
    text = KNOWN_MACRO.sub("", (SAMPLES / sample).read_bytes().decode("latin-1")).replace("^", "")
    text = re.sub(r"^(.*: )(.*)\r\1", r"\1\2", text, flags=re.MULTILINE)
    return [[shown(line.encode("latin-1")) for line in page.split("\r\n")] for page in text.split("\f")[:-1]]


class Samples(JobTest):
    def test_samples_are_there_whole_and_once_in_one_pass_and_in_two(self):
        for name, faces in (("RECHNUNG", ["", "-Bold", "-Italic"]),
                            ("TESTSEIT", ["", "-Bold", "-BoldItalic", "-Italic"])):
            with self.subTest(name):
                job = self.new_job()
                job.sample(f"{name}.OUT")
                for passes in ((), (), ("/TWOPASS",)):
                    self.assertEqual(job.run(f"{name}.OUT", *passes, SOURCE_DATE_EPOCH="1000000000").errors, "")
                pdfs = [f"{name}.pdf", f"{name} (2).pdf", f"{name} (3).pdf"]
                self.assertEqual(job.names(), sorted(["KRVWINPR.OK", f"{name}.OUT", *pdfs]))
                self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)
                self.assertEqual(job.read(pdfs[0]), job.read(pdfs[1]))
                self.assertEqual(*map(repr, map(job.words, pdfs[::2])))
                job.assert_sound(pdfs[0])
                self.assertIn("2001", output_of("pdfinfo", job.folder / pdfs[0]))
                for page, expected in zip(job.lines(pdfs[0]), pages_of(f"{name}.OUT"), strict=True):
                    # Of raised, lowered and wide text the reader makes lines of its own.
                    self.assertEqual(*(Counter("".join(lines).replace(" ", "")) for lines in (page, expected)))
                    self.assertGreater(len(set(expected) & set(page)), 0.7 * len(set(expected)))
                    self.assertEqual(*([line for line in lines if line in expected and line in page]
                                       for lines in (page, expected)))
                fonts = [line.split() for line in output_of("pdffonts", job.folder / pdfs[0]).splitlines()[2:]]
                self.assertEqual({tuple(font[-7:-6] + font[-5:-2]) for font in fonts},
                                 {("TrueType", "yes", "yes", "yes")})  # embedded, subset, with a map to Unicode
                self.assertEqual(sorted(re.sub("^[A-Z]{6}[+][A-Za-z]+", "", font[0]) for font in fonts), faces)


class Positions(JobTest):
    # The advance is three fifths of the size, in whole pixels; attributes do not move the text.
    ADVANCES = {"^10A bc D ef G": 60, "^12A bc D ef G": 47, "^15A bc D ef G": 40, "^17A bc D ef G": 34,
                "^20A bc D ef G^10": 30, "^BEA bc D ef G^BA": 120, "^12^BEA bc D ef G^BA": 100,
                "^15^BEA bc D ef G^BA": 79, "^17^BEA bc D ef G^BA": 70, "^BE^10A bc D ef G^BA^10": 30,
                "^FEA^FA ^KE^UEbc^UA^KA ^SED^SA ef ^OEG^SA": 60}

    def test_words_stand_at_whole_pixels_of_every_pitch_where_the_settings_say(self):
        self.job.write("A.OUT", "\r\n\r\n\r\n".join(self.ADVANCES))
        for settings, left, top, spacing in (
                (("LinkerRand=breit", "ObererRand=REG_BINARY:01"), 0, 500, 222),
                (("linkerrand = 720", "ObererRand=REG_DWORD:0x3E8", 'Zeilenabstand="300"'), 720, 1000, 300)):
            self.job.write_settings(*settings)
            self.job.run("A.OUT")
            [words] = self.job.words("A.pdf")
            (self.job.folder / "A.pdf").unlink()
            self.assertEqual([word.text for word in words], ["A", "bc", "D", "ef", "G"] * len(self.ADVANCES))
            for number, (macros, advance) in enumerate(self.ADVANCES.items()):
                y = MARGIN + (top + 3 * number * spacing - (200 if "^BE" in macros else 0)) / 20
                for word, column in zip(words[5 * number:], (0, 2, 5, 7, 10)):
                    self.assertAlmostEqual(word.x, MARGIN + left / 20 + column * advance * POINTS_PER_PIXEL, delta=0.02)
                    self.assertAlmostEqual(word.y, y, delta=0.3, msg=macros)

    def test_every_character_of_the_code_page_comes_back_in_every_face(self):
        text = [byte for byte in range(256) if byte not in b"\n\f\r\x1b^"]
        rows = [text[first:first + 8] for first in range(0, len(text), 8)]
        data = b"\r\n".join(b" ".join(b"%02X[%c]" % (byte, byte) for byte in row) for row in rows)
        for environment, code_page, face in (
                ({}, "cp850", b"^FE"), ({"LANG": "en_US.UTF-8"}, "cp437", b"^KE"),
                ({"KRVWINPR_CODEPAGE": "437"}, "cp437", b""),
                ({"LANG": "en_US.UTF-8", "KRVWINPR_CODEPAGE": "850"}, "cp850", b"^FE^KE")):
            with self.subTest(face, **environment):
                job = self.new_job()
                job.write("A.OUT", face + data)
                job.run("A.OUT", **environment)
                found = output_of("pdftotext", "-layout", job.folder / "A.pdf", "-")
                found = dict(re.findall(r"(\w\w)\[(.?)\s*\]", found))
                self.assertEqual({code: text.strip("\0 \xa0") for code, text in found.items()},
                                 {f"{byte:02X}": dos_character(byte, code_page) for byte in text})


class Rendering(JobTest):
    COLOURS = {"CR": RED, "CG": GREEN, "CH": YELLOW, "CB": BLUE, "CM": MAGENTA, "CC": CYAN}

    def test_colours_and_underlines_are_where_they_belong_and_grey_where_the_settings_say(self):
        # Blocks in each colour, the next line's over their feet; then blanks that only an underline can be seen of.
        self.job.write("A.OUT", "\r\n".join(f"^{code}████████" for code in self.COLOURS) + "\r\n\r\n^CS^UE        ")
        self.job.run("A.OUT")
        page = PagePicture(self.job.folder / "A.pdf")
        lines = [MARGIN + (500 + 222 * number) / 20 for number in range(8)]
        expected = {color: (top, bottom) for color, top, bottom in zip(self.COLOURS.values(), lines, lines[1:])}
        expected |= {CYAN: (lines[5], lines[5] + 13), BLACK: (lines[7] + 12, lines[7] + 12.5)}
        for color, (top, bottom) in expected.items():
            for found, edge in zip(page.box(color), (MARGIN, top, MARGIN + 8 * 7.2, bottom)):
                self.assertAlmostEqual(found, edge, delta=0.5, msg=(color, page.box(color), top, bottom))
        self.job.write_settings("ColorMode=REG_DWORD:1")
        self.job.run("A.OUT")
        ink = output_of("gs", "-q", "-o-", "-sDEVICE=inkcov", self.job.folder / "A (2).pdf").split()
        self.assertEqual(ink[:3], ["0.00000"] * 3)
        grey = PagePicture(self.job.folder / "A (2).pdf")
        for color in expected:
            self.assertEqual(grey.box(color), page.box(color), "colours can be told from each other")


class Files(JobTest):
    def test_files_are_found_as_the_host_writes_them(self):
        files = {"Übergabe/Ordner/Rechnung.Out": "Gefunden", "Meine Liste.out": "Leerzeichen", "liste.out": "klein",
                 "LISTE.OUT": "groß", "lISTE.OUT": "vor der kleinen", "krvwinpr.ok": "nicht das des Hosts"}
        for name, text in files.items():
            self.job.write(name, text)
        for argument, pdf, text in ((r"ÜBERGABE\ordner\rechnung.out", "rechnung.pdf", "Gefunden"),
                                    (self.job.folder / "übergabe/ORDNER/RECHNUNG.OUT", "RECHNUNG.pdf", "Gefunden"),
                                    (r"übergabe\.\..//ÜBERGABE\ORDNER\Rechnung.out", "Rechnung.pdf", "Gefunden"),
                                    ("Meine Liste.out", "Meine Liste.pdf", "Leerzeichen"),
                                    ("liste.out", "liste.pdf", "klein"), ("LISTE.OUT", "LISTE.pdf", "groß"),
                                    ("Liste.out", "Liste.pdf", "groß"), ("lISTE.out", "lISTE.pdf", "groß")):
            with self.subTest(argument):
                self.job.run(argument)
                self.assertEqual(self.job.lines(pdf), [[text]])

    def test_form_feeds_make_the_pages(self):
        cases = {"eins": [["eins"]], "eins\f": [["eins"]], "eins\f\r\n\r\n": [["eins"]], "^LR\feins\f^KE": [["eins"]],
                 "eins\fzwei\f": [["eins"], ["zwei"]], "\feins\f\f\fzwei": [[], ["eins"], [], [], ["zwei"]],
                 "eins\x1b\r\nzwei^": [["eins", "zwei"]]}
        cases |= dict.fromkeys(("", "\r\n\r\n", "\f", "^", "^FE^10\r\n^LR", "\x1b\r\n"), [])
        for text, pages in cases.items():
            with self.subTest(text):
                job = self.new_job()
                job.write("A.OUT", text)
                self.assertEqual(job.run("A.OUT").errors, "")
                self.assertEqual(job.names(), ["A.OUT", *(["A.pdf"] if pages else []), "KRVWINPR.OK"])
                if pages:
                    self.assertEqual(job.lines("A.pdf"), pages)


if __name__ == "__main__":
    unittest.main()
