"""The printer selection of the Windows program under Wine, by keyboard alone; environment as in test_windows.py."""

import re
import subprocess
import unittest
from pathlib import Path

from support import lines_of
from test_selection import EDITED, EDITS, texts_of
from test_windows import KEY, PROGRAM, QUEUE
from windows_screen import WindowsScreenTest


class WindowsSelectionTest(WindowsScreenTest):
    def open(self, printer):
        """Unfolded, the focus on the button for that; the heights of the window so far."""
        self.start("/DRUCKERAUSWAHL")
        heights = [self.screen.height("Druckerauswahl")]
        self.screen.tool("sleep", "1")
        self.screen.press(printer, *["Tab"] * 4, "space")
        while heights[-1] == heights[0] and len(heights) < 100:
            self.screen.tool("sleep", "0.1")
            heights.append(self.screen.height("Druckerauswahl"))
        return heights[0], heights[-1]

    def stored(self):
        return dict(re.findall(r"(\w+) +REG_SZ +(.*)\r\n", self.wine("reg", "query", KEY, check=False)))

    def test_edits_are_stored_and_the_window_has_the_heights_that_it_always_had(self):
        first, unfolded = self.open("l")
        for text in EDITS:
            self.screen.press("Tab", *text)
        # In an open list, what was only passed counts no more than what Esc leaves; the first item can be chosen as well.
        self.screen.press("alt+1", "Down", "Down", "F4", "Down", "Escape", "alt+2", "F4", "Return",
                          "alt+3", "Down", "Down", "Down", "space")
        self.assertEqual(self.stored(), EDITED | {"Schacht1": "257", "Schacht2": "15", "Schacht3": "258"})
        self.screen.press(*["shift+Tab"] * 8, "space")
        self.assertEqual([unfolded - first, self.screen.height("Druckerauswahl") - first], [(7500 - 2925) // 15, 5])
        self.screen.press("alt+3", "Down", "alt+o")
        self.assertEqual(self.program.wait(20), 0)
        self.assertEqual(self.job.read("KRVWIN.ASW"), QUEUE.encode() + b"\r\n")
        self.assertEqual(self.stored()["Schacht3"], "258")

    def test_tests_are_printed_and_esc_leaves_the_selection_file(self):
        self.open("l")
        for number, (key, pages) in enumerate((("alt+t", 1), ("alt+s", 7), ("alt+g", 1)), start=1):
            self.screen.press(key)
            self.screen.height("^KRVWinPr$")
            self.screen.press("Return")
            job = self.cups.wait_for_jobs(QUEUE, number)[-1]
            pdf = self.job.folder / "job.pdf"
            subprocess.run(["ps2pdf", job.path, pdf], check=True)
            printed = "".join(re.sub(r"\s", "", line) for lines in lines_of(pdf) for line in lines)
            self.assertEqual(len(lines_of(pdf)), pages, key)
            for text in texts_of(Path(PROGRAM).parent / "TESTDRUC.OUT")[-3:]:
                self.assertIn(text, printed)
            self.screen.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", "Druckerauswahl")
        self.screen.press("Escape")
        self.assertEqual(self.program.wait(20), 0)
        self.assertFalse((self.job.folder / "KRVWIN.ASW").exists())


if __name__ == "__main__":
    unittest.main()
