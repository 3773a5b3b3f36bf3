"""Pictures on the pages of the real program, and the commands for a single one."""

import os
import unittest

from page_picture import BLUE, GREEN, RED, YELLOW, PagePicture, bmp
from support import (OK_TEXT, PRINTER, SLOW, TENTH_OF_A_MILLIMETRE, WITHOUT_PRIVILEGES, JobTest, needs_namespace, on_disk,
                     output_of)

NATURAL = 96 * 2540 / 96  # twips that 96 pixels have at the usual screen resolution: hundredths of a millimetre


def pictures_in(pdf) -> list[list[str]]:
    """The pictures shown: page, number, type, width, height, colour, components, bits, encoding, ..., object."""
    return [line.split() for line in output_of("pdfimages", "-list", pdf).splitlines()[2:]]


class Pages(JobTest):
    def test_pictures_land_where_hplaser_ini_and_the_text_say_and_are_stored_once(self):
        self.job.write_settings("LinkerRand=720", "ObererRand=1000")
        self.job.write("HPLASER.INI", "[Grafik]\r\nGrafik1=1,2,1,INCH,True,2\r\nGrafik2=2.54,5.08,2,CM,False,2,5\r\n"
                                      "GrafikSize2=2540,5080,2\r\n[Grafik_A]\r\nGrafik1=0,0,1\r\n")
        self.job.write("LASER/KRVWinIn.M11", b"")  # prints the opposite colour, blue
        for macro, color in ((1, RED), (2, GREEN), (11, YELLOW)):
            self.job.write(f"LASER/KRVWin.M{macro}", bmp(96, 48, color))
        self.job.write("A.OUT", "^GR\r\nxx^GA1yy\r\n^GY1\fzwei^GR1\f" * 3)
        for passes in ([], ["/TWOPASS"]):
            self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG", *passes)
        self.job.assert_sound("A.pdf", 6)
        objects = [row[10] for row in pictures_in(self.job.folder / "A.pdf")]
        self.assertEqual((len(objects), len(set(objects))), (15, 3))
        page = PagePicture(self.job.folder / "A.pdf")
        self.assertEqual(page.pixels, PagePicture(self.job.folder / "A (2).pdf").pixels)
        # Left, top, width and height in twips from the corner of the printable area. The unprintable margin is taken
        # off an absolute position as it is: inches from a position in twips. The second set's picture is at its own
        # position and, on the third line, at the text's.
        small = NATURAL / 5.5
        for color, x, y, width, height in (
                (RED, 2880, 1440, NATURAL / 2, NATURAL / 4), (GREEN, 2880 + 720, 1440 + 1000, 5080 / 2.5, 2540 / 2.5),
                (BLUE, 720, 1000, 720 + small, 2 * 222 + 1000 + small / 2)):
            for found, twips, margin in zip(page.box(color), (x, y, x + width, y + height), self.job.margins() * 2):
                self.assertAlmostEqual(found, margin + twips / 20, delta=TENTH_OF_A_MILLIMETRE + page.points, msg=color)

    def test_the_sample_letter_keeps_depths(self):
        self.job.sample_letter()
        self.job.run("BRIEF.OUT", "HINTERGR.PCX", PRINTER)
        self.job.assert_sound("BRIEF.pdf", 1)
        self.assertEqual({(*row[3:5], row[5], row[7]) for row in pictures_in(self.job.folder / "BRIEF.pdf")},
                         {("827", "1169", "index", "2"), ("1500", "260", "gray", "1"), ("360", "260", "index", "8"),
                          ("600", "180", "gray", "1")})

    def test_a_picture_that_cannot_be_used_ends_the_job_with_its_reason(self):
        self.job.write("HPLASER.INI", "[Grafik]\nGrafik1=1,1,1\n")
        self.job.write("A.OUT", "eins^GR\f")
        self.assertIn("KRVWin.M1 nicht gefunden", self.job.run("A.OUT", "KEINEGRAFIK", PRINTER).errors)
        self.assertEqual(self.job.lines("A.pdf"), [["eins"]])
        picture = bmp(96, 48, RED)
        for content, mode, reason in (
                (None, 0, "2147194503.*KRVWin.M1 nicht gefunden"), (picture[:-100], 0o644, r"2147194502.*\(481\)"),
                (picture, 0, r"2147194502.*\(70\)")):
            if content:
                self.job.write("LASER/KRVWin.M1", content).chmod(mode)
            run = self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG", prefix=WITHOUT_PRIVILEGES)
            self.assertRegex(run.errors, f"(?s){reason}")
            self.assertEqual((self.job.pdfs(), self.job.read("KRVWINPR.OK")), (["A.pdf"], OK_TEXT))

    @unittest.skipIf(SLOW, "the sanitizers need more addresses")
    def test_a_file_that_is_too_large_is_not_read(self):
        self.job.write("A.OUT", "^GReins")
        self.job.write("HPLASER.INI", "[Grafik]\nGrafik1=1,2,1\n")
        picture = self.job.write("LASER/KRVWin.M1", bmp(96, 48, RED))
        os.truncate(picture, 3 << 30)
        little = ["prlimit", f"--as={1 << 30}"]
        self.assertIn("ist 3072 MiB groß", self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, prefix=little).errors)
        self.assertIn("ist 3072 MiB groß", self.job.start("/INVERT", "LASER/KRVWin.M1", prefix=little).finish(60).errors)


