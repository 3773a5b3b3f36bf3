"""Host jobs printed through the queues of a private print server, and what the program learns of these queues.

Besides the environment of support.py: KRVWINPR_PRINTERS names the program of cups/printers.cpp."""

import os
import re
import shutil
import signal
import subprocess
import time
import unittest

from private_cups import PPD, LossyProxy, PrivateCups
from support import OK_TEXT, PRODUCT_KEY, PROGRAM, JobTest, lines_of, words_of


class QueueTest(JobTest):
    may_purge = True

    def setUp(self):
        super().setUp()
        self.cups = self.enterContext(PrivateCups(self.may_purge))
        self.job.environment["CUPS_SERVER"] = str(self.cups.socket)
        self.cups.add_pdf_queue("archiv")
        self.job.write("A.OUT", "x")

    def ask(self, *calls, **environment):
        """The lines that the spooler's calls answer with, one after the other, in one process."""
        return subprocess.run([os.environ["KRVWINPR_PRINTERS"], *calls], env=self.cups.environment(**environment),
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=60,
                              check=True).stdout.splitlines()


class Printing(QueueTest):
    def test_the_default_queue_gets_the_invoice(self):
        self.cups.run("lpadmin", "-d", "archiv")
        self.job.sample("RECHNUNG.OUT")
        self.job.run("RECHNUNG.OUT")
        [printed] = self.cups.wait_for_jobs("archiv", 1)
        self.assertEqual((printed.title, printed.content_type), ("RECHNUNG.OUT", "application/pdf"))
        self.assertRegex(printed.path.read_bytes(), rb"(?s)\A%PDF-.*%%EOF\s*\Z")
        self.assertEqual([page[0] for page in lines_of(printed.path)], ["Müller & Söhne KG"] * 2)
        self.assertEqual((self.job.pdfs(), self.job.read("KRVWINPR.OK")), ([], OK_TEXT))

    def test_each_tray_is_a_job_of_its_own_in_page_order_with_the_drivers_options(self):
        # True to scale although the queue would fit the page.
        self.cups.add_tray_queue("Büro", "-o", "print-scaling-default=fit")
        self.job.write_settings("Schacht1=2", "Schacht2=REG_DWORD:4", "ColorMode=1", key=rf"{PRODUCT_KEY}\Drucker\Büro")
        self.job.write("LISTE.OUT", "^TR1eins\f^TR1zwei\f^TR2drei\fvier\f^TR1fünf\f")
        self.job.run("LISTE.OUT", "KEINEGRAFIK", "BÜRO")
        self.assertEqual(self.ask("turned|Büro"), [])
        jobs = self.cups.wait_for_jobs("Büro", 4)
        names = ("InputSlot", "PageSize", "ColorModel", "orientation-requested")
        self.assertEqual([(job.title, *map(job.options.get, names)) for job in jobs],
                         [("LISTE.OUT", tray, "A4", "Gray", "3") for tray in ("Tray1", "Manual", "Tray1")] +
                         [(r"auftrag\quer", None, "Letter", None, "4")])
        self.assertEqual([lines_of(job.path) for job in jobs],
                         [[["eins"], ["zwei"]], [["drei"], ["vier"]], [["fünf"]], [["turned"]]])
        # The first line stands 500 twips below this queue's own margins, 14 points from the left and 22 from the top; a
        # turned page lies with its top at the sheet's left edge and begins at the lower margin of 20 points.
        upright, turned = (words_of(jobs[number].path)[0][0] for number in (0, 3))
        for found, expected, tolerance in ((upright.x, 14, 0.2), (upright.y, 22 + 25, 1.5), (turned.x, 18, 2),
                                           (792 - turned.bottom, 20, 0.2)):
            self.assertAlmostEqual(found, expected, delta=tolerance)

    def test_the_users_saved_options_go_along_unless_the_job_says_otherwise(self):
        self.cups.add_tray_queue("Büro")
        self.job.environment |= {name: self.cups.environment()[name] for name in ("HOME", "CUPS_SERVERROOT")}
        self.cups.run("lpoptions", "-p", "Büro", *(f"-o{option}" for option in (
            "sides=two-sided-long-edge", "InputSlot=Manual", "media=Letter", "landscape", "fit-to-page")))
        self.cups.run("lpoptions", "-p", "Büro/grau", "-oInputSlot=Tray2", "-oColorModel=Gray", "-osides=one-sided")
        self.cups.run("lpoptions", "-d", "Büro/grau")
        self.job.write_settings("Schacht1=2", key=rf"{PRODUCT_KEY}\Drucker\Büro")
        self.job.write("FACH.OUT", "^TR1x")
        for name, queue in (("A.OUT", "Büro"), ("FACH.OUT", "büro"), ("A.OUT", ""), ("FACH.OUT", "")):
            self.job.run(name, "", queue)
        names = ("sides", "InputSlot", "PageSize", "ColorModel", "landscape", "fit-to-page")
        duplex = "two-sided-long-edge"
        self.assertEqual([tuple(map(job.options.get, names)) for job in self.cups.wait_for_jobs("Büro", 4)],
                         [(duplex, "Manual", "A4", None, None, None), (duplex, "Tray1", "A4", None, None, None),
                          ("one-sided", "Tray2", "A4", "Gray", None, None),
                          ("one-sided", "Tray1", "A4", "Gray", None, None)])

    def test_a_title_that_is_no_text_is_mended(self):
        name = os.fsdecode(b"B\xfcro.OUT")
        self.job.write(name, "x")
        self.assertEqual(self.job.run(name, "", "archiv").errors, "")
        self.assertEqual([printed.title for printed in self.cups.wait_for_jobs("archiv", 1)], ["B\ufffdro.OUT"])

    def test_wait_writes_the_file_when_the_queue_has_emptied(self):
        self.cups.run("cupsdisable", "archiv")
        run = self.job.start("A.OUT", "", "archiv", "/WAIT")
        self.cups.wait_until(lambda: self.cups.waiting("archiv"), "the job to be in the queue")
        time.sleep(0.5)
        self.assertIsNone(self.job.read("KRVWINPR.OK"))
        self.cups.run("cupsenable", "archiv")
        self.job.check(run.finish(30))
        self.assertEqual((self.job.read("KRVWINPR.OK"), run.errors), (OK_TEXT, ""))

    def test_wait_gives_up_on_a_queue_that_stands_still(self):
        self.cups.run("cupsdisable", "archiv")
        begin = time.monotonic()
        run = self.job.run("A.OUT", "", "archiv", "/WAIT")
        self.assertGreater(time.monotonic() - begin, 9.9)
        self.assertIn("Bitte Drucker archiv überprüfen. TimeOut-Fehler", run.errors)
        self.assertEqual((self.job.read("KRVWINPR.OK"), self.cups.waiting("archiv")), (OK_TEXT, 1))


