"""The preview on a real display: what it shows beside the PDF of the same job, and what its user does with it."""

import shutil
import time
import unittest

from page_picture import RED, bmp
from pdfa_checker import findings
from preview_picture import differences, page_of, sheet_in
from private_bus import PrivateBus
from private_cups import PrivateCups
from private_screen import PrivateScreen
from support import PRINTER, PRODUCT_KEY, SLOW, JobTest, lines_of

TRAYS = "Buero"
ZOOM, WINDOW = 150, ("Links=0", "Oben=0", "Breite=1400", "Hoehe=1800")  # a whole sheet is seen, however large
MACROS = "\r\n".join([
    "^20zwanzig ^17siebzehn ^15fünfzehn ^12zwölf ^10zehn", "^BE^20b ^17b ^15b ^12b ^10b^BA^10",
    "^FEfett^FA ^UEunter strichen^UA ^KEkursiv^KA ^FE^UE^KEalles^FA^UA^KA x^HE2^HA y^TE3^TA ^EEnichts^EA",
    "^SEeins^SA ^OEzwei^SA ^OAdrei^SA", "^CRrot ^CGgrün ^CHgelb ^CBblau ^CMmagenta ^CCcyan ^CSschwarz",
    "^LS^LR\x0aeingerückt^PLx^LR\x01 ^XYunbekannt ^", "│Rahmen└─┘ Größe ÄÖÜ", "^BC4,1,ABC-123\\^BC4.5,2.5,99\\",
    "^GZ1hier^GY1 und ^GR", "^GA"]) + "\f^TR2^CR^FEes geht weiter^SE\f und weiter"


@unittest.skipUnless(all(map(shutil.which, ("Xvfb", "xdotool", "gdbus", "/usr/libexec/at-spi-bus-launcher"))),
                     "needs xvfb, xdotool, gdbus and at-spi2-core")
