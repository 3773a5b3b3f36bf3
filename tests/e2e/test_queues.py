"""Host jobs printed through the queues of a private print server, and what the program learns of these queues.

Besides the environment of support.py: KRVWINPR_PRINTERS names the program of cups/printers.cpp."""

import os
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from private_cups import PrivateCups
from support import OK_TEXT, PRODUCT_KEY, JobTest, lines_of, words_of


class QueueTest(JobTest):
    may_purge = True

    def setUp(self):
        super().setUp()
        self.cups = PrivateCups(self.may_purge).__enter__()
        self.addCleanup(self.cups.__exit__)
        self.job.environment["CUPS_SERVER"] = str(self.cups.socket)

    def queue_settings(self, queue, *lines):
        self.job.write_settings(f"[{PRODUCT_KEY}\\Drucker\\{queue}]\n" + "\n".join(lines) + "\n")

    def read_pdf(self, data):
        """The lines and the words of its pages."""
        with tempfile.NamedTemporaryFile(suffix=".pdf") as file:
            file.write(data)
            file.flush()
            return lines_of(file.name), words_of(file.name)

    def ask(self, *calls, **environment):
        """The lines that the spooler's calls answer with, one after the other, in one process."""
        result = subprocess.run([os.environ["KRVWINPR_PRINTERS"], *calls], env=self.cups.environment(**environment),
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=60, check=True)
        return result.stdout.splitlines()