class Keeping(QueueTest):
    """From the completion file on a job is printed, or kept where the user is told."""

    def setUp(self):
        super().setUp()
        self.kept = self.job.settings.parents[2] / ".local/share/KRVWinPr/Nicht gedruckt"
        self.wait_at_most(2)

    def wait_at_most(self, seconds):
        self.job.write_settings(f"Wartezeit={seconds}", key=PRODUCT_KEY)

    def hang(self):
        self.cups.process.send_signal(signal.SIGSTOP)  # it accepts connections and never answers

    def assert_kept(self, run, fate, reason, names):
        """The names are those of the copies in the folder, with * for the job's and its number."""
        self.assertRegex(run.errors, rf"Druckauftrag 'A.OUT' {fate}, Fehler 482: .*{reason}.* aufbewahrt als „A \(1\).OUT“"
                                     f" im Ordner „{self.kept}“")
        self.assertEqual(sorted(path.name for path in self.kept.iterdir()), [f"A (1).OUT{name}" for name in names])
        self.assertEqual([oct(path.stat().st_mode & 0o777) for path in (self.kept, *self.kept.iterdir())],
                         ["0o700"] + ["0o600"] * len(names))
        self.assertEqual((self.job.pdfs(), self.job.read("KRVWINPR.OK")), ([], OK_TEXT))
        return (self.kept / "A (1).OUT.txt").read_text("utf-8-sig")

    def test_a_server_that_does_not_answer_is_not_taken_for_none(self):
        for fail, reason in ((self.hang, "antwortet nicht"), (self.cups.stop, "nicht erreichbar")):
            fail()
            begin = time.monotonic()
            run = self.job.run("A.OUT", "KEINEGRAFIK", "archiv")
            self.assertLess(time.monotonic() - begin, 15)
            text = self.assert_kept(run, "nicht gedruckt", f"archiv.*{reason}", ["", ".txt"])
            shutil.rmtree(self.kept)
            # The built-in printer needs nobody.
            begin = time.monotonic()
            self.job.run("A.OUT", "", "Korvano PDF")
            self.assertLess(time.monotonic() - begin, 2.5)
            (self.job.folder / "A.pdf").unlink()
        # A user who never had a queue has it by default.
        self.assertEqual(self.job.run("A.OUT").errors, "")
        self.assertEqual(self.job.pdfs(), ["A.pdf"])
        self.assertIn(f"cd '{self.job.folder}' && '{PROGRAM}' '{self.kept}/A (1).OUT' 'KEINEGRAFIK' 'archiv'\n", text)

    def test_the_default_queue_is_remembered_and_what_is_kept_can_be_printed(self):
        self.wait_at_most(0)
        self.cups.run("lpadmin", "-d", "archiv")
        self.job.run("A.OUT")
        self.cups.wait_for_jobs("archiv", 1)
        self.hang()
        begin = time.monotonic()
        run = self.job.run("A.OUT", "/DEBUG")
        self.assertLess(time.monotonic() - begin, 7.5, "the server, four seconds, is waited for once")
        text = self.assert_kept(run, "nicht gedruckt", "Drucker „archiv“: Der Druckdienst CUPS antwortet nicht",
                                ["", ".txt"])
        self.cups.process.send_signal(signal.SIGCONT)
        command = next(line for line in text.splitlines() if line.startswith("cd "))
        subprocess.run(command, shell=True, env=self.job.environment, check=True, timeout=30)
        self.assertEqual(lines_of(self.cups.wait_for_jobs("archiv", 2)[1].path), [["x"]])

    def test_a_job_goes_out_by_itself_when_the_server_or_the_queue_takes_it_again(self):
        self.wait_at_most(30)
        reject = lambda: self.cups.run("cupsreject", "archiv")
        for number, (fail, mend) in enumerate((
                (self.hang, lambda: self.cups.process.send_signal(signal.SIGCONT)),
                (reject, lambda: self.cups.run("cupsaccept", "archiv"))), start=1):
            fail()
            run = self.job.start("A.OUT", "", "archiv")
            self.cups.wait_until(lambda: (self.kept / "A (1).OUT.txt").exists(), "the copy")
            time.sleep(1)
            mend()
            self.job.check(run.finish(30))
            self.assertEqual((run.errors, list(self.kept.iterdir())), ("", []))
            self.assertEqual(len(self.cups.wait_for_jobs("archiv", number)), number)

    def test_a_queue_that_refuses_leaves_the_finished_document(self):
        self.cups.run("cupsreject", "archiv")
        run = self.job.run("A.OUT", "", "archiv", "/DEBUG")
        self.assert_kept(run, "nicht gedruckt", "archiv.*cupsaccept archiv", ["", ".pdf", ".txt"])
        self.assertEqual(lines_of(self.kept / "A (1).OUT.pdf"), [["x"]])
        self.assertIn(">     Allgemeiner Fehler in DoReport 482 Druckerfehler", self.job.log())
        self.assertEqual(self.ask("record|archiv")[-1], "4096 0 0 50")

    def test_a_job_whose_answer_was_lost_is_asked_for_and_printed_once(self):
        for number, lose in enumerate(("answer", "document"), start=1):
            with LossyProxy(self.cups.socket, lose) as proxy:
                self.assertEqual(self.job.run("A.OUT", "", "archiv", CUPS_SERVER=str(proxy.path)).errors, "")
                self.assertTrue(proxy.lost, lose)
            self.cups.wait_for_jobs("archiv", number)
            self.assertEqual(self.cups.waiting("archiv"), 0, "no job without its document")
        self.assertEqual([lines_of(job.path) for job in self.cups.jobs("archiv")], [[["x"]]] * 2)
        with LossyProxy(self.cups.socket, "answer", for_ever=True) as proxy:
            self.assert_kept(self.job.run("A.OUT", "", "archiv", CUPS_SERVER=str(proxy.path)), "vielleicht gedruckt",
                             "archiv", ["", ".pdf", ".txt"])

    def test_a_job_that_is_cancelled_while_it_is_sent_ends_without_a_message(self):
        # A server that keeps no history does not know such a job any more, another one takes its document.
        forgetful = self.enterContext(PrivateCups(configuration="PreserveJobHistory No\n"))
        forgetful.add_pdf_queue("archiv")
        for cups, errors in ((self.cups, ""), (forgetful, "KRVWinPr: Druckauftrag 'A.OUT' vom Benutzer abgebrochen.\n")):
            with LossyProxy(cups.socket, lambda: cups.run("cancel", "-a", "archiv")) as proxy:
                run = self.job.run("A.OUT", "", "archiv", "/WAIT", CUPS_SERVER=str(proxy.path))
                self.assertTrue(proxy.lost)
            self.assertEqual((run.errors, list(self.kept.iterdir()), self.job.read("KRVWINPR.OK")), (errors, [], OK_TEXT))
            self.assertEqual(cups.jobs("archiv"), [])

    def test_a_queue_that_goes_away_while_it_is_waited_for_has_printed(self):
        self.cups.run("cupsdisable", "archiv")
        run = self.job.start("A.OUT", "", "archiv", "/WAIT")
        self.cups.wait_until(lambda: self.cups.waiting("archiv"), "the job to be in the queue")
        self.cups.run("lpadmin", "-x", "archiv")
        self.job.check(run.finish(30))
        self.assertRegex(run.errors, "^KRVWinPr: Druckauftrag 'A.OUT' gedruckt, aber Fehler 482: .*archiv.*")
        self.assertNotRegex(run.errors, "abgebrochen|erneut|aufbewahrt")
        self.assertEqual((list(self.kept.iterdir()), self.job.read("KRVWINPR.OK")), ([], OK_TEXT))


