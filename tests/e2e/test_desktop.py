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
        display = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-nolisten", "tcp"], pass_fds=[writer],
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(display.wait)
        self.addCleanup(display.terminate)
        os.close(writer)
        with os.fdopen(reader) as number:
            self.display = ":" + number.readline().strip()
        # What the library leaks through which Qt looks for a desktop's services is not the program's.
        foreign = self.job.settings.parents[2] / "foreign-leaks"
        foreign.write_text("leak:libdbus-1\n")
        self.job.environment["LSAN_OPTIONS"] += f":suppressions={foreign}:print_suppressions=0"
        # Following the thread storage of libraries loaded late makes the leak check of this compiler crash now and then.
        self.job.environment["ASAN_OPTIONS"] += ":intercept_tls_get_addr=0"

    def xdotool(self, *arguments):
        return subprocess.run(["xdotool", *arguments], env=dict(os.environ, DISPLAY=self.display), text=True,
                              timeout=20, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def press(self, key):
        """Presses a key in the program's window, once it is there."""
        end = time.monotonic() + 30
        while not (windows := self.xdotool("search", "--onlyvisible", "--name", "KRVWinPr").stdout.split()):
            self.assertLess(time.monotonic(), end, "no window")
            time.sleep(0.1)
        self.xdotool("windowfocus", "--sync", windows[0])
        self.xdotool("key", key)

    def test_a_box_answered_with_no_shows_no_log_and_is_not_on_standard_error(self):
        run = self.job.start("FEHLT.OUT", "/DEBUG", "/WAIT", DISPLAY=self.display)
        self.press("Escape")
        self.job.check(run.wait(30))
        self.assertRegex(run.errors, "^KRVWinPr: Druckauftrag 'FEHLT.OUT' abgebrochen, .*\n$")
        self.assertIn("KRVWINPR.OK", self.job.names())


if __name__ == "__main__":
    unittest.main()
