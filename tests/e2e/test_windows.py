"""The Windows program under Wine, printing to a PostScript queue of a private print server, beside the native program.

Besides the environment of support.py: KRVWINPR_ANSWER names krv-answer.exe, KRVWINPR_PREFIX the Wine prefix and
KRVWINPR_NATIVE the native program."""

import os
import re
import subprocess
import unittest
from pathlib import Path

from barcode_readers import zbar
from private_cups import PrivateCups
from support import OK_TEXT, PRODUCT_KEY, SAMPLES, Job, words_of

TESTS = Path(__file__).resolve().parents[1]
PREFIX = os.environ["KRVWINPR_PREFIX"]
ANSWER = os.environ["KRVWINPR_ANSWER"]
PROGRAM = os.environ["KRVWINPR"]
NATIVE = os.environ["KRVWINPR_NATIVE"]
TENTH_OF_A_MILLIMETRE = 72 / 254
DPI = 600  # of pages as pictures
QUEUE = "Laser"
KEY = rf"{PRODUCT_KEY}\Drucker\{QUEUE}"
# What the two systems, or their drivers for one queue, name differently.
OWN_LINES = re.compile("App.StartMode|RunPath|EXEPath|LOGPixels|Ränder|TwipsPerPixel|Pixel pro mm|Bedruckbarer Bereich|"
                       "Physische Größe|DoReport|HPLASER.INI|verwendeter Druckertreiber|ColorMode|Paperbin")


def wine(*command, **options):
    return subprocess.run([TESTS / "wine-run.sh", PREFIX, *command], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=120, **options)


def edges(pixels, begin, end):
    """Where a line of pixels turns from white to black or back."""
    return [place for place in range(begin, end) if (pixels[place] < 128) != (pixels[place - 1] < 128)]


class WindowsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.end_wine()
        cls.cups = PrivateCups().__enter__()
        cls.addClassCleanup(cls.cups.__exit__)
        cls.addClassCleanup(cls.end_wine)
        # Wine's printer driver writes PostScript. The margins in the log are those of the queue's default size.
        cls.cups.add_postscript_queue(QUEUE, Resolution="600dpi")
        cls.cups.add_pdf_queue("archiv")
        cls.cups.set_default(QUEUE)

    @staticmethod
    def end_wine():
        """Wine's server asks for the print server once."""
        subprocess.run([TESTS / "wine-prefix.sh", "--end", PREFIX], check=True)

    def setUp(self):
        self.job = Job(self)
        self.environment = self.cups.environment()
        self.registry("delete", PRODUCT_KEY, "/f")

    def registry(self, verb, key, *arguments):
        return wine("reg", verb, key, *arguments, env=self.environment).stdout.decode("cp850")

    def run_windows(self, *arguments, answers=()):
        """The message boxes of a run, as krv-answer names them."""
        result = wine(ANSWER, *answers, PROGRAM, *arguments, env=self.environment, cwd=self.job.folder)
        self.assertEqual(result.returncode, 0, result)
        self.errors = result.stderr.decode("cp1252")
        return result.stdout.decode().splitlines()

    def printed(self, *arguments, queue=QUEUE):
        before = len(self.cups.jobs(queue))
        self.assertEqual(self.run_windows(*arguments), [])
        return self.cups.wait_for_jobs(queue, before + 1)[before]

    def log(self, folder, encoding):
        text = (folder / "KRVWinPr.LOG").read_bytes().decode(encoding)
        return [re.sub(r"^\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d", "", line) for line in text.split("\r\n")]

    def to_pdf(self, postscript, name):
        """A PDF of what a PostScript printer would print."""
        source, target = self.job.folder / "job.ps", self.job.folder / name
        source.write_bytes(postscript)
        subprocess.run(["gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", f"-sOutputFile={target}", source],
                       check=True)
        return target

    def print_natively(self, job, name):
        """Prints to a printer of the same resolution."""
        subprocess.run([NATIVE, name, "KEINEGRAFIK", "Korvano PDF", "/DEBUG2"], cwd=job.folder, env=job.environment,
                       check=True)

    def native_pdf(self, name):
        job = Job(self)
        job.sample(name)
        self.print_natively(job, name)
        return job.folder, job.folder / name.replace(".OUT", ".pdf")

    def margins(self, folder, encoding):
        line = next(line for line in self.log(folder, encoding) if "Ränder" in line)
        left, top = line.split(": ")[1].split(";")[:2]
        return [float(text.replace(",", ".")) / 2.54 * 72 for text in (left, top)]