class Printing(QueueTest):
    def test_the_default_queue_gets_the_invoice(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.set_default("archiv")
        self.job.sample("RECHNUNG.OUT")
        self.job.run("RECHNUNG.OUT")
        [printed] = self.cups.wait_for_jobs("archiv", 1)
        self.assertEqual((printed.title, printed.content_type), ("RECHNUNG.OUT", "application/pdf"))
        self.assertTrue(printed.data.startswith(b"%PDF-") and printed.data.rstrip().endswith(b"%%EOF"))
        pages, _ = self.read_pdf(printed.data)
        self.assertEqual([page[0] for page in pages], ["Müller & Söhne KG"] * 2)
        self.assertEqual(self.job.pdfs(), [])
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_each_tray_is_a_job_of_its_own_in_page_order(self):
        self.cups.add_tray_queue("Büro")
        self.queue_settings("Büro", "Schacht1=2", "Schacht2=REG_DWORD:3", "ColorMode=1")
        self.job.write("LISTE.OUT", "^TR1eins\f^TR1zwei\f^TR2drei\fvier\f^TR1fünf\f")
        self.job.run("LISTE.OUT", "KEINEGRAFIK", "BÜRO", "/DEBUG")
        jobs = self.cups.wait_for_jobs("Büro", 3)
        self.assertEqual([job.title for job in jobs], ["LISTE.OUT"] * 3)
        self.assertEqual([job.options["InputSlot"] for job in jobs], ["Tray1", "Tray2", "Tray1"])
        self.assertEqual([job.options["ColorModel"] for job in jobs], ["Gray"] * 3)
        self.assertEqual([job.options["PageSize"] for job in jobs], ["A4"] * 3)
        self.assertEqual([self.read_pdf(job.data)[0] for job in jobs],
                         [[["eins"], ["zwei"]], [["drei"], ["vier"]], [["fünf"]]])
        # The first line stands 500 twips below this queue's own margins, 14 points from the left and 22 from the top.
        word = self.read_pdf(jobs[0].data)[1][0][0]
        self.assertAlmostEqual(word.x, 14, delta=0.2)
        self.assertAlmostEqual(word.y, 22 + 25, delta=1.5)
        self.assertIn(">     Benutze Tray: 2  Paperbin:3", self.job.log())

    def test_options_arrive_as_the_drivers_own(self):
        self.cups.add_tray_queue("Büro", print_scaling_default="fit")
        self.assertEqual(self.ask(r"print|Büro|auftrag\BRIEF.TXT|2 9 1 1 Eins|4 9 2 1 Zwei|1 1 1 2 Drei"), [])
        jobs = self.cups.wait_for_jobs("Büro", 3)
        self.assertEqual([job.title for job in jobs], [r"auftrag\BRIEF.TXT"] * 3)
        names = ("InputSlot", "PageSize", "ColorModel", "orientation-requested")
        self.assertEqual([[job.options.get(name) for name in names] for job in jobs],
                         [["Tray1", "A4", "Gray", "3"], ["Manual", "A4", "Gray", "4"], ["Auto", "Letter", None, "3"]])
        # True to scale although the queue would fit the page; a turned page lies with its top at the sheet's left edge
        # and begins at the lower margin of 16 points.
        upright, turned = (self.read_pdf(job.data)[1][0][0] for job in jobs[:2])
        self.assertAlmostEqual(upright.x, 14, delta=0.2)
        self.assertAlmostEqual(upright.y, 22, delta=2)
        self.assertAlmostEqual(turned.x, 14, delta=2)
        self.assertAlmostEqual(842 - turned.bottom, 16, delta=0.2)


class Handshake(QueueTest):
    def setUp(self):
        super().setUp()
        self.cups.add_pdf_queue("archiv")
        self.cups.disable("archiv")
        self.job.write("A.OUT", "x")

    def test_wait_writes_the_file_when_the_queue_has_emptied(self):
        run = self.job.start("A.OUT", "", "archiv", "/WAIT")
        self.cups.wait_until(lambda: self.cups.waiting("archiv"), "the job to be in the queue")
        time.sleep(0.5)
        self.assertIsNone(self.job.read("KRVWINPR.OK"))
        self.cups.enable("archiv")
        self.job.check(run.wait(30))
        self.assertEqual((self.job.read("KRVWINPR.OK"), run.errors), (OK_TEXT, ""))

    def test_wait_gives_up_on_a_queue_that_stands_still(self):
        begin = time.monotonic()
        run = self.job.run("A.OUT", "", "archiv", "/WAIT")
        self.assertGreater(time.monotonic() - begin, 9.9)
        self.assertIn("Bitte Drucker archiv überprüfen. TimeOut-Fehler", run.errors)
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.assertEqual(len(self.cups.waiting("archiv")), 1)


class Refusals(QueueTest):
    def setUp(self):
        super().setUp()
        self.cups.add_pdf_queue("archiv")
        self.job.write("A.OUT", "x")

    def test_a_queue_that_takes_no_jobs_is_named_with_the_remedy(self):
        self.cups.reject("archiv")
        run = self.job.run("A.OUT", "", "archiv", "/DEBUG")
        self.assertRegex(run.errors, "Druckauftrag 'A.OUT' abgebrochen, Fehler 482: .*archiv.*cupsaccept archiv")
        self.assertIn(">     Allgemeiner Fehler in DoReport 482 Druckerfehler", self.job.log())
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.assertEqual(self.ask("record|archiv")[-1], "4096 0 0 50")

    def test_a_server_that_hangs_or_stops_leaves_the_builtin_printer(self):
        self.cups.set_default("archiv")
        self.cups.suspend()
        begin = time.monotonic()
        self.job.run("A.OUT", "", "archiv")
        self.assertRegex(self.ask("record|archiv")[0], "^error 110 Drucker „archiv“: .*antwortet nicht")
        self.assertLess(time.monotonic() - begin, 15)
        self.assertEqual(self.job.pdfs(), ["A.pdf"])
        self.cups.stop()
        self.job.run("A.OUT", "", "archiv")
        self.assertRegex(self.ask("record|archiv")[0], "^error 111 Drucker „archiv“: .*nicht erreichbar")
        self.assertEqual(self.job.pdfs(), ["A (2).pdf", "A.pdf"])


class Printers(QueueTest):
    def setUp(self):
        super().setUp()
        self.cups.add_tray_queue("Büro", comment="Hinten", location="Zimmer 3")
        self.cups.add_pdf_queue("archiv")

    def test_the_default_is_the_users_then_the_servers_then_the_builtin_printer(self):
        self.assertEqual(self.ask("names"), ["archiv", "Büro", "Korvano PDF"])
        for environment, printer in (({}, "Korvano PDF"), ({"LPDEST": "archiv"}, "archiv"),
                                     ({"PRINTER": "Büro"}, "Büro"), ({"LPDEST": "Fehlt"}, "Korvano PDF")):
            self.assertEqual(self.ask("default", **environment), [printer], environment)
        self.cups.set_default("archiv")
        self.assertEqual(self.ask("default", "record|Korvano PDF")[::5], ["archiv", "64"])
        self.assertEqual(self.ask("default", "record|Korvano PDF", LPDEST="Korvano PDF")[::5], ["Korvano PDF", "68"])
        self.assertEqual(self.ask("set-default|Büro", "default"), ["Büro"])
        self.assertEqual([self.ask(f"record|{queue}")[4] for queue in ("Büro", "archiv")], ["68", "64"])
        *refused, default = self.ask("set-default|Korvano PDF", "set-default|Fehlt", "default")
        self.assertRegex("\n".join(refused), "^error .*\nerror 1030 ")
        self.assertEqual(default, "Büro")

    def test_record_and_bins_say_what_the_driver_says(self):
        self.assertEqual(self.ask("record|Büro"), ["Test Laser mit Schächten", "Hinten", "Zimmer 3", "record:", "64",
                                                   "0 0 24 50"])
        self.assertEqual(self.ask("bins|Büro", LC_ALL="de_DE.UTF-8"),
                         ["1 Automatisch", "2 Fach 1", "3 Fach 2", "4 Manuelle Zufuhr"])
        self.assertEqual(self.ask("bins|Büro", LC_ALL="en_GB.UTF-8")[1], "2 Tray 1")
        self.assertEqual(self.ask("bins|archiv", "bins|Korvano PDF"), [])

    def test_jobs_wait_in_a_disabled_queue_until_purged(self):
        self.cups.disable("Büro")
        self.assertEqual(self.ask("print|Büro|Eins|1 9 1 1 A", "print|Büro|Zwei|2 9 1 1 A|3 9 1 1 B"), [])
        self.assertEqual(self.ask("jobs|Büro", "record|Büro")[::6], ["3", "1 3 24 50"])
        self.assertEqual(self.ask("admin|Büro", "purge|Büro", "jobs|Büro"), ["1", "0"])
        self.assertEqual(self.cups.waiting("Büro"), [])
        self.cups.enable("Büro")
        self.assertEqual(self.ask("record|Büro")[-1], "0 0 24 50")

    def test_a_queue_that_is_not_there_and_a_bin_that_is_not_are_errors(self):
        for call in ("record", "jobs", "bins", "purge", "admin", "print"):
            self.assertRegex(self.ask(f"{call}|Fehlt|x|1 1 1 1 x")[0], "^error 1030 Drucker „Fehlt“: .*lpstat -e", call)
        self.assertEqual(self.ask("print|Büro|Eins|5 9 1 1 A"), ["error 380 Ungültiger Eigenschaftswert"])


class Rights(QueueTest):
    may_purge = False

    def test_purging_other_peoples_jobs_needs_the_right_to(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.disable("archiv")
        may, refused, jobs = self.ask("print|archiv|Eins|0 9 1 1 A", "admin|archiv", "purge|archiv", "jobs|archiv")
        self.assertEqual((may, jobs), ("0", "1"))
        self.assertRegex(refused, "^error 10[0-9]+ Drucker „archiv“: .*Verwalter")


if __name__ == "__main__":
    unittest.main()
