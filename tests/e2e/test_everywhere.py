"""Jobs for a printer that the system discovers by itself, and for its queue; exit code 77 where it cannot be run.

Besides the environment of support.py: KRVWINPR_PRINTERS names the program of cups/printers.cpp."""

import os
import sys
import time
import unittest
from unittest import mock

from everywhere_printer import EverywherePrinter
from private_cups import PrivateCups
from support import OK_TEXT, JobTest, lines_of, output_of


class Everywhere(JobTest):
    def setUp(self):
        super().setUp()
        self.printer = self.enterContext(EverywherePrinter("Flur links"))
        self.enterContext(mock.patch.dict(os.environ, self.printer.environment))
        self.cups = self.enterContext(PrivateCups())
        self.job.environment |= {"CUPS_SERVER": str(self.cups.socket), **self.printer.environment}
        self.cups.add_pdf_queue("archiv")
        self.cups.run("lpadmin", "-d", "archiv")
        self.job.write("A.OUT", "eins\fzwei")

    def ask(self, *calls):
        return output_of("env", *(f"{name}={value}" for name, value in self.cups.environment().items()),
                         os.environ["KRVWINPR_PRINTERS"], *calls).splitlines()

    def printed(self, queue, count):
        self.cups.wait_until(lambda: len(self.printer.jobs()) >= count and not self.cups.waiting(queue), "the printer")
        self.assertEqual(lines_of(self.printer.jobs()[-1]), [["eins"], ["zwei"]])

    def test_the_queue_of_an_everywhere_printer_is_a_printer_like_any(self):
        self.cups.run("lpadmin", "-p", "flur", "-E", "-m", "everywhere", "-v",
                      f"ipp://localhost:{self.printer.port}/ipp/print")
        # The server fetches what it says of a new queue when lpadmin has ended.
        self.cups.wait_until(lambda: self.ask("bins|flur"), "the queue's bins")
        self.assertEqual(self.ask("bins|flur"), ["1 Auto", "2 Main", "3 Manual", "4 ByPassTray"])
        self.job.run("A.OUT", "", "FLUR")
        self.printed("flur", 1)

    def test_a_discovered_printer_can_be_named_before_it_has_a_queue_and_after(self):
        for count, name in ((1, "flur links"), (2, "Flur links")):
            run = self.job.run("A.OUT", "", name, "/DEBUG")
            self.assertEqual((run.errors, self.job.read("KRVWINPR.OK")), ("", OK_TEXT))
            self.printed("Flur_links", count)
        self.assertEqual([line for line in self.job.log() if "verwendeter" in line],
                         [">   verwendeter Druckertreiber: Flur_links"] * 2)
        self.assertEqual(self.cups.jobs("archiv"), [])

    def test_a_name_that_nobody_has_is_looked_for_two_seconds_behind_the_completion_file(self):
        begin = time.monotonic()
        run = self.job.start("A.OUT", "", "gibt es nicht")
        while self.job.read("KRVWINPR.OK") is None:
            self.assertLess(time.monotonic() - begin, 0.5)
            time.sleep(0.01)
        self.job.check(run.finish(30))
        self.assertLess(time.monotonic() - begin, 3)
        self.cups.wait_for_jobs("archiv", 1)


if __name__ == "__main__":
    program = unittest.main(exit=False)
    result = program.result
    sys.exit(1 if not result.wasSuccessful() else 77 if len(result.skipped) == result.testsRun else 0)
