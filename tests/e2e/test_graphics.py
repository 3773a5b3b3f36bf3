"""Pictures on the pages of the real program, and the commands for a single one."""

import os
import shutil
import stat
import subprocess
import unittest

from page_picture import PagePicture, bmp
from support import OK_TEXT, ON_DISK, PRINTER, SAMPLES, JobTest, namespace_command, output_of, page_count, without_privileges

RED, GREEN, BLUE = b"\xFF\0\0", b"\0\xFF\0", b"\0\0\xFF"
PIXEL = 2540 / 96  # natural size of a picture's pixel at the usual screen resolution, hundredths of a millimetre
TENTH_OF_A_MILLIMETRE = 72 / 254


def sample_letter(job):
    shutil.copytree(SAMPLES / "BRIEF", job.folder, dirs_exist_ok=True)


def pictures_in(pdf) -> list[list[str]]:
    """The pictures shown, page by page: page, number, type, width, height, colour, components, bits, encoding, ..., object."""
    return [line.split() for line in output_of("pdfimages", "-list", pdf).splitlines()[2:]]


class Placement(JobTest):
    def setUp(self):
        super().setUp()
        self.job.printer_settings("LinkerRand=720", "ObererRand=1000", "Zeilenabstand=222")
        for macro, color in ((1, RED), (2, GREEN), (11, BLUE)):
            self.job.write(f"LASER/KRVWin.M{macro}", bmp(96, 48, color))
        self.margins = None

    def print(self, text, profile, *switches):
        self.job.write("HPLASER.INI", profile)
        self.job.write("A.OUT", text)
        self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG", *switches)
        line = next(line for line in self.job.log() if "Ränder" in line)
        self.margins = [float(text.replace(",", ".")) / 2.54 * 72 for text in line.split(": ")[1].split(";")[:2]]
        return PagePicture(self.job.folder / "A.pdf")

    def assert_box(self, page, color, x, y, width, height):
        """In twips from the corner of the printable area."""
        expected = [self.margins[0] + x / 20, self.margins[1] + y / 20, self.margins[0] + (x + width) / 20,
                    self.margins[1] + (y + height) / 20]
        for found, wanted in zip(page.box(color), expected):
            self.assertAlmostEqual(found, wanted, delta=TENTH_OF_A_MILLIMETRE + page.points, msg=(page.box(color), expected))

    def test_pictures_land_where_hplaser_ini_and_the_text_say(self):
        profile = ("[Grafik]\r\nGrafik1=1,2,1,INCH,True,2\r\nGrafik2=2.54,5.08,2,CM,False,2,5\r\nGrafikSize2=2540,5080,2\r\n"
                   "[Grafik_A]\r\nGrafik1=0,0,1\r\n")
        page = self.print("^GR\r\nxx^GA1yy\r\n^GY1\f", profile)
        natural = 96 * PIXEL
        # The unprintable margin is taken off an absolute position as it is: inches from a position in twips.
        self.assert_box(page, RED, 2880, 1440, natural / 2, natural / 4)
        self.assert_box(page, GREEN, 5.08 * 1440 / 2.54 + 720, 2.54 * 1440 / 2.54 + 1000, 5080 / 2.5, 2540 / 2.5)
        # The second set's picture at its own position, and on the third line at the text's position.
        width = natural / 5.5
        third_line = 1000 + 2 * 222 + 1000
        box = page.box(BLUE)
        self.assertAlmostEqual(box[1], self.margins[1] + 1000 / 20, delta=1)
        self.assert_box(page, BLUE, 720, 1000, 720 + width, third_line - 1000 + width / 2)

    def test_two_passes_and_every_page_show_the_same_pictures_stored_once(self):
        profile = "[Grafik]\r\nGrafik1=1,1,1\r\nGrafik2=3,1,KRVWin.M1-Kopie.bmp\r\n"
        self.job.write("KRVWin.M1-Kopie.bmp", bmp(96, 48, GREEN))
        once = self.print("eins^GR\fzwei^GR1\f" * 5, profile)
        self.job.assert_sound("A.pdf", 10)
        objects = [row[10] for row in pictures_in(self.job.folder / "A.pdf")]
        self.assertEqual((len(objects), len(set(objects))), (15, 2))
        os.remove(self.job.folder / "A.pdf")
        twice = self.print("eins^GR\fzwei^GR1\f" * 5, profile, "/TWOPASS")
        self.assertEqual(once.pixels, twice.pixels)

    def test_the_host_goes_on_before_pictures_are_read(self):
        self.print("^GR\f", "[Grafik]\r\nGrafik1=1,1,1\r\n")
        log = self.job.log()
        self.assertLess(log.index(">   KRVWINPR.OK ausgegeben"), log.index(">     Grafikpositionen lesen"))
        self.assertLess(log.index(">       alle Grafiken ausgeben"),
                        next(number for number, line in enumerate(log) if "GR Grafikmakro 1-9 Inch relativ" in line))


