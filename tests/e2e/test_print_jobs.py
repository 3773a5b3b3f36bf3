"""The jobs of a queue of a private print server: told, controlled, watched.

Besides the environment of support.py: KRVWINPR_PRINTERS names the program of cups/printers.cpp."""

import os
import signal
import subprocess
import time
import unittest

from private_cups import PrivateCups

# As servers usually have it: jobs are their owner's, the queues the administrators'.
POLICY = """
<Policy owned>
  <Limit Hold-Job Release-Job Restart-Job Cancel-Job Set-Job-Attributes Get-Notifications Cancel-Subscription>
    Require user @OWNER nobody-else
    Order deny,allow
  </Limit>
  <Limit Resume-Printer>
    AuthType Basic
    Require user nobody-else
  </Limit>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
"""
PAUSED, BLOCKED, PRINTING, PAPER_OUT = 0x1, 0x200, 0x10, 0x40
OTHERS = "Aufträge anderer darf nur ein Verwalter des Druckdienstes steuern."


class PrintJobs(unittest.TestCase):
    configuration = POLICY

    def setUp(self):
        self.cups = self.enterContext(PrivateCups(configuration=self.configuration))
        self.cups.add_pdf_queue("archiv")
        self.busy = self.cups.root / "out/1/busy"
        self.document = self.cups.root / "a.pdf"
        self.document.write_bytes(b"%PDF-1.4\n%%EOF")

    def send(self, *titles, user="anna"):
        for title in titles:
            subprocess.run(["lp", "-d", "archiv", "-t", title, self.document], env=self.cups.environment(CUPS_USER=user),
                           check=True, stdout=subprocess.DEVNULL)

    def ask(self, *calls, user="anna"):
        """The lines that the calls answer with, one after the other, in one process."""
        return subprocess.run([os.environ["KRVWINPR_PRINTERS"], *calls], env=self.cups.environment(CUPS_USER=user),
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, timeout=60,
                              check=True).stdout.splitlines()

    def jobs(self, *calls, user="anna"):
        """Number, title, owner, priority, pages printed, status of each job, when the calls have passed silently."""
        lines = self.ask(*calls, "list|archiv", user=user)
        fields = [line.split("|") for line in lines]
        self.assertEqual([position for position, *_ in fields], [str(n + 1) for n in range(len(lines))], lines)
        return [(int(number), title, owner, int(priority), int(pages), int(status, 16))
                for _, number, title, owner, priority, pages, _, status, _ in fields]

    def numbers(self, *calls, **user):
        return [number for number, *_ in self.jobs(*calls, **user)]

    def assert_refused(self, lines, *reasons):
        self.assertEqual(len(lines), len(reasons), lines)
        for line, reason in zip(lines, reasons):
            self.assertRegex(line, rf"^error \d+ (Drucker „archiv“: Auftrag \d+ |Der Drucker )(wurde nicht|behält).*{reason}")

    def wait_for_printing(self, number):
        self.cups.wait_until(lambda: (self.jobs()[:1] or [(0, 0)])[0][0] == number and self.jobs()[0][4] > 0,
                             f"job {number} to be printed")


class Control(PrintJobs):
    def setUp(self):
        super().setUp()
        self.cups.run("cupsdisable", "archiv")
        self.send("eins", "zwei")
        self.send("drei", user="bruno")

    def test_jobs_are_held_released_moved_and_cancelled(self):
        self.assertEqual(self.jobs(user="root"), [(1, "eins", "anna", 50, 0, 0), (2, "zwei", "anna", 50, 0, 0),
                                                  (3, "drei", "bruno", 50, 0, 0)])
        self.assertEqual(self.jobs("pause|archiv|2")[1], (2, "zwei", "anna", 50, 0, PAUSED))
        self.assertEqual(self.jobs("resume|archiv|2")[1], (2, "zwei", "anna", 50, 0, 0))
        self.assertEqual(self.numbers("to-front|archiv|3"), [3, 1, 2])
        self.assertEqual(self.numbers("to-front|archiv|2"), [2, 3, 1])
        self.assertEqual([job[3] for job in self.jobs("to-front|archiv|2", user="root")], [52, 51, 50], "is there already")
        self.assertEqual(self.jobs("priority|archiv|3|1", "priority|archiv|1|99")[0], (1, "eins", "anna", 99, 0, 0))
        self.assertEqual(self.numbers("to-front|archiv|2"), [2, 1, 3], "the server has 100 as well")
        self.assert_refused(self.ask("to-front|archiv|3"), "denn ein älterer Auftrag hat schon die höchste Priorität")
        self.assertEqual(self.numbers("cancel|archiv|2"), [3, 1])
        self.assertEqual(self.ask("jobs|archiv"), ["2"])
        self.assert_refused(self.ask("cancel|archiv|2", "restart|archiv|1", "resume|archiv|1", "pause|archiv|77"),
                            "denn er ist schon abgebrochen", "denn er wartet auf den Druck", "denn er wartet auf den Druck",
                            "denn er steht nicht mehr in der Warteschlange")

    def test_what_the_server_does_not_grant_says_why(self):
        self.cups.run("lpadmin", "-p", "archiv", "-o", "printer-op-policy=owned")
        self.assertEqual(self.jobs(user="bruno"), [(1, "", "", 50, 0, 0), (2, "", "", 50, 0, 0),
                                                   (3, "drei", "bruno", 50, 0, 0)], "CUPS keeps these to itself")
        calls = [f"{call}|archiv|2|7" for call in ("pause", "cancel", "to-front", "priority")]
        self.assert_refused(self.ask(*calls, "resume-printer|archiv", user="bruno"),
                            *[f"denn er gehört jemand anderem. {OTHERS}"] * 4,
                            "Verwalter des Druckdienstes um die Berechtigung bitten")
        # Who may see whose the job is hears that as well.
        self.assert_refused(self.ask("pause|archiv|3", user="root"), f"denn er gehört „bruno“. {OTHERS}")
        self.assertEqual(self.numbers(), [1, 2, 3])

    def test_a_printer_that_stopped_or_takes_nothing_goes_on(self):
        self.cups.run("cupsreject", "archiv")
        self.assertEqual(self.ask("resume-printer|archiv"), [])
        self.cups.wait_for_jobs("archiv", 3)
        self.send("vier")
        self.cups.wait_for_jobs("archiv", 4)
        self.assertRegex(self.ask("list|weg")[0], "error 1030 Drucker „weg“: Der Drucker ist nicht vorhanden")

    def test_a_server_that_is_away_is_said_and_asked_again(self):
        self.cups.process.send_signal(signal.SIGSTOP)
        begin = time.monotonic()
        lines = self.ask("list|archiv", "pause|archiv|1")
        self.assertLess(time.monotonic() - begin, 6, "waited for once")
        self.assertRegex(lines[0], "error 110 Drucker „archiv“: Der Druckdienst CUPS antwortet nicht")
        self.assertRegex(lines[1], "error 110 Auftrag 1 wurde nicht angehalten: .*Der Druckdienst CUPS antwortet nicht")
        self.cups.process.send_signal(signal.SIGCONT)
        self.cups.restart()
        self.assertEqual(self.numbers("pause|archiv|1"), [1, 2, 3])


