"""The printer selection on a real display, by keyboard, by mouse and as screen readers see it."""

import re
import shutil
import time
import unittest

from private_bus import PrivateBus
from private_cups import PrivateCups
from private_screen import FOCUSED, PrivateScreen
from support import PROGRAM, PRODUCT_KEY, SLOW, JobTest, lines_of

PLAIN, TRAYS, ODD = "archiv", "Buero", "Fax&Mail"
FOLDED = ["Bitte gewünschten Windowsdruckertreiber auswählen und mit OK bestätigen.", "OK", "Abbruch",
          "Druckerordner...", "Erweitert >>"]
UNFOLDED = [*FOLDED[:4], "Erweitert <<", "Oberer Rand", "Zeilenabstand", "Linker Rand", "ScaleFaktor",
            "Standardwerte eintragen", "Schacht 1:", "Schacht 2:", "Schacht 3:", "Testseite drucken",
            "Schachtzuordnungen testen", "Grafiktest drucken"]
ROLES = ["list", *["push button"] * 4, *["text"] * 4, "push button", *["combo box"] * 3, *["push button"] * 3]
# Each replaces what is selected with the focus.
EDITS = ("510", ["2", "space", "3", "space"], "zwei", ["6", "comma", "comma", "period", "x", "5"])
EDITED = {"ObererRand": "510", "Zeilenabstand": "2 3", "LinkerRand": "zwei", "ScaleFaktor": "6,5"}
MACRO = r"\^([LT]R.|\d\d|[UFKBHT][EA])"


def texts_of(print_file):
    """What its lines print, without blanks."""
    lines = print_file.read_bytes().decode("cp850").replace("\f", "").split("\r\n")
    return [text for line in lines if (text := re.sub(r"\s", "", re.sub(MACRO, "", line, flags=re.S)))]


@unittest.skipUnless(all(map(shutil.which, ("Xvfb", "xdotool", "gdbus", "/usr/libexec/at-spi-bus-launcher"))),
                     "needs xvfb, xdotool, gdbus and at-spi2-core")
class SelectionTest(JobTest):
    @classmethod
    def setUpClass(cls):
        cls.cups = cls.enterClassContext(PrivateCups())
        cls.cups.add_pdf_queue(PLAIN)
        cls.cups.add_tray_queue(TRAYS)
        cls.cups.add_pdf_queue(ODD)
        cls.screen = cls.enterClassContext(PrivateScreen(cls.enterClassContext(PrivateBus())))

    def open(self):
        self.job.show_windows()
        self.program = self.job.start("/DRUCKERAUSWAHL", CUPS_SERVER=str(self.cups.socket), **self.screen.environment)
        self.addCleanup(lambda: self.program.poll() is None and self.program.end())
        self.assertEqual(self.screen.height("Druckerauswahl"), 195)
        time.sleep(1 if SLOW else 0.2)

    def closed(self, selection) -> dict[str, str]:
        """What is stored for the printer with the trays, once the program has ended."""
        self.job.check(self.program.finish(20))
        self.assertEqual(self.job.read("KRVWIN.ASW"), selection)
        lines = self.job.settings.read_text().partition(rf"[{PRODUCT_KEY}\Drucker\{TRAYS}]")[2].split("\n\n")[0]
        return dict(re.findall(r"^(\w+)=(.*)$", lines, re.M))

    def assert_focus_goes_round(self, names):
        controls = self.screen.controls()
        self.assertEqual(list(controls), names)
        for name in [*names[5:], *names[:5]] if len(names) > 5 else [*names[1:], names[0]]:
            self.screen.press("Tab")
            self.assertTrue(self.screen.has(controls[name], FOCUSED), name)
        return controls

    def test_by_keyboard_alone(self):
        self.open()
        self.assert_focus_goes_round(FOLDED)
        self.screen.press("b", *["Tab"] * 4, "space")
        self.assertEqual(self.screen.height("Druckerauswahl"), 500)
        controls = self.assert_focus_goes_round(UNFOLDED)
        self.assertEqual([self.screen.role(place) for place in controls.values()], ROLES)
        for text in EDITS:
            self.screen.press("Tab", *text)
        self.screen.press("alt+1", "Down", "alt+3", "m", "Return")
        self.assertEqual(self.closed(b"Buero\r\n"), EDITED | {"Schacht1": "2", "Schacht3": "4"})

    def test_by_mouse_and_cancelled(self):
        self.job.write("KRVWIN.ASW", ODD)
        self.open()
        self.screen.click(self.screen.controls()["Erweitert >>"])
        controls = self.screen.controls()
        self.screen.click(controls[FOLDED[0]], 0.16)
        for name, text in (("Oberer Rand", "7"), ("Linker Rand", "8")):
            self.screen.click(controls[name])
            self.screen.press(text)
        self.screen.click(controls["Schacht 2:"])
        self.screen.press("Up", "Down", "Return")
        self.screen.click(controls["Erweitert <<"])
        self.assertEqual(self.screen.height("Druckerauswahl"), 200)
        self.screen.press("alt+3", "m", "alt+t", "Escape")
        self.assertEqual(self.closed(ODD.encode()), {"ObererRand": "7", "LinkerRand": "8", "Schacht2": "2"})

    def test_a_page_is_printed_and_its_button_keeps_the_focus(self):
        self.job.write("KRVWIN.ASW", PLAIN)
        self.open()
        self.screen.press(*["Tab"] * 4, "space", *["shift+Tab"] * 7, "space")
        self.screen.height("^KRVWinPr$")
        self.screen.press("Return")
        page = lines_of(self.cups.wait_for_jobs(PLAIN, 1)[0].path)
        self.assertEqual([re.sub(r"\s", "", line) for lines in page for line in lines],
                         texts_of(PROGRAM.parent / "TESTDRUC.OUT"))
        # There is no window manager to give the focus back to the window.
        self.screen.tool("xdotool", "search", "--name", "Druckerauswahl", "windowfocus", "--sync")
        self.assertTrue(self.screen.has(self.screen.controls()["Testseite drucken"], FOCUSED))
        self.screen.press("Escape")
        self.assertEqual(self.closed(PLAIN.encode()), {})

    def test_trays_and_graphics_can_be_tested(self):
        self.job.write("KRVWIN.ASW", ODD)
        self.open()
        self.screen.press(*["Tab"] * 4, "space")
        for number, (key, pages, last) in enumerate((("alt+s", 7, "definiert!"), ("alt+g", 1, ":")), start=1):
            self.screen.press(key)
            self.screen.height("^KRVWinPr$")
            self.screen.press("Return")
            printed = lines_of(self.cups.wait_for_jobs(ODD, number)[-1].path)
            self.assertEqual((len(printed), last in printed[-1][-1]), (pages, True), printed[-1])
            self.screen.tool("xdotool", "search", "--sync", "--name", "Druckerauswahl", "windowfocus", "--sync")
        self.assertIn(">   DoReport", "".join(self.job.log()))
        self.screen.press("Escape")
        self.closed(ODD.encode())

    def test_without_a_display_it_says_what_to_do(self):
        run = self.job.run("/DRUCKERAUSWAHL")
        self.assertRegex(run.errors, "Zugriff verweigert: .*„Korvano - Druckerauswahl“ braucht einen Bildschirm")


if __name__ == "__main__":
    unittest.main()