class Letter(JobTest):
    def test_the_sample_letter_keeps_depths_and_inverts_the_signature(self):
        sample_letter(self.job)
        self.job.run("BRIEF.OUT", "HINTERGR.PCX", PRINTER)
        pdf = self.job.folder / "BRIEF.pdf"
        self.job.assert_sound("BRIEF.pdf", 1)
        shown = {(row[3], row[4]): (row[5], row[7]) for row in pictures_in(pdf)}
        self.assertEqual(shown, {("827", "1169"): ("index", "2"), ("1500", "260"): ("gray", "1"), ("360", "260"): ("index", "8"),
                                 ("600", "180"): ("gray", "1")})
        subprocess.run(["pdfimages", "-png", pdf, self.job.folder / "bild"], check=True)
        light = [float(output_of("convert", picture, "-colorspace", "Gray", "-format", "%[fx:mean]", "info:"))
                 for picture in sorted(self.job.folder.glob("bild-*.png"))]
        self.assertGreater(min(light), 0.5, light)  # the signature's file is nearly black


class Faults(JobTest):
    def print(self, *switches):
        self.job.write("A.OUT", "eins^GR\f")
        return self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG", *switches)

    def test_a_picture_that_cannot_be_used_ends_the_job_with_its_reason(self):
        picture = bmp(96, 48, RED)
        bad = {"cut off": picture[:-100], "another type": b"Das ist kein Bild. " * 9,
               "30,000 x 30,000": picture[:18] + b"\x30\x75\0\0\x30\x75\0\0" + picture[26:]}
        self.job.write("HPLASER.INI", "[Grafik]\nGrafik1=1,1,1\n")
        for name, content in bad.items():
            with self.subTest(name):
                self.job.write("LASER/KRVWin.M1", content)
                run = self.print()
                self.assertIn("2147194502", run.errors)
                self.assertIn("(481)", run.errors.replace("\r\n", " "))
                self.assertEqual((self.job.pdfs(), self.job.read("KRVWINPR.OK")), ([], OK_TEXT))

    def test_an_unreadable_picture(self):
        self.job.write("HPLASER.INI", "[Grafik]\nGrafik1=1,1,1\n")
        self.job.write("LASER/KRVWin.M1", bmp(9, 9, RED)).chmod(0)
        self.job.write("A.OUT", "x^GR\f")
        run = self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, prefix=without_privileges())
        self.assertIn("2147194502", run.errors)

    def test_a_missing_macro_file_stops_nothing_but_a_debug_run(self):
        self.job.write("HPLASER.INI", "[Grafik]\nGrafik1=1,1,7\n")
        self.job.write("A.OUT", "eins^GR\f")
        self.assertEqual(self.job.run("A.OUT", "KEINEGRAFIK", PRINTER).errors, "")
        self.assertEqual(self.job.lines("A.pdf"), [["eins"]])
        self.assertIn("2147194503", self.print().errors)
        self.assertIn("KRVWin.M7 nicht gefunden.", "\n".join(self.job.log()))

    def test_numbers_that_are_none_and_a_factor_of_zero(self):
        self.job.write("LASER/KRVWin.M1", bmp(9, 9, RED))
        for value, error in (("1,zwei,1", "Fehler 13:"), ("1,1,1,INCH,False,0", "Fehler 232943:")):
            with self.subTest(value):
                self.job.write("HPLASER.INI", f"[Grafik]\nGrafik1={value}\n")
                self.assertIn(error, self.print().errors)

    def test_a_background_that_is_missing_or_none_ends_the_job(self):
        self.job.write("A.OUT", "eins\f")
        self.job.write("KEINBILD.BMP", b"BM")
        for name, number in (("FEHLT.BMP", 53), ("KEINBILD.BMP", 481)):
            run = self.job.run("A.OUT", name, PRINTER, "/DEBUG")
            self.assertIn(f"Fehler beim Laden der Grafikdatei {name} auf.", run.errors)
            self.assertIn(f"Nummer: {number}, ", run.errors)
            self.assertEqual(self.job.pdfs(), [])


