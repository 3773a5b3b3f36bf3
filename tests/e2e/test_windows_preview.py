"""The preview of the Windows program under Wine, beside what the same program prints; environment as in
test_windows.py."""

import time
import unittest

from preview_picture import differences, page_of, sheet_found
from support import PRODUCT_KEY, lines_of, output_of
from test_preview import MACROS
from test_windows import QUEUE
from windows_screen import WindowsScreenTest

ZOOM = 150


class WindowsPreviewTest(WindowsScreenTest):
    SIZE = "1400x1800"

    def printed(self, jobs):
        """A PDF of the last of so many jobs."""
        postscript = self.cups.wait_for_jobs(QUEUE, jobs)[-1].path
        pdf = self.job.folder / "job.pdf"
        output_of("gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", f"-sOutputFile={pdf}", postscript)
        return pdf

    def open(self, name):
        for value in (f"Zoom={ZOOM} %", "Links=0", "Oben=0", "Breite=1400", "Hoehe=1800"):
            key, _, data = value.partition("=")
            self.wine("reg", "add", PRODUCT_KEY + r"\Vorschau", "/v", key, "/d", data, "/f")
        self.start("/VORSCHAU", name, "KEINEGRAFIK", QUEUE)
        self.screen.height("Korvano - Vorschau: " + name)
        self.screen.tool("xdotool", "mousemove", "20", "900", "sleep", "2")

    def differences(self, pdf, page):
        """Letters lie on whole pixels here, and their lines, too."""
        expected = page_of(pdf, page, 96 * ZOOM / 100)
        end = time.monotonic() + 10
        while found := differences(sheet_found(self.screen.picture(), expected), expected, reach=2):
            if time.monotonic() > end:
                break
        return found

    def test_pages_look_as_they_are_printed_and_a_range_is(self):
        self.job.sample("RECHNUNG.OUT")
        self.job.write("MAKROS.OUT", MACROS)
        for number, (name, pages) in enumerate((("RECHNUNG.OUT", 2), ("MAKROS.OUT", 3)), start=1):
            self.start(name, "KEINEGRAFIK", QUEUE)
            self.assertEqual(self.program.wait(60), 0)
            pdf = self.printed(number)
            lines = lines_of(pdf)
            (self.job.folder / "KRVWINPR.OK").unlink()
            before = self.job.contents()
            self.open(name)
            for page in range(1, pages + 1):
                self.assertEqual(self.differences(pdf, page), [], (name, page))
                self.screen.press("Next")
            if name == "MAKROS.OUT":
                self.screen.press("ctrl+p", "alt+s", "Tab", "2", "Tab", "3", "Return")
                self.assertEqual(lines_of(self.printed(number + 1)), lines[1:])
                self.screen.tool("xdotool", "search", "--sync", "--name", "Vorschau: ", "windowfocus", "--sync")
            self.screen.press("Escape")
            self.assertEqual(self.program.wait(20), 0)
            self.assertEqual(self.job.contents().keys() - {"job.pdf"}, before.keys() - {"job.pdf"})

    def test_without_a_file_one_is_chosen(self):
        self.job.write("firma/a.out", "eins")
        self.start("/VORSCHAU")
        self.screen.height("Druckdatei")
        self.screen.tool("xdotool", "search", "--sync", "--name", "Druckdatei", "windowfocus", "--sync", "sleep", "2")
        self.screen.press(*"firma", "backslash", "a", "period", *"out", "Return")
        self.screen.tool("xdotool", "search", "--sync", "--name", "Vorschau: a.out", "windowfocus", "--sync", "sleep", "1")
        self.screen.press("Escape")
        self.assertEqual(self.program.wait(20), 0)


if __name__ == "__main__":
    unittest.main()
