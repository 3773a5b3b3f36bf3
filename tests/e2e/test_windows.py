"""The Windows program under Wine, printing to a PostScript queue of a private print server, beside the native program.

Besides the environment of support.py: KRVWINPR_WINDOWS names the Windows program, KRVWINPR_ANSWER krv-answer.exe and
KRVWINPR_PREFIX the Wine prefix."""

import os
import pathlib
import re
import shutil
import struct
import subprocess
import tempfile
import unittest
from pathlib import Path

from barcode_readers import zbar
from page_picture import BLACK, BLUE, CYAN, GREEN, GREY, MAGENTA, RED, YELLOW, PagePicture, bmp
from private_cups import PPD, PrivateCups
from support import OK_TEXT, PRINTER, PRODUCT_KEY, TENTH_OF_A_MILLIMETRE, VERSION, Job, JobTest, output_of, words_of

TESTS = Path(__file__).resolve().parents[1]
PREFIX = os.environ["KRVWINPR_PREFIX"]
WINE = [TESTS / "wine-run.sh", PREFIX]
PROGRAM = os.environ["KRVWINPR_WINDOWS"]
QUEUE = "Laser"
KEY = rf"{PRODUCT_KEY}\Drucker\{QUEUE}"
# What the two systems, or their drivers for one queue, name differently.
OWN_LINES = re.compile("App.StartMode|RunPath|EXEPath|LOGPixels|Ränder|TwipsPerPixel|Pixel pro mm|Bedruckbarer Bereich|"
                       "Physische Größe|DoReport|HPLASER.INI|verwendeter Druckertreiber|ColorMode|Paperbin")


class WindowsTest(JobTest):
    environment = {}

    @classmethod
    def setUpClass(cls):
        cls.end_wine()
        cls.cups = cls.enterClassContext(PrivateCups())
        # Wine's printer driver writes PostScript. The margins in the log are those of the queue's default size.
        cls.cups.add_postscript_queue(QUEUE, "-o", "Resolution=600dpi")
        cls.cups.add_pdf_queue("archiv")
        needles = PPD.replace("1200x600dpi", "360x180dpi").replace(": Letter", ": A4")
        cls.cups.add_tray_queue("Nadel-PDF", ppd=needles)
        cls.cups.add_postscript_queue("Nadel", ppd=needles)
        cls.cups.run("lpadmin", "-d", QUEUE)
        cls.boxes = cls.enterClassContext(tempfile.TemporaryFile("w+"))
        answering = subprocess.Popen([*WINE, os.environ["KRVWINPR_ANSWER"]], stdin=subprocess.DEVNULL, stdout=cls.boxes,
                                     stderr=subprocess.DEVNULL, env=cls.cups.environment())
        cls.addClassCleanup(answering.wait)
        cls.addClassCleanup(cls.end_wine)

    def wine(self, *command, check=True, code=0) -> str:
        """What a Windows program says. What Wine starts in the background would hold on to a pipe, so it is a file.
        Where Wine itself does not start, nothing of the program has run, and it is started again."""
        with tempfile.TemporaryFile() as output:
            run = subprocess.run([*WINE, *command], stdin=subprocess.DEVNULL, stdout=output, stderr=output, timeout=120,
                                 env=self.cups.environment() | self.environment, cwd=self.job.folder)
            output.seek(0)
            text = output.read().decode("cp1252", "replace")
        if run.returncode == 1 and "failed to map the shared user data" in text:
            return self.wine(*command, check=check, code=code)
        if check:
            self.assertEqual(run.returncode, code, text)
        return text

    @staticmethod
    def end_wine():
        """Wine's server asks for the print server once."""
        subprocess.run([TESTS / "wine-prefix.sh", "--end", PREFIX], check=True)

    def setUp(self):
        self.native, self.job = Job(self), Job(self)
        self.job.encoding = "cp1252"
        self.wine("reg", "delete", PRODUCT_KEY, "/f", check=False)  # where it is
        for folder in self.kept():
            shutil.rmtree(folder)
        for log in self.error_logs():
            log.unlink()

    @staticmethod
    def error_logs():
        """The log of error reports, where there is one; forms would offer what it has."""
        return list(pathlib.Path(PREFIX).glob("drive_c/users/*/AppData/Local/KRVWinPr/KRVWinPr.ERR"))

    @staticmethod
    def kept():
        """The folder of kept jobs, where there is one."""
        return list(pathlib.Path(PREFIX).glob("drive_c/users/*/AppData/Local/KRVWinPr/Nicht gedruckt"))

    def write(self, name, data):
        for job in (self.native, self.job):
            job.write(name, data)

    def run_windows(self, *arguments):
        """The texts of the message boxes of a run."""
        self.before = self.boxes.seek(0, os.SEEK_END)
        self.errors = self.wine(PROGRAM, *arguments)
        return [line for line in self.shown() if not line.startswith("[")]

    def shown(self):
        """What was shown since the last run began: boxes, and messages in the notification area in brackets."""
        self.boxes.seek(self.before)
        return self.boxes.read().splitlines()

    def printed(self, *arguments, queue=QUEUE):
        before = len(self.cups.jobs(queue))
        self.assertEqual(self.run_windows(*arguments), [])
        return self.cups.wait_for_jobs(queue, before + 1)[before]

    def printed_pdf(self, *arguments, queue=QUEUE):
        """A PDF of what a PostScript printer would print."""
        pdf, self.postscript = self.job.folder / "job.pdf", self.printed(*arguments, queue=queue).path
        output_of("gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", f"-sOutputFile={pdf}", self.postscript)
        return pdf