class PreviewTest(JobTest):
    @classmethod
    def setUpClass(cls):
        cls.cups = cls.enterClassContext(PrivateCups())
        cls.cups.add_tray_queue(TRAYS, "-o", "PageSize=A4")
        cls.screen = cls.enterClassContext(PrivateScreen(cls.enterClassContext(PrivateBus()), "1400x1800"))

    def open(self, *arguments):
        self.job.show_windows()
        self.program = self.job.start("/VORSCHAU", *arguments, CUPS_SERVER=str(self.cups.socket),
                                      **self.screen.environment)
        self.addCleanup(lambda: self.program.poll() is None and self.program.end())
        self.screen.height("Korvano - Vorschau: " + "".join(arguments[:1]))
        window = self.wait_for(lambda: self.screen.children(self.screen.children(
            ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))[-1]), bool)[0]
        self.canvas, *controls = self.screen.children(window)
        self.page, self.zoom, self.sought = controls[3], controls[8], controls[13]
        self.found, self.status = controls[16], controls[-1]
        self.wait_for(lambda: self.screen.name(self.status), lambda text: "|" in text or not text)
        self.screen.tool("xdotool", "mousemove", "0", "0")

    def close(self):
        self.screen.press("Escape")
        self.job.check(self.program.finish(20))

    def wait_for(self, ask, wanted):
        """What is true at last; a value that is wanted, or what says so."""
        end = time.monotonic() + (60 if SLOW else 15)
        while True:
            value = ask()
            if wanted(value) if callable(wanted) else value == wanted:
                return value
            self.assertLess(time.monotonic(), end, value)
            time.sleep(0.05)

    def shows(self, page):
        self.wait_for(lambda: self.screen.text(self.page), str(page))
        self.wait_for(lambda: self.screen.name(self.status), lambda text: "wird vorbereitet" not in text)

    def click(self, x, y, *buttons):
        """In the middle of what the canvas shows, or so far from it."""
        left, top, width, height = self.screen.place(self.canvas)
        self.screen.tool("xdotool", "mousemove", str(left + width // 2 + x), str(top + height // 2 + y), *buttons)

    def differences(self, pdf, page) -> list[str]:
        expected = page_of(self.job.folder / pdf, page, 96 * ZOOM / 100)
        return differences(sheet_in(self.screen.picture(), self.screen.place(self.canvas), expected), expected)

    def test_every_page_looks_as_in_the_pdf(self):
        for sample in ("RECHNUNG.OUT", "TESTSEIT.OUT"):
            self.job.sample(sample)
        self.job.sample_letter()
        self.job.write("MAKROS.OUT", MACROS)
        for name, picture, *passes in (("RECHNUNG", "KEINEGRAFIK"), ("TESTSEIT", "KEINEGRAFIK"),
                                       ("BRIEF", "HINTERGR.PCX"), ("MAKROS", "KEINEGRAFIK", "/TWOPASS")):
            self.job.run(name + ".OUT", picture, PRINTER, *passes)
            self.job.write_settings(f"Zoom={ZOOM} %", *WINDOW, key=PRODUCT_KEY + r"\Vorschau")
            before = self.job.contents()
            self.open(name + ".OUT", picture, PRINTER, *passes)
            for page in range(1, len(self.job.lines(name + ".pdf")) + 1):
                self.shows(page)
                self.wait_for(lambda: self.differences(name + ".pdf", page), [])
                self.screen.press("Next")
            self.close()
            self.assertEqual(self.job.contents(), before)

    def test_keys_and_mouse_and_what_is_kept(self):
        pages = 30000
        self.job.write("LANG.OUT", "".join(f"Kunde {page}\r\nSumme^FE\r\n\f" for page in range(1, pages + 1)))
        self.open("LANG.OUT", "KEINEGRAFIK", PRINTER)
        for keys, page in ((["Next"], 2), (["Right"], 3), (["Prior"], 2), (["End"], pages), (["Home"], 1),
                           (["ctrl+g", "2", "5", "Return"], 25), (["ctrl+End"], pages)):
            self.screen.press(*keys)
            self.shows(page)
        self.click(0, 0, "click", "4", "click", "4")
        self.shows(pages - 2)
        self.screen.press("ctrl+f", *"kunde", "space", *"1234")
        self.wait_for(lambda: self.screen.name(self.found), "1 von 11")
        self.screen.press("F3", "F3")
        self.wait_for(lambda: self.screen.name(self.found), "3 von 11")
        self.shows(12341)
        # What is copied from the page, its first line, goes where it is searched.
        self.screen.press("Tab", "ctrl+a", "ctrl+c", "ctrl+f", "ctrl+v")
        self.wait_for(lambda: self.screen.text(self.sought), "Kunde 12341")
        self.screen.press("Tab", "ctrl+0")
        self.click(0, 0, "keydown", "ctrl", "click", "4", "keyup", "ctrl")
        larger = self.wait_for(lambda: self.screen.name(self.status).split()[-2], lambda percent: int(percent) > 100)
        window = self.screen.place(self.canvas)
        self.close()
        self.job.write("WEIT.OUT", "".join("^FEx^FA" * 500 + f"{page}\f" for page in range(pages // 2)))
        self.open("WEIT.OUT", "KEINEGRAFIK", PRINTER, "/DEBUG")
        self.assertEqual((self.screen.name(self.status).split()[-2], self.screen.place(self.canvas)), (larger, window))
        self.screen.tool("xdotool", "key", "--delay", "0", "ctrl+End", "Escape")
        self.job.check(self.program.finish(5))
        self.assertEqual([line for line in self.job.log() if "zeige Seite" in line], [">     zeige Seite: 1"])

    def test_printing_and_saving(self):
        self.job.write("A.OUT", "^TR1eins\f^TR2zwei^FE\f^TR1drei\f^TR1vier\f")
        self.job.run("A.OUT", "KEINEGRAFIK", PRINTER)
        self.job.write_settings("Schacht1=2", "Schacht2=4", key=rf"{PRODUCT_KEY}\Drucker\{TRAYS}")
        before = self.job.contents()
        before.pop("KRVWINPR.OK")
        (self.job.folder / "KRVWINPR.OK").unlink()
        self.open("A.OUT", "KEINEGRAFIK", TRAYS)
        self.assertIn("Buero   |   A4   |   Schacht 1 (", self.screen.name(self.status))
        self.screen.press("ctrl+p", "alt+s", "Tab", "2", "Tab", "3", "Return")
        jobs = self.cups.wait_for_jobs(TRAYS, 2)
        self.assertEqual([(job.title, job.options.get("InputSlot"), lines_of(job.path)) for job in jobs],
                         [("A.OUT", "Manual", [["zwei"]]), ("A.OUT", "Tray1", [["drei"]])])
        self.assertEqual(self.job.contents(), before)
        self.screen.tool("xdotool", "search", "--sync", "--name", "Vorschau: A.OUT", "windowfocus", "--sync")
        self.screen.press("ctrl+s")
        self.screen.height("Als PDF speichern")
        self.screen.press(*"neu", "Return")
        self.wait_for(lambda: self.job.pdfs(), ["A.pdf", "neu.pdf"])
        self.assertEqual(self.job.lines("neu.pdf"), self.job.lines("A.pdf"))
        self.assertEqual(findings(self.job.read("neu.pdf")), {})
        self.screen.tool("xdotool", "search", "--sync", "--name", "Vorschau: A.OUT", "windowfocus", "--sync")
        self.close()
        self.assertEqual(len(self.cups.jobs(TRAYS)), 2)

    def test_without_a_file_one_is_chosen(self):
        self.job.write("firma/brief.out", "^GR")
        self.job.write("firma/HPLASER.INI", "[Grafik]\nGrafik1=1,1,1\n")
        self.job.write("firma/LASER/KRVWin.M1", bmp(900, 900, RED))
        self.open()
        self.screen.height("Druckdatei")
        self.screen.press(*"firma", "slash", *"brief", "period", *"out", "Return")
        self.shows(1)
        self.screen.tool("xdotool", "search", "--sync", "--name", "Vorschau: brief.out", "windowfocus", "--sync")
        self.wait_for(lambda: RED * 20 in self.screen.picture().rgb, True)
        self.close()

    def test_what_cannot_be_shown_is_said(self):
        self.job.write("A.OUT", "eins\f^BC1,1,käse\\\fdrei\f")
        self.open("A.OUT", "KEINEGRAFIK", PRINTER)
        self.screen.press("Next")
        self.assertRegex(self.wait_for(lambda: self.screen.name(self.canvas), lambda text: text != "Seite"),
                         r"^Seite 2 kann nicht .*5970.*\^BC auf Seite 2, Zeile 1.*Der Druck endet spätestens auf dieser Seite")
        (self.job.folder / "A.OUT").unlink()
        self.screen.press("F5", "Next")
        self.wait_for(lambda: self.screen.name(self.canvas), "Seite")
        self.shows(3)
        self.close()
        for arguments, said in ((("FEHLT.OUT",), "„FEHLT.OUT“ kann nicht gelesen werden. Datei nicht gefunden"),
                                (("B.OUT", "FEHLT.PCX", PRINTER), "Grafikdatei FEHLT.PCX auf.")):
            self.job.write("B.OUT", "eins\f")
            self.open(*arguments)
            self.assertIn(said, self.screen.name(self.canvas))
            self.close()


if __name__ == "__main__":
    unittest.main()
