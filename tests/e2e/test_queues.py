"""Host jobs printed through the queues of a private print server."""

import tempfile
import time
import unittest
from pathlib import Path

from private_cups import PrivateCups
from support import OK_TEXT, PRODUCT_KEY, JobTest, lines_of, words_of


class QueueTest(JobTest):
    def setUp(self):
        super().setUp()
        self.cups = PrivateCups()
        self.cups.__enter__()
        self.addCleanup(self.cups.__exit__)
        self.job.environment["CUPS_SERVER"] = str(self.cups.socket)

    def queue_settings(self, queue, *lines):
        self.job.write_settings(f"[{PRODUCT_KEY}\\Drucker\\{queue}]\n" + "\n".join(lines) + "\n")

    def pdf_lines(self, data):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "job.pdf"
            path.write_bytes(data)
            return lines_of(path), words_of(path)


class Printing(QueueTest):
    def test_the_default_queue_gets_the_invoice(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.set_default("archiv")
        self.job.sample("RECHNUNG.OUT")
        self.job.run("RECHNUNG.OUT")
        [printed] = self.cups.wait_for_jobs("archiv", 1)
        self.assertEqual(printed.title, "RECHNUNG.OUT")
        pages, _ = self.pdf_lines(printed.data)
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
        self.assertEqual([self.pdf_lines(job.data)[0] for job in jobs],
                         [[["eins"], ["zwei"]], [["drei"], ["vier"]], [["fünf"]]])
        # The first line stands 500 twips below this queue's own margins, 14 points from the left and 22 from the top.
        word = self.pdf_lines(jobs[0].data)[1][0][0]
        self.assertAlmostEqual(word.x, 14, delta=0.2)
        self.assertAlmostEqual(word.y, 22 + 25, delta=1.5)
        self.assertIn(">     Benutze Tray: 2  Paperbin:3", self.job.log())

    def test_the_queues_own_paper_is_kept_where_the_settings_say_so(self):
        self.cups.add_tray_queue("Etiketten")
        self.queue_settings("Etiketten", "IgnorePaperSize=1")
        self.job.write("A.OUT", "x")
        self.job.run("A.OUT", "", "etiketten")
        [printed] = self.cups.wait_for_jobs("Etiketten", 1)
        self.assertEqual(printed.options["PageSize"], "Letter")

    def test_a_tray_that_the_queue_does_not_have_ends_the_job_behind_the_finished_pages(self):
        self.cups.add_tray_queue("Büro")
        self.queue_settings("Büro", "Schacht3=9")
        self.job.write("A.OUT", "eins\f^TR3zwei\f")
        run = self.job.run("A.OUT", "", "Büro")
        self.assertIn("Fehler 380", run.errors)
        [printed] = self.cups.wait_for_jobs("Büro", 1)
        self.assertEqual(self.pdf_lines(printed.data)[0], [["eins"]])


class Handshake(QueueTest):
    def test_wait_writes_the_file_when_the_queue_has_emptied(self):
        self.cups.add_pdf_queue("archiv")
        self.job.write("A.OUT", "x")
        self.cups.disable("archiv")
        run = self.job.start("A.OUT", "", "archiv", "/WAIT", "/DEBUG")
        self.cups.wait_until(lambda: self.cups.waiting("archiv"), "the job to be in the queue")
        time.sleep(0.5)
        self.assertIsNone(self.job.read("KRVWINPR.OK"))
        self.cups.enable("archiv")
        self.job.check(run.wait(30))
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        log = self.job.log()
        self.assertEqual(log[-6:], [">     Ende durch Jobs.Count = 0", ">     WaitForSpoolerFinished Ende",
                                    ">   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben", "> Reportende",
                                    "> Programm regulär beendet!", ""])

    def test_wait_gives_up_on_a_queue_that_stands_still(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.disable("archiv")
        self.job.write("A.OUT", "x")
        begin = time.monotonic()
        run = self.job.run("A.OUT", "", "archiv", "/WAIT")
        self.assertGreater(time.monotonic() - begin, 9.9)
        self.assertIn("Bitte Drucker archiv überprüfen. TimeOut-Fehler", run.errors)
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.assertEqual(len(self.cups.waiting("archiv")), 1)


class Refusals(QueueTest):
    def test_a_queue_that_takes_no_jobs_is_named_with_the_remedy(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.reject("archiv")
        self.job.write("A.OUT", "x")
        run = self.job.run("A.OUT", "", "archiv", "/DEBUG")
        self.assertRegex(run.errors, "Druckauftrag 'A.OUT' abgebrochen, Fehler 482: .*archiv.*cupsaccept archiv")
        self.assertIn(">     Allgemeiner Fehler in DoReport 482 Druckerfehler", self.job.log())
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_a_server_that_hangs_or_stops_leaves_the_builtin_printer(self):
        self.cups.add_pdf_queue("archiv")
        self.cups.set_default("archiv")
        self.job.write("A.OUT", "x")
        self.cups.suspend()
        begin = time.monotonic()
        self.job.run("A.OUT", "", "archiv")
        self.assertLess(time.monotonic() - begin, 15)
        self.assertEqual(self.job.pdfs(), ["A.pdf"])
        self.cups.stop()
        self.job.run("A.OUT", "", "archiv")
        self.assertEqual(self.job.pdfs(), ["A (2).pdf", "A.pdf"])


if __name__ == "__main__":
    unittest.main()