class SinglePicture(JobTest):
    def invert(self, name, **options):
        run = self.job.start("/INVERT", name, **options).finish(60)
        self.job.check(run)
        return run.errors

    def test_inverting_turns_every_colour_and_keeps_name_and_rights(self):
        self.job.sample_letter()
        files = {"LASER/KRVWin.M1": "pcxtoppm", "LASER/KRVWin.M2": "bmptopnm", "HINTERGR.PCX": "pcxtoppm"}
        names = sorted(self.job.folder.rglob("*"))
        for name, decoder in files.items():
            with self.subTest(name):
                path = self.job.folder / name
                path.chmod(0o640)
                opposite = output_of("sh", "-c", f"{decoder} -quiet '{path}' | pnminvert | pnmtopnm -plain")
                self.assertEqual(self.invert(name.replace("/", "\\").lower()), "")
                self.assertEqual(output_of("sh", "-c", f"{decoder} -quiet '{path}' | pnmtopnm -plain"), opposite)
                self.assertEqual(path.stat().st_mode & 0o777, 0o640)
        self.assertEqual(sorted(self.job.folder.rglob("*")), names)

    @needs_namespace
    def test_what_cannot_be_inverted_is_left_as_it_is(self):
        picture = bmp(200, 200, RED)
        for content, number, room in ((picture, 61, 160), (b"kein Bild", 481, 1000)):
            path = self.job.write("GRAFIK.BMP", content)
            errors = self.invert("GRAFIK.BMP", prefix=on_disk(self.job.folder, f"size={room}k"))
            self.assertIn(f"Laufzeitfehler '{number}'", errors)
            self.assertNotIn("drucken", errors)
            self.assertEqual((path.read_bytes(), self.job.names()), (content, ["GRAFIK.BMP"]))

    def test_a_single_picture_fills_the_page_as_far_as_its_shape_allows(self):
        self.job.write("GRAFIK.PCX", bmp(300, 100, BLUE))  # what counts is the content
        self.job.run("/PRINTGRAPHIC", PRINTER.lower(), "/DEBUG")
        self.job.assert_sound("GRAFIK.pdf", 1)
        page = PagePicture(self.job.folder / "GRAFIK.pdf")
        left, top, right, bottom = page.box(BLUE)
        self.assertAlmostEqual((right - left) / (bottom - top), 3, delta=0.01)
        self.assertAlmostEqual(left, page.width * page.points - right, delta=1)
        self.assertIn(f">   verwendeter Druckertreiber: {PRINTER}", self.job.log())
        self.assertIsNone(self.job.read("KRVWINPR.OK"))


if __name__ == "__main__":
    unittest.main()
