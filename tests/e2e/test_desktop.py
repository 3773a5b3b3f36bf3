"""Message boxes on a real display."""

import os
import shutil
import subprocess
import time
import unittest

from support import JobTest


class DesktopTest(JobTest):
    def setUp(self):
        super().setUp()
        if not (shutil.which("Xvfb") and shutil.which("xdotool")):
            self.skipTest("needs the packages xvfb and xdotool")
        reader, writer = os.pipe()
        display = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-nolisten", "tcp", "-screen", "0", "1024x768x24"],
                                   pass_fds=[writer], stderr=subprocess.DEVNULL)
        self.addCleanup(display.wait)
        self.addCleanup(display.terminate)
        os.close(writer)
        with os.fdopen(reader) as number:
            self.display = ":" + number.readline().strip()

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=dict(os.environ, DISPLAY=self.display), text=True, timeout=20,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def press(self, key):
        """Presses a key in the program's window, once it is there."""
        end = time.monotonic() + 30
        while not (windows := self.xdotool("search", "--onlyvisible", "--name", "KRVWinPr").stdout.split()):
            self.assertLess(time.monotonic(), end, "no window")
            time.sleep(0.1)
        self.xdotool("windowfocus", "--sync", windows[0])
        self.xdotool("key", key)

    def test_the_usage_is_a_box_and_nothing_on_standard_error(self):
        run = self.job.start(DISPLAY=self.display)
        self.press("Return")
        self.job.check(run.wait(30))
        self.assertEqual(run.errors, "")

    def test_a_box_answered_with_no_shows_no_log(self):
        run = self.job.start("FEHLT.OUT", "/DEBUG", "/WAIT", DISPLAY=self.display)
        self.press("Escape")
        self.job.check(run.wait(30))
        self.assertNotIn("Protokoll", run.errors)
        self.assertIn("KRVWINPR.OK", self.job.names())

    def test_a_display_that_is_not_there_means_standard_error(self):
        run = self.job.run(DISPLAY=":4711")
        self.assertIn("Parameter: KRVWinPr", run.errors)


if __name__ == "__main__":
    unittest.main()
