"""The job list of the Windows program under Wine, by keyboard alone; environment as in test_windows.py. Wine's spooler
lists no jobs, so what is seen of the queue is that there is none; the kept jobs are the user's own."""

import subprocess
import unittest

from support import lines_of
from test_windows import KEY, QUEUE
from windows_screen import WindowsScreenTest


class WindowsJobListTest(WindowsScreenTest):
    def set_tray(self, number):
        self.wine("reg", "add", KEY, "/v", "Schacht3", "/d", number, "/f")

    def fail_to_print(self, name, more=""):
        """Into a tray that the printer does not have, behind its first page."""
        self.set_tray("99")
        self.job.write(name, "eins\f^TR3zwei\f" + more)
        self.start(name, "KEINEGRAFIK", QUEUE)
        self.assertEqual(self.program.wait(60), 0)
        self.set_tray("258")

    def kept_names(self):
        return sorted(file.name for folder in self.kept() for file in folder.glob("*.OUT"))

    def press_until(self, condition, *keys):
        """The form looks for kept jobs every few seconds, and takes no key before it is in front."""
        def pressed():
            self.screen.press(*keys)
            return condition()
        self.cups.wait_until(pressed, f"what {keys} do")

    def is_seen(self, title):
        try:
            return self.screen.tool("xdotool", "search", "--onlyvisible", "--name", title) != ""
        except subprocess.CalledProcessError:
            return False

    def test_kept_jobs_come_into_the_list_by_themselves_are_printed_again_and_deleted(self):
        self.fail_to_print("A.OUT")
        self.assertEqual(self.kept_names(), ["A (1).OUT"])
        self.start("/AUFTRAEGE", QUEUE, "/DEBUG")
        form = self.program
        self.screen.height("Korvano - Druckauftr")
        self.press_until(lambda: len(self.cups.jobs(QUEUE)) > 1, "alt+i", "Home", "alt+e")
        again = self.cups.wait_for_jobs(QUEUE, 2)[1]
        pdf = self.job.folder / "job.pdf"
        subprocess.run(["ps2pdf", again.path, pdf], check=True)
        self.assertEqual(lines_of(pdf), [["eins"], ["zwei"]])
        self.cups.wait_until(lambda: not self.kept_names(), "the kept job's end")

        self.fail_to_print("B.OUT")
        self.assertEqual(self.kept_names(), ["B (1).OUT"])
        self.press_until(lambda: not self.kept_names(), "alt+i", "Home", "Delete", "Return")
        self.screen.press("Escape")
        self.assertEqual(form.wait(20), 0)
        log = self.job.log()
        self.assertLess(log.index("> Auftragslistebeginn"), log.index("> Auftragslisteende"))
        self.assertIn("Breite", self.wine("reg", "query", KEY.split(r"\Drucker")[0] + r"\Druckauftraege"))

    def test_printing_again_ends_when_the_user_wants_that(self):
        self.fail_to_print("LISTE.OUT", ("Zeile\r\n" * 60 + "\f") * 8000)
        self.start("/AUFTRAEGE", QUEUE, "/DEBUG")
        form = self.program
        self.screen.height("Korvano - Druckauftr")
        jobs = len(self.cups.jobs(QUEUE))
        self.press_until(lambda: self.is_seen("^Drucken$"), "alt+i", "Home", "alt+e")
        self.press_until(lambda: not self.is_seen("^Drucken$"), "Escape")
        self.press_until(lambda: form.poll() == 0, "Return", "Escape")
        self.assertEqual((self.kept_names(), len(self.cups.jobs(QUEUE))), (["LISTE (1).OUT"], jobs))
        self.assertIn(">     Druckauftrag vom Benutzer abgebrochen", self.job.log())


if __name__ == "__main__":
    unittest.main()
