"""Message boxes on a real display."""

import shutil
import socket
import time
import unittest

from private_bus import PrivateBus
from support import JobTest

# Presses a key in the program's window again and again, until the program ends.
PRESSING = """(while kill -0 $$; do
    xdotool search --onlyvisible --name KRVWinPr windowfocus key Escape
    sleep 0.1
done) >/dev/null 2>&1 & exec "$@" """


class DesktopTest(JobTest):
    @unittest.skipUnless(all(map(shutil.which, ("xvfb-run", "xauth", "xdotool"))), "needs xvfb, xauth and xdotool")
    def test_a_box_answered_with_no_shows_no_log_and_is_not_on_standard_error(self):
        self.job.show_windows()
        # As on a desktop, the display does not begin anew each time that its last program has gone.
        run = self.job.start("FEHLT.OUT", "/DEBUG", "/WAIT",
                             prefix=["xvfb-run", "-a", "-s", "-noreset", "sh", "-c", PRESSING, "sh"])
        self.job.check(run.finish(60))
        self.assertRegex(run.errors, "^KRVWinPr: Druckauftrag 'FEHLT.OUT' abgebrochen, .*\n$")
        self.assertIn("KRVWINPR.OK", self.job.names())

    def test_a_display_that_does_not_answer_delays_no_completion_file(self):
        self.job.write("A.OUT", "Seite")
        with socket.socket(socket.AF_UNIX) as display:
            display.bind("\0/tmp/.X11-unix/X4711")
            display.listen()
            start = time.monotonic()
            run = self.job.start("A.OUT", "/DEBUG", DISPLAY=":4711")
            self.assertTrue(self.job.wait_for_ok(start + 10))
            self.assertLess(time.monotonic() - start, 1.5)
            self.job.check(run.finish(60))
        self.assertIn("> LOGPixelsX: 96", self.job.log())

    def test_a_job_that_fails_tells_the_desktop(self):
        for markup in ((), ("body", "body-markup")):
            with PrivateBus(*markup) as bus:
                for place in {"DBUS_SESSION_BUS_ADDRESS": bus.address}, {"XDG_RUNTIME_DIR": bus.folder.name}:
                    self.assertRegex(self.job.run("<B>&.OUT", **place).errors, "'<B>&.OUT' abgebrochen")
                    self.assertIn("'&lt;B&gt;&amp;.OUT'" if markup else "'<B>&.OUT'", bus.message())
                self.job.write("A.OUT", "Seite")
                self.assertEqual(self.job.run("A.OUT", DBUS_SESSION_BUS_ADDRESS=bus.address).errors, "")
                self.job.run("FEHLT.OUT", DBUS_SESSION_BUS_ADDRESS=bus.address)
                self.assertIn("'FEHLT.OUT'", bus.message(), "the job in between has nothing to tell")

    def test_a_message_bus_that_does_not_answer_holds_nobody_up(self):
        with socket.socket(socket.AF_UNIX) as bus:
            bus.bind("\0krvwinpr-" + str(self.job.folder))
            bus.listen()
            start = time.monotonic()
            run = self.job.run("FEHLT.OUT", "/WAIT",
                               DBUS_SESSION_BUS_ADDRESS=f"unix:abstract=krvwinpr-{self.job.folder}")
            self.assertLess(time.monotonic() - start, 3)
            self.assertIn("abgebrochen", run.errors)


if __name__ == "__main__":
    unittest.main()
