"""Pictures printed by the Windows program under Wine, beside those of the native one. The environment is that of
test_windows.py."""

import shutil
import subprocess
import unittest

from page_picture import PagePicture, bmp
from support import SAMPLES, Job, output_of
from test_windows import NATIVE, QUEUE, TENTH_OF_A_MILLIMETRE, WindowsTest

COLORS = {"red": b"\xFF\0\0", "green": b"\0\xFF\0", "blue": b"\0\0\xFF", "grey": b"\x80\x80\x80"}
RENDERED_DPI = 600


class Graphics(WindowsTest):
    def native_run(self, job, *arguments):
        subprocess.run([NATIVE, *arguments], cwd=job.folder, env=job.environment, check=True)

    def assert_same_boxes(self, names, pdf, native_pdf, native):
        """Each colour covers the same area, a tenth of a millimetre and a rendered pixel beside it at most."""
        page, native_page = PagePicture(pdf, dpi=RENDERED_DPI), PagePicture(native_pdf, dpi=RENDERED_DPI)
        margins = self.margins(self.job.folder, "cp1252"), self.margins(native.folder, "utf-8")
        for name in names:
            boxes = page.box(COLORS[name]), native_page.box(COLORS[name])
            self.assertTrue(all(boxes), (name, boxes))
            for edge in range(4):
                ours, theirs = (box[edge] - margin[edge % 2] for box, margin in zip(boxes, margins))
                self.assertAlmostEqual(ours, theirs, delta=TENTH_OF_A_MILLIMETRE + page.points, msg=(name, boxes))

    def test_pictures_lie_where_the_native_program_puts_them_in_their_own_colours(self):
        native = Job(self)
        for job in (self.job, native):
            job.write("HPLASER.INI", "[Grafik]\r\nGrafik1=1,2,1,INCH,True,3\r\nGrafik2=8.5,4.3,gruen.bmp,CM,False,3\r\n"
                                     "Grafik3=5,1,grau.png\r\n[Grafik_A]\r\nGrafik1=0.5,0.25,1\r\n")
            job.write("LASER/KRVWin.M1", bmp(96, 48, COLORS["red"]))
            job.write("LASER/KRVWin.M11", bmp(200, 100, bytes(255 - value for value in COLORS["blue"])))
            job.write("LASER/KRVWinIn.M11", b"")
            job.write("gruen.bmp", bmp(300, 30, COLORS["green"]))
            subprocess.run(["convert", "-size", "150x90", "xc:#808080", job.folder / "grau.png"], check=True)
            job.write("A.OUT", "eins\r\nzwei^GR^GY1\r\n\f")
        pdf = self.to_pdf(self.printed("A.OUT", "KEINEGRAFIK", QUEUE, "/DEBUG").data, "a.pdf")
        self.native_run(native, "A.OUT", "KEINEGRAFIK", "Korvano PDF", "/DEBUG")
        self.assert_same_boxes(COLORS, pdf, native.folder / "A.pdf", native)

    def test_a_background_covers_the_printable_area_of_every_page(self):
        self.job.write("GRUND.BMP", bmp(60, 80, COLORS["green"]))
        self.job.write("A.OUT", "eins\fzwei\f")
        pdf = self.to_pdf(self.printed("A.OUT", "GRUND.BMP", QUEUE, "/DEBUG").data, "a.pdf")
        left, top = self.margins(self.job.folder, "cp1252")
        for number in (1, 2):
            page = PagePicture(pdf, number)
            box = page.box(COLORS["green"])
            self.assertAlmostEqual(box[0], left, delta=0.5)
            self.assertAlmostEqual(box[1], top, delta=0.5)
            self.assertGreater(box[2] - box[0], 0.94 * page.width * page.points)
            self.assertGreater(box[3] - box[1], 0.94 * page.height * page.points)

    def test_inverting_writes_the_file_that_the_native_program_writes(self):
        native = Job(self)
        names = ("LASER/KRVWin.M1", "LASER/KRVWin.M2", "HINTERGR.PCX")
        for job in (self.job, native):
            shutil.copytree(SAMPLES / "BRIEF", job.folder, dirs_exist_ok=True)
            subprocess.run(["convert", "-size", "60x40", "gradient:", job.folder / "V.PNG"], check=True)
        for name in (*names, "V.PNG"):
            self.assertEqual(self.run_windows("/INVERT", name.replace("/", "\\")), [])
            self.native_run(native, "/INVERT", name)
        for name in names:
            self.assertEqual((self.job.folder / name).read_bytes(), (native.folder / name).read_bytes(), name)
        self.assertEqual(*(output_of("convert", job.folder / "V.PNG", "-depth", "8", "-compress", "none", "ppm:-")
                           for job in (self.job, native)))

    def test_a_single_picture_takes_the_page(self):
        native = Job(self)
        for job in (self.job, native):
            job.write("GRAFIK.PCX", bmp(300, 400, COLORS["blue"]))
            job.write("LEER.OUT", "x\f")
        pdf = self.to_pdf(self.printed("/PRINTGRAPHIC", QUEUE.upper()).data, "g.pdf")
        page = PagePicture(pdf)
        left, top, right, bottom = page.box(COLORS["blue"])
        self.assertAlmostEqual((right - left) / (bottom - top), 300 / 400, delta=0.01)
        self.assertGreater(max((right - left) / page.width, (bottom - top) / page.height) / page.points, 0.9)

    def test_what_is_no_picture_is_told_in_a_box(self):
        self.job.write("A.PCX", b"kein Bild")
        box, = self.run_windows("/INVERT", "A.PCX")
        self.assertIn("Laufzeitfehler '481'", box)
        self.assertEqual(self.job.read("A.PCX"), b"kein Bild")


if __name__ == "__main__":
    unittest.main()