class Program(WindowsTest):
    def words(self, pdf, job):
        left, top = job.margins()
        return [[(word.text.replace("\u00ad", "-").rstrip(","), word.x - left, word.bottom - top, word.bottom - word.y)
                 for word in page] for page in words_of(pdf)]

    def assert_each_has_its_like(self, words, others, more):
        """Each word stands among the others, a tenth of a millimetre and a bit more away at most. Fonts that
        Ghostscript describes with another height (bold ones, parts of large ones) can only be compared across."""
        limit, in_both_ways = TENTH_OF_A_MILLIMETRE + more, 0
        for text, x, bottom, height in words:
            likes = [other for other in others if other[0] == text and abs(other[1] - x) < limit]
            same_height = [other for other in likes if abs(other[3] - height) < 0.05]
            self.assertTrue(likes, (text, x, bottom, height))
            if same_height:
                in_both_ways += 1
                self.assertTrue(any(abs(other[2] - bottom) < limit for other in same_height), (text, x, bottom))
        self.assertGreater(in_both_ways, 0.6 * len(words))

    def test_every_word_stands_where_the_native_program_puts_it(self):
        deepest_shadow = 6 / 20  # points; in PostScript the copy is text too
        for name, passes in (("RECHNUNG", ["/DEBUG2"]), ("TESTSEIT", ["/TWOPASS", "/DEBUG2"])):
            with self.subTest(name):
                self.setUp()
                self.job.sample(f"{name}.OUT")
                self.native.sample(f"{name}.OUT")
                pdf = self.printed_pdf(f"{name}.OUT", "KEINEGRAFIK", "laser", *passes)
                self.native.run(f"{name}.OUT", "KEINEGRAFIK", PRINTER, *passes)
                pages = self.words(pdf, self.job)
                native_pages = self.words(self.native.folder / f"{name}.pdf", self.native)
                self.assertGreater(sum(map(len, native_pages)), 200)
                for page, native_page in zip(pages, native_pages, strict=True):
                    self.assert_each_has_its_like(native_page, page, 0)
                    self.assert_each_has_its_like(page, native_page, deepest_shadow)
                self.assertEqual(*([line.replace(QUEUE, PRINTER) for line in job.log() if not OWN_LINES.search(line)]
                                   for job in (self.job, self.native)))

    def test_the_same_on_a_needle_printer_whose_pixels_are_not_square(self):
        # For Wine a printer has two resolutions when its settings say so: the members dmPrintQuality and dmYResolution.
        key = r"HKLM\System\CurrentControlSet\Control\Print\Printers\Nadel"
        mode = bytearray.fromhex(re.search(r"Default DevMode +REG_BINARY +(\w+)", self.wine("reg", "query", key))[1])
        struct.pack_into("<h4xh", mode, 58, 360, 180)
        self.wine("reg", "add", key, "/v", "Default DevMode", "/t", "REG_BINARY", "/d", mode.hex(), "/f")
        self.native.environment["CUPS_SERVER"] = str(self.cups.socket)
        for job in (self.job, self.native):
            job.sample("RECHNUNG.OUT")
        pdf = self.printed_pdf("RECHNUNG.OUT", "KEINEGRAFIK", "Nadel", "/DEBUG", queue="Nadel")
        self.native.run("RECHNUNG.OUT", "KEINEGRAFIK", "Nadel-PDF", "/DEBUG")
        for job in (self.job, self.native):
            self.assertIn(">   TwipsPerPixel (X,Y): 4, 8", job.log())
        pages = self.words(pdf, self.job)
        native_pages = self.words(self.cups.wait_for_jobs("Nadel-PDF", 1)[0].path, self.native)
        # Wine's driver draws narrow letters, so that words end elsewhere; where they begin is what the widths say.
        for words, native_words in zip(pages, native_pages, strict=True):
            for text, x, bottom, _ in native_words:
                likes = [word for word in words if abs(word[1] - x) < TENTH_OF_A_MILLIMETRE and
                         (word[0].startswith(text) or text.startswith(word[0])) and abs(word[2] - bottom) < 4]
                self.assertTrue(likes, (text, x, bottom))

    def test_whatever_is_drawn_lies_where_the_native_program_draws_it_in_the_same_colours(self):
        self.write("HPLASER.INI", "[Grafik]\r\nGrafik1=1,2,1,INCH,True,3\r\nGrafik2=8.5,4.3,gruen.bmp,CM,False,3\r\n"
                                  "Grafik3=5,1,grau.png\r\n[Grafik_A]\r\nGrafik1=0.5,0.25,1\r\n")
        self.write("LASER/KRVWin.M1", bmp(96, 48, RED))
        self.write("LASER/KRVWin.M11", bmp(200, 100, YELLOW))
        self.write("LASER/KRVWinIn.M11", b"")  # prints blue
        self.write("gruen.bmp", bmp(300, 30, GREEN))
        subprocess.run(["convert", "-size", "150x90", "xc:#808080", self.native.folder / "grau.png"], check=True)
        self.write("grau.png", self.native.read("grau.png"))
        self.write("GRUND.BMP", bmp(60, 80, YELLOW))
        self.write("A.OUT", "\r\n  ^CM^UE" + " " * 30 + "^UA\r\n\r\n^17^CC^UE" + " " * 50 +
                   "^UA^CS^GR^GY1^BC7,2,LS-4711 / 26\\\r\n\fzwei\f")
        pdf = self.printed_pdf("A.OUT", "GRUND.BMP", QUEUE, "/DEBUG")
        self.native.run("A.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG")
        page, native_page = PagePicture(pdf, dpi=600), PagePicture(self.native.folder / "A.pdf", dpi=600)
        for color in (RED, GREEN, BLUE, GREY, MAGENTA, CYAN, BLACK):
            boxes = page.box(color), native_page.box(color)
            self.assertTrue(all(boxes), (color, boxes))
            for edges in zip(*boxes, self.job.margins() * 2, self.native.margins() * 2):
                self.assertAlmostEqual(edges[0] - edges[2], edges[1] - edges[3],
                                       delta=TENTH_OF_A_MILLIMETRE + page.points, msg=(color, boxes))
        output_of("pdftoppm", "-r", 200, "-gray", "-singlefile", pdf, self.job.folder / "a")
        self.assertEqual(zbar(self.job.folder / "a.pgm"), [[("CODE-39", 0, "LS-4711 / 26")]])
        for page in page, PagePicture(pdf, 2):  # the background covers the printable area of every page
            box = page.box(YELLOW)
            for edge, margin in zip(box, self.job.margins()):
                self.assertAlmostEqual(edge, margin, delta=0.5)
            covered = (box[2] - box[0]) / page.width, (box[3] - box[1]) / page.height
            self.assertGreater(min(covered) / page.points, 0.94)

    def test_trays_arrive_and_settings_are_the_registrys(self):
        # Wine numbers a driver's trays from 256 (Auto, Tray1, Tray2, Manual); its PostScript names the first page's.
        for name, kind, value in (("Schacht1", "REG_SZ", "258"), ("Schacht2", "REG_SZ", "257"),
                                  ("Schacht3", "REG_SZ", "99"), ("LinkerRand", "REG_DWORD", "1440")):
            self.wine("reg", "add", KEY, "/v", name, "/t", kind, "/d", value, "/f")
        for tray, slot in ((2, b"Tray1"), (1, b"Tray2")):
            self.job.write("A.OUT", f"^TR{tray}eins\f^TR{3 - tray}zwei\f")
            pdf = self.printed_pdf("A.OUT", "", "LASER", "/DEBUG")
            self.assertEqual(re.findall(rb"\*InputSlot (\w+)", self.postscript.read_bytes()), [slot])
        self.assertEqual([line[-3:] for line in self.job.log() if "Paperbin" in line], ["257", "258", "258", "257"])
        self.assertAlmostEqual(words_of(pdf)[0][0].x - self.job.margins()[0], 72, delta=TENTH_OF_A_MILLIMETRE)
        stored = self.wine("reg", "query", PRODUCT_KEY)
        for name, value in (("LastDriverUsed", QUEUE), ("EXEVersion", r"\d+\.\d+\.\d+"), ("EXEPath", r".*\\KRVWinPr"),
                            ("RunPath", ".*")):
            self.assertRegex(stored, rf"{name} +REG_SZ +{value}\r\n")
        # A tray that the printer does not have ends the job behind the finished pages.
        self.job.write("A.OUT", "eins\f^TR3zwei\f")
        self.assertEqual([[word.text for word in page] for page in words_of(self.printed_pdf("A.OUT"))], [["eins"]])
        self.assertRegex(self.errors, r"Fehler 380: .*„Schacht3“ .* ist „99“; .*„Laser“: .*257 \(Fach 1\), 258 \(")
        # The job is kept, and the way to print it works.
        place = r"\KRVWinPr\Nicht gedruckt"
        self.cups.wait_until(lambda: any(line.startswith("[") for line in self.shown()), "the notification")
        self.assertRegex("\n".join(self.shown()), rf"nur bis Seite 1 gedruckt.*„A \(1\).OUT“ .*{re.escape(place)}")
        folder, = self.kept()
        self.assertEqual((folder / "A (1).OUT").read_bytes(), b"eins\f^TR3zwei\f")
        command, = [line for line in (folder / "A (1).OUT.txt").read_text("utf-8-sig").splitlines() if "cd /d" in line]
        self.wine("reg", "add", KEY, "/v", "Schacht3", "/d", "258", "/f")
        (self.job.folder / "NOCHMAL.BAT").write_bytes(command.encode("cp850"))
        before = len(self.cups.jobs(QUEUE))
        self.wine("cmd", "/c", "NOCHMAL.BAT")
        again = self.cups.wait_for_jobs(QUEUE, before + 1)[before]
        self.assertEqual((again.title, len(self.cups.jobs(QUEUE))), ("A (1).OUT", before + 1))

    def test_an_unknown_printer_means_the_default_one_and_wait_writes_the_file_when_the_queue_is_empty(self):
        self.job.write("A.OUT", "x")
        self.assertEqual(self.printed("A.OUT", "KEINEGRAFIK", "gibt es nicht").title, "A.OUT")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        (self.job.folder / "KRVWINPR.OK").unlink()
        self.assertEqual(self.printed("A.OUT", "", "ARCHIV", "/WAIT", "/DEBUG", queue="archiv").title, "A.OUT")
        self.assertIn(">     Ende durch Jobs.Count = 0", self.job.log())
        self.assertEqual(self.job.log()[-4:], [">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben",
                                               "> Reportende", "> Programm regulär beendet!", ""])
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_inverting_writes_the_file_in_its_place(self):
        self.job.write("LASER/KRVWin.M1", bmp(9, 9, RED))
        self.assertEqual(self.run_windows("/INVERT", r"laser\krvwin.m1"), [])
        self.assertEqual((self.job.read("LASER/KRVWin.M1"), self.job.names()), (bmp(9, 9, CYAN), ["LASER"]))

    def test_who_asks_is_answered(self):
        self.assertEqual(self.wine(PROGRAM, "--version"), f"KRVWinPr {VERSION}\r\n")
        self.assertIn("\r\nParameter: KRVWinPr [/DRUCKERAUSWAHL|", self.wine(PROGRAM, "/?", "/DEBUG"))
        self.run_windows("fehlt.out")
        subprocess.run([*WINE, PROGRAM, "--version"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True,
                       stderr=subprocess.DEVNULL, timeout=120, env=self.cups.environment())
        self.assertTrue(any(f"KRVWinPr {VERSION}" in line for line in self.shown()), self.shown())

    def test_messages_are_boxes(self):
        self.job.write("A.PCX", b"kein Bild")
        for arguments, text in (("", "KRVWinPr V. "), ("/PRINTGRAPHIC", "Laufzeitfehler '53'"),
                                ("/INVERT A.PCX", "Laufzeitfehler '481'"),
                                ("FEHLT.OUT /DEBUG", "Es traten Fehler bei KRVWinPr auf, diese anzeigen?")):
            # What offers a report itself offers none of its own errors.
            self.environment = {"KRVWINPR_ERROR_REPORT": "1"} if "Laufzeitfehler" in text else {}
            box, = self.run_windows(*arguments.split())
            self.assertIn(text, box)
        self.assertEqual((self.job.read("A.PCX"), self.job.read("KRVWINPR.OK")), (b"kein Bild", None))
        self.assertIn(">     Allgemeiner Fehler in DoReport 53 Datei nicht gefunden", self.job.log())


class NoPrinter(WindowsTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.stop()

    def test_without_any_printer_the_user_is_told(self):
        self.job.write("A.OUT", "x")
        box, = self.run_windows("A.OUT")
        self.assertRegex(box, "Es sind keine Windowsdruckertreiber auf diesem Rechner installiert.*"
                              "Druckauftrag wurde abgebrochen.")
        self.assertIsNone(self.job.read("KRVWINPR.OK"))


if __name__ == "__main__":
    unittest.main()
