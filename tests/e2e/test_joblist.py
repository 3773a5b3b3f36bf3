"""The job list on a real display beside a private print server: by keyboard alone, read as screen readers read it."""

import getpass
import re
import shutil
import subprocess
import time
import unittest

from private_bus import PrivateBus
from private_cups import PrivateCups
from private_screen import PrivateScreen
from support import PRODUCT_KEY, SLOW, JobTest, lines_of

ME = getpass.getuser()
TITLE = "Korvano - Druckauftr"
JOB_COLUMNS, KEPT_COLUMNS = 11, 5
DOCUMENT, USER, STATUS, PRIORITY = 1, 2, 3, 9
NAMES = ["Drucker:", "Drucker fortsetzen", "Anhalten", "Fortsetzen", "Auftrag abbrechen", "Neu starten", "Nach vorn",
         "Priorität:", "Aktualisieren", "Schließen", "Aufträge", "Nicht gedruckt", "Noch einmal drucken", "Löschen",
         "Im Ordner zeigen"]


@unittest.skipUnless(all(map(shutil.which, ("Xvfb", "xdotool", "gdbus", "/usr/libexec/at-spi-bus-launcher"))),
                     "needs xvfb, xdotool, gdbus and at-spi2-core")
class JobListTest(JobTest):
    def setUp(self):
        super().setUp()
        self.cups = self.enterContext(PrivateCups())
        self.cups.add_pdf_queue("archiv")
        self.cups.run("cupsdisable", "archiv")
        self.screen = self.enterContext(PrivateScreen(self.enterContext(PrivateBus())))

    def send(self, user, title):
        self.job.write("a.pdf", b"%PDF-1.4\n%%EOF")
        subprocess.run(["lp", "-d", "archiv", "-t", title, self.job.folder / "a.pdf"], check=True,
                       env=self.cups.environment(CUPS_USER=user), stdout=subprocess.DEVNULL)

    def open(self, printer):
        self.job.show_windows()
        self.program = self.job.start("/AUFTRAEGE", printer, "/DEBUG", CUPS_SERVER=str(self.cups.socket),
                                      **self.screen.environment)
        self.addCleanup(lambda: self.program.poll() is None and self.program.end())
        self.screen.height(TITLE)
        window = self.wait_for(lambda: self.screen.children(self.screen.children(
            ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))[-1]), bool)[0]
        self.controls = self.screen.children(window)
        self.jobs, self.kept = [place for place in self.controls if self.screen.role(place) == "table"]

    def wait_for(self, ask, wanted):
        """What is true at last; a value that is wanted, or what says so."""
        end = time.monotonic() + (60 if SLOW else 20)
        while True:
            value = ask()
            if wanted(value) if callable(wanted) else value == wanted:
                return value
            self.assertLess(time.monotonic(), end, value)
            time.sleep(0.1)

    def rows(self, table, columns, *wanted) -> list[tuple[str, ...]]:
        """What stands in some columns; Qt tells the titles, of the rows as well, among the cells."""
        cells = self.screen.children(table)
        try:
            return [tuple(self.screen.name(cells[row + 1 + column]) for column in wanted)
                    for row in range(columns + 1, len(cells), columns + 1)]
        except subprocess.CalledProcessError:
            return [("other rows meanwhile",)]

    def assert_jobs(self, *expected, columns=(DOCUMENT, STATUS)):
        self.wait_for(lambda: self.rows(self.jobs, JOB_COLUMNS, *columns), list(expected))

    def answer(self, key):
        self.screen.height("^KRVWinPr$")
        self.screen.press(key)
        # There is no window manager to give the focus back to the window.
        self.screen.tool("xdotool", "search", "--sync", "--name", TITLE, "windowfocus", "--sync")

    def test_the_queue_is_worked_on(self):
        for user, title in ((ME, "eins"), ("bruno", "zwei & mehr"), (ME, "drei")):
            self.send(user, title)
        self.open("ARCHIV")
        self.assert_jobs((ME, "eins", "50"), ("bruno", "zwei & mehr", "50"), (ME, "drei", "50"),
                         columns=(USER, DOCUMENT, PRIORITY))
        names = [re.sub(r"[&]| \(\d+\)$", "", self.screen.name(place)) for place in self.controls
                 if self.screen.role(place) != "label"]
        self.assertEqual(names, NAMES)
        press = self.screen.press
        press("Down", "Down", "alt+h")
        self.assert_jobs(("eins", "Wartet"), ("zwei & mehr", "Angehalten"), ("drei", "Wartet"))
        press("alt+v")
        self.assert_jobs(("zwei & mehr", "Angehalten"), ("eins", "Wartet"), ("drei", "Wartet"))
        # It is still the one that is selected.
        press("alt+f", "alt+a", "End", "alt+p", "7", "5", "Return")
        self.assert_jobs(("drei", "Wartet", "75"), ("zwei & mehr", "Wartet", "51"), ("eins", "Wartet", "50"),
                         columns=(DOCUMENT, STATUS, PRIORITY))
        self.send("carla", "vier")
        self.assert_jobs(("drei",), ("zwei & mehr",), ("eins",), ("vier",), columns=(DOCUMENT,))
        press("alt+a", "Home", "Delete")
        self.assert_jobs(("zwei & mehr",), ("eins",), ("vier",), columns=(DOCUMENT,))
        press("alt+a", "End", "Delete")
        self.answer("Escape")
        press("alt+a", "Home", "shift+Down", "alt+b")
        self.answer("Return")
        self.assert_jobs(("vier",), columns=(DOCUMENT,))

    def test_a_stopped_printer_goes_on_and_kept_jobs_are_printed_or_deleted(self):
        self.job.write_settings("Wartezeit=0", key=PRODUCT_KEY)
        for name in ("A.OUT", "B.OUT", "C.OUT"):
            self.job.write(name, name + "\f")
            self.job.run(name, "KEINEGRAFIK", "archiv")  # without the print server
            time.sleep(0.01)
        self.send(ME, "eins")
        self.open("archiv")
        kept = lambda *names: self.wait_for(lambda: self.rows(self.kept, KEPT_COLUMNS, 0, 2),
                                            [(name, "archiv") for name in names])
        kept("C.OUT", "B.OUT", "A.OUT")
        self.screen.press("alt+r")
        self.cups.wait_for_jobs("archiv", 1)
        self.assert_jobs()
        self.screen.press("alt+i", "Down", "Down", "alt+e")
        kept("C.OUT", "A.OUT")
        self.assertEqual(lines_of(self.cups.wait_for_jobs("archiv", 2)[1].path), [["B.OUT"]])
        self.screen.press("alt+i", "ctrl+a", "alt+l")
        self.answer("Return")
        kept()
        folder = self.job.settings.parents[2] / ".local/share/KRVWinPr/Nicht gedruckt"
        self.assertEqual(list(folder.iterdir()), [])
        self.screen.press("Escape")
        self.job.check(self.program.finish(20))
        lines = [line for line in self.job.log() if "Auftragsliste" in line]
        self.assertEqual([line.strip(" >") for line in lines], ["Auftragslistebeginn", "Auftragslisteende"])

    def test_printing_again_is_given_up_where_the_printer_does_not_answer(self):
        self.job.write_settings("Wartezeit=0", key=PRODUCT_KEY)
        self.job.write("A.OUT", "eins\f")
        self.job.run("A.OUT", "KEINEGRAFIK", "archiv")  # without the print server
        self.job.write_settings("Wartezeit=60", key=PRODUCT_KEY)
        self.open("archiv")
        self.cups.stop()
        self.screen.press("alt+i", "Down", "alt+e")
        self.screen.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", "^Drucken$", "windowfocus", "--sync")
        self.screen.press("Escape")
        self.answer("Return")
        self.wait_for(lambda: self.rows(self.kept, KEPT_COLUMNS, 0), [("A.OUT",)])
        self.screen.press("Escape")
        self.job.check(self.program.finish(20))
        self.assertIn(">     Druckauftrag vom Benutzer abgebrochen", self.job.log())


if __name__ == "__main__":
    unittest.main()