class Pages(WindowsTest):
    def words(self, pdf, folder, encoding):
        left, top = self.margins(folder, encoding)
        return [[(word.text.replace("\u00ad", "-").rstrip(","), word.x - left, word.bottom - top, word.bottom - word.y)
                 for word in page] for page in words_of(pdf)]

    def assert_each_has_its_like(self, words, others, more):
        """Each word stands among the others, a tenth of a millimetre and a bit more away at most. Fonts that Ghostscript
        describes with another height (bold ones, and parts of large ones) can only be compared across."""
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
        for name, words in (("RECHNUNG.OUT", 200), ("TESTSEIT.OUT", 200)):
            with self.subTest(name):
                self.job.sample(name)
                (self.job.folder / "KRVWinPr.LOG").unlink(missing_ok=True)
                pdf = self.to_pdf(self.printed(name, "KEINEGRAFIK", "laser", "/DEBUG2").data, name + ".pdf")
                native_folder, native_pdf = self.native_pdf(name)
                pages = self.words(pdf, self.job.folder, "cp1252")
                native_pages = self.words(native_pdf, native_folder, "utf-8")
                self.assertEqual(len(pages), len(native_pages))
                self.assertGreater(sum(map(len, native_pages)), words)
                for page, native_page in zip(pages, native_pages):
                    self.assert_each_has_its_like(native_page, page, 0)
                    self.assert_each_has_its_like(page, native_page, deepest_shadow)
                logs = self.log(self.job.folder, "cp1252"), self.log(native_folder, "utf-8")
                self.assertEqual(*([line.replace(QUEUE, "Korvano PDF") for line in log if not OWN_LINES.search(line)]
                                   for log in logs))

    def test_rules_are_where_the_native_program_draws_them(self):
        self.job.write("A.OUT", "\r\n  ^FEH^FA ^UE" + " " * 30 + "^UA\r\n\r\n^17^UE" + " " * 50)
        pdf = self.to_pdf(self.printed("A.OUT", "", QUEUE, "/DEBUG").data, "a.pdf")
        native = Job(self)
        native.write("A.OUT", self.job.read("A.OUT"))
        self.print_natively(native, "A.OUT")
        for axis, ours, theirs in zip("left top right bottom".split(), self.ink(pdf, self.job.folder, "cp1252"),
                                      self.ink(native.folder / "A.pdf", native.folder, "utf-8")):
            self.assertAlmostEqual(ours, theirs, delta=TENTH_OF_A_MILLIMETRE, msg=axis)

    def test_the_barcode_is_the_native_programs_and_is_read(self):
        self.job.sample("RECHNUNG.OUT")
        pdf = self.to_pdf(self.printed("RECHNUNG.OUT", "", QUEUE, "/DEBUG").data, "a.pdf")
        native_folder, native_pdf = self.native_pdf("RECHNUNG.OUT")
        bars, native_bars = self.bars(pdf, self.job.folder, "cp1252"), self.bars(native_pdf, native_folder, "utf-8")
        self.assertEqual(len(native_bars), 2 * 5 * len("*2026-10456*") + 2)  # five bars a character; top and bottom
        self.assertEqual(len(bars), len(native_bars))
        for ours, theirs in zip(bars, native_bars):
            self.assertAlmostEqual(ours, theirs, delta=TENTH_OF_A_MILLIMETRE)
        picture = self.job.folder / "a"
        subprocess.run(["pdftoppm", "-r", "200", "-gray", "-singlefile", pdf, picture], check=True)
        self.assertEqual([found.data for found in zbar(picture.with_suffix(".pgm"))[0]], [b"2026-10456"])

    def bars(self, pdf, folder, encoding):
        """Every edge of the invoice's barcode across, then top and bottom of its first bar; in points behind the margins."""
        width, _, pixels = self.grey(pdf)
        left, top = (margin / 72 * DPI for margin in self.margins(folder, encoding))
        row, right_half, above = round(top + 1.92 * DPI), round(left + 5.4 * DPI), round(top + 1.7 * DPI)
        across = edges(pixels[row * width:(row + 1) * width], right_half, width)
        down = edges(pixels[across[0] + 2::width], above, above + DPI // 2)
        return [(edge - left) / DPI * 72 for edge in across] + [(edge - top) / DPI * 72 for edge in down]

    def grey(self, pdf):
        """Width, height and pixels of the first page."""
        image = subprocess.run(["pdftoppm", "-r", str(DPI), "-gray", "-f", "1", "-l", "1", pdf], stdout=subprocess.PIPE,
                               check=True).stdout
        _, size, _, pixels = image.split(b"\n", 3)
        return *map(int, size.split()), pixels

    def ink(self, pdf, folder, encoding):
        """The box around everything drawn on the first page, in points behind the margins."""
        width, height, pixels = self.grey(pdf)
        rows = [row for row in range(height) if min(pixels[row * width:(row + 1) * width]) < 128]
        inked = [pixels[row * width:(row + 1) * width] for row in rows]
        columns = [column for column in range(width) if any(row[column] < 128 for row in inked)]
        left, top = self.margins(folder, encoding)
        points = 72 / DPI
        return (columns[0] * points - left, rows[0] * points - top, columns[-1] * points - left, rows[-1] * points - top)

    def test_two_passes_and_many_pages_print_the_same_text(self):
        self.job.write("A.OUT", "^FEeins^FA\f" + "zwei\f" * 20)
        once = words_of(self.to_pdf(self.printed("A.OUT").data, "1.pdf"))
        twice = words_of(self.to_pdf(self.printed("A.OUT", "/TWOPASS").data, "2.pdf"))
        self.assertEqual(len(once), 21)
        self.assertEqual([[word.text for word in page] for page in once], [[word.text for word in page] for page in twice])


class Settings(WindowsTest):
    def test_trays_arrive_and_settings_are_the_registrys(self):
        # Wine numbers a driver's trays from 256 (Auto, Tray1, Tray2, Manual), and its PostScript names the first page's.
        self.registry("add", KEY, "/v", "Schacht1", "/d", "258", "/f")
        self.registry("add", KEY, "/v", "Schacht2", "/d", "257", "/f")
        self.registry("add", KEY, "/v", "LinkerRand", "/t", "REG_DWORD", "/d", "1440", "/f")
        for tray, slot in ((2, b"Tray1"), (1, b"Tray2")):
            self.job.write("A.OUT", f"^TR{tray}eins\f^TR{3 - tray}zwei\f")
            postscript = self.printed("A.OUT", "", "LASER", "/DEBUG").data
            self.assertEqual(re.findall(rb"\*InputSlot (\w+)", postscript), [slot])
        trays = [line for line in self.log(self.job.folder, "cp1252") if "Paperbin" in line]
        self.assertEqual([line[-3:] for line in trays], ["257", "258", "258", "257"])
        left, _ = self.margins(self.job.folder, "cp1252")
        word = words_of(self.to_pdf(postscript, "a.pdf"))[0][0]
        self.assertAlmostEqual(word.x - left, 72, delta=TENTH_OF_A_MILLIMETRE)
        stored = self.registry("query", PRODUCT_KEY)
        for name, value in (("LastDriverUsed", QUEUE), ("EXEVersion", r"\d+\.\d+\.\d+"), ("EXEPath", r".*\\KRVWinPr"),
                            ("RunPath", ".*")):
            self.assertRegex(stored, rf"{name} +REG_SZ +{value}\r\n")

    def test_a_tray_that_the_printer_does_not_have_ends_the_job_behind_the_finished_pages(self):
        self.registry("add", KEY, "/v", "Schacht3", "/d", "99", "/f")
        self.job.write("A.OUT", "eins\f^TR3zwei\f")
        pdf = self.to_pdf(self.printed("A.OUT").data, "a.pdf")
        self.assertEqual([[word.text for word in page] for page in words_of(pdf)], [["eins"]])
        self.assertIn("Fehler 380", self.errors)


class Modes(WindowsTest):
    def test_an_unknown_printer_means_the_default_one_and_a_pdf_queue_works(self):
        self.job.write("A.OUT", "x")
        self.assertEqual(self.printed("A.OUT", "KEINEGRAFIK", '"gibt es nicht"').title, "A.OUT")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.assertEqual(self.printed("A.OUT", "", "ARCHIV", queue="archiv").title, "A.OUT")

    def test_wait_writes_the_file_when_the_queue_is_empty(self):
        self.job.write("A.OUT", "x")
        self.printed("A.OUT", "", QUEUE, "/WAIT", "/DEBUG")
        log = self.log(self.job.folder, "cp1252")
        self.assertIn(">     Ende durch Jobs.Count = 0", log)
        self.assertEqual(log[-5:], [">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben", "> Reportende",
                                    "> Programm regulär beendet!", "", ""])
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_messages_are_boxes(self):
        usage, = self.run_windows()
        self.assertTrue(usage.startswith("KRVWinPr|-|ok|KRVWinPr V. "), usage)
        question, = self.run_windows("FEHLT.OUT", "/DEBUG", answers=["--no"])
        self.assertIn("Es traten Fehler bei KRVWinPr auf, diese anzeigen?", question)
        self.assertIsNone(self.job.read("KRVWINPR.OK"))
        self.assertIn(">     Allgemeiner Fehler in DoReport 53 Datei nicht gefunden", self.log(self.job.folder, "cp1252"))
        for mode in ("/druckerauswahl", "/VORSCHAU A.OUT"):
            box, = self.run_windows(*mode.split())
            self.assertIn("noch nicht enthalten", box)


class NoPrinter(WindowsTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.cups.stop()

    def test_without_any_printer_the_user_is_told(self):
        self.job.write("A.OUT", "x")
        box, = self.run_windows("A.OUT")
        self.assertIn("Es sind keine Windowsdruckertreiber auf diesem Rechner installiert.", box)
        self.assertIn("Druckauftrag wurde abgebrochen.", box)
        self.assertIsNone(self.job.read("KRVWINPR.OK"))


if __name__ == "__main__":
    unittest.main()