class Printers(QueueTest):
    def setUp(self):
        super().setUp()
        self.cups.add_tray_queue("Büro", "-D", "Hinten", "-L", "Zimmer 3")

    def test_the_default_is_the_users_then_the_servers_then_the_builtin_printer(self):
        self.assertEqual(self.ask("names"), ["archiv", "Büro", "Korvano PDF"])
        for environment, printer in (({}, "Korvano PDF"), ({"LPDEST": "archiv"}, "archiv"),
                                     ({"PRINTER": "Büro"}, "Büro"), ({"LPDEST": "Fehlt"}, "Korvano PDF")):
            self.assertEqual(self.ask("default", **environment), [printer], environment)
        self.cups.run("lpadmin", "-d", "archiv")
        self.assertEqual(self.ask("default", "record|Korvano PDF")[::5], ["archiv", "64"])
        for stale in ("LPDEST", "PRINTER"):
            self.assertEqual(self.ask("default", **{stale: "Fehlt"}), ["archiv"])
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
        self.cups.add_tray_queue("Einfach", ppd=re.sub(r"(?m)^\*InputSlot (Auto|Tray2|Manual)/.*\n", "", PPD))
        self.assertEqual(self.ask("bins|Einfach", LC_ALL="de_DE.UTF-8"), ["1 Fach 1"])

    def test_a_stored_bin_is_one_of_the_queues_or_an_error_that_lists_them(self):
        for queue, bins in (("Büro", r"-1 oder .*: 1 \(Automatisch\), 2 \(Fach 1\), 3 \(Fach 2\), 4 \(Manuelle Zufuhr\)"),
                            ("archiv", "-1, denn der Drucker „archiv“ nennt keine Schächte")):
            self.job.write_settings("Schacht2=5", key=rf"{PRODUCT_KEY}\Drucker\{queue}")
            self.job.write("T.OUT", "^TR2x")
            errors = self.job.run("T.OUT", "", queue).errors
            self.assertRegex(errors, rf"Fehler 380: .*„Schacht2“ .*{queue}.* ist „5“; erwartet: {bins}\. Die Druckdatei ist aufbewahrt")

    def test_jobs_wait_in_a_disabled_queue_until_purged(self):
        self.cups.run("cupsdisable", "Büro")
        self.assertEqual(self.ask("turned|Büro", "turned|Büro", "jobs|Büro", "record|Büro")[::6], ["2", "1 2 24 50"])
        self.assertEqual(self.ask("admin|Büro", "purge|Büro", "jobs|Büro"), ["1", "0"])

    def test_a_queue_that_is_not_there_is_an_error(self):
        for call in ("record", "jobs", "bins", "purge", "admin", "turned"):
            self.assertRegex(self.ask(f"{call}|Fehlt")[0], "^error 1030 Drucker „Fehlt“: .*lpstat -e", call)


class Rights(QueueTest):
    may_purge = False

    def test_purging_other_peoples_jobs_needs_the_right_to(self):
        self.cups.run("cupsdisable", "archiv")
        may, refused, jobs = self.ask("turned|archiv", "admin|archiv", "purge|archiv", "jobs|archiv")
        self.assertEqual((may, jobs), ("0", "1"))
        self.assertRegex(refused, "^error 10[0-9]+ Drucker „archiv“: .*Verwalter")


if __name__ == "__main__":
    unittest.main()