class SinglePicture(JobTest):
    def invert(self, name, **options):
        run = self.job.start("/INVERT", name, **options).wait(60)
        self.job.check(run)
        return run

    def test_inverting_twice_gives_the_first_pixels_back(self):
        sample_letter(self.job)
        for name, decoder in (("LASER/KRVWin.M1", "pcxtoppm"), ("LASER/KRVWin.M2", "bmptopnm"), ("HINTERGR.PCX", "pcxtoppm")):
            with self.subTest(name):
                path = self.job.folder / name
                path.chmod(0o640)
                before = self.pixels(decoder, path)
                self.assertEqual(self.invert(name.replace("/", "\\").lower()).errors, "")
                self.assertEqual(self.pixels(decoder, path), self.filtered(before, "pnminvert"))
                self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o640)
                self.invert(name)
                self.assertEqual(self.pixels(decoder, path), before)
        self.assertEqual(sorted(os.listdir(self.job.folder / "LASER")),
                         ["KRVWin.M1", "KRVWin.M13", "KRVWin.M2", "KRVWinIn.M13"])

    def pixels(self, decoder, path):
        picture = subprocess.run([decoder, path], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True).stdout
        return self.filtered(picture)

    @staticmethod
    def filtered(picture, *command):
        if command:
            picture = subprocess.run(command, input=picture, stdout=subprocess.PIPE, check=True).stdout
        return subprocess.run(["pnmtopnm", "-plain"], input=picture, stdout=subprocess.PIPE, check=True).stdout

    @unittest.skipUnless(namespace_command(), "mounts are not allowed here")
    def test_a_full_disk_leaves_the_old_file_whole(self):
        before = bmp(200, 200, RED)
        path = self.job.write("GRAFIK.BMP", before)
        disk = [*namespace_command(), "sh", "-c", ON_DISK, "sh", self.job.folder, "size=160k", ""]
        run = self.invert("GRAFIK.BMP", prefix=[str(part) for part in disk])
        self.assertIn("Laufzeitfehler '61'", run.errors)
        self.assertEqual((path.read_bytes(), self.job.names()), (before, ["GRAFIK.BMP"]))

    def test_inverting_what_is_no_picture_says_so_and_changes_nothing(self):
        self.job.write("A.PCX", b"kein Bild")
        for name, number in (("A.PCX", 481), ("FEHLT.PCX", 53)):
            self.assertIn(f"Laufzeitfehler '{number}'", self.invert(name).errors)
        self.assertEqual(self.job.read("A.PCX"), b"kein Bild")

    def test_a_single_picture_fills_the_page_as_far_as_its_shape_allows(self):
        for width, height in ((300, 100), (100, 300)):
            self.job.write("GRAFIK.PCX", bmp(width, height, BLUE))  # what counts is the content
            self.job.run("/PRINTGRAPHIC", PRINTER.lower(), "/DEBUG")
            pdf = self.job.folder / self.job.pdfs()[0]
            self.assertEqual(page_count(pdf), 1)
            page = PagePicture(pdf)
            left, top, right, bottom = page.box(BLUE)
            self.assertAlmostEqual((right - left) / (bottom - top), width / height, delta=0.01)
            if width > height:
                self.assertAlmostEqual(left, page.width * page.points - right, delta=1)
            else:
                self.assertAlmostEqual(top, page.height * page.points - bottom, delta=1)
            self.assertIn(f">   verwendeter Druckertreiber: {PRINTER}", self.job.log())
            pdf.unlink()
        self.assertIsNone(self.job.read("KRVWINPR.OK"))


if __name__ == "__main__":
    unittest.main()