class Printing(PrintJobs):
    def test_a_job_being_printed_is_first_and_can_begin_anew_wait_or_go(self):
        self.busy.write_text("STATE: +media-empty-warning\nERROR: Papier fehlt\nPAGE: 1 1\n")
        self.send("eins", "zwei")
        self.wait_for_printing(1)
        self.assertEqual(self.jobs("priority|archiv|2|60"), [(1, "eins", "anna", 50, 1, PRINTING | PAPER_OUT),
                                                             (2, "zwei", "anna", 60, 0, 0)])
        self.assertTrue(self.ask("list|archiv")[0].endswith("|Papier fehlt"))
        self.assert_refused(self.ask("priority|archiv|1|9"), "denn er wird gerade gedruckt")
        self.assertEqual(self.ask("to-front|archiv|1"), [])
        begun = (self.cups.root / "out/1/00001.data").stat().st_mtime_ns
        self.assertEqual(self.ask("restart|archiv|1", "pause|archiv|2"), [])
        self.cups.wait_until(lambda: (self.cups.root / "out/1/00001.data").stat().st_mtime_ns > begun, "the second begin")
        self.assertEqual([job[0] for job in self.jobs("cancel|archiv|1")], [2])
        self.busy.unlink()
        self.ask("resume|archiv|2")
        self.cups.wait_for_jobs("archiv", 1)
        self.assertEqual([job.title for job in self.cups.jobs("archiv")], ["zwei"])


class Watching(PrintJobs):
    configuration = "MaxSubscriptions 2\n"

    def watch(self, *then):
        process = subprocess.Popen([os.environ["KRVWINPR_PRINTERS"], "watch|archiv", *then], env=self.cups.environment(),
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.addCleanup(process.communicate)
        os.set_blocking(process.stdout.fileno(), False)
        return process

    def changes(self, process, within):
        """How often it told a change in so many seconds, or by the first one."""
        end = time.monotonic() + within
        while time.monotonic() < end:
            if told := (process.stdout.read() or b"").count(b"changed"):
                return told
            time.sleep(0.02)
        return 0

    def test_whatever_happens_in_the_queue_is_told_within_a_second_or_so_and_nothing_else(self):
        self.cups.run("cupsdisable", "archiv")
        process = self.watch("list|archiv")
        self.assertEqual(self.changes(process, 5), 1, "the first call says yes")
        self.assertEqual(self.changes(process, 2.5), 0)
        for happens in (lambda: self.send("eins"), lambda: self.ask("pause|archiv|1"), lambda: self.ask("priority|archiv|1|9"),
                        lambda: self.ask("cancel|archiv|1"), lambda: self.cups.run("cupsenable", "archiv")):
            happens()
            self.assertGreater(self.changes(process, 1.6), 0)
            self.changes(process, 1.1)
        self.assertEqual(self.changes(process, 1.5), 0)
        another = self.watch()
        self.assertEqual(self.changes(another, 5), 1)
        self.assertEqual(self.ask("watch|archiv"), ["no events"], "the server has no more of them")
        another.communicate()
        self.assertEqual(self.ask("watch|archiv"), [])
        # The second time it forgets what it did since it was started.
        for signal_number in (signal.SIGTERM, signal.SIGKILL):
            self.cups.restart(signal_number)
            self.changes(process, 3)
            self.changes(process, 2.5)
            self.send("zwei")
            self.assertGreater(self.changes(process, 1.6), 0, "a server that came back")
            time.sleep(1.1)
            self.changes(process, 1.1)
        self.cups.run("cupsdisable", "archiv")
        self.send("drei")
        self.cups.restart()
        os.set_blocking(process.stdout.fileno(), True)
        self.assertRegex(process.communicate()[0].splitlines()[-1], rb"^1\|\d+\|drei\|", "over a connection that was lost")


if __name__ == "__main__":
    unittest.main()
