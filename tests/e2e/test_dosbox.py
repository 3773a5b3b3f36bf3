"""KRVWINPR.COM and the messenger as hosts in dosbox have them."""

import re
import unittest

from dos_machine import Dosbox, Messenger, until
from messenger_orders import order
from support import OK_TEXT, PRODUCT_KEY, SLOW, JobTest, needs_namespace, on_disk


def texts_of_pdfs(job, count) -> list[list[list[str]]]:
    """What stands in DRUCK.pdf, DRUCK (2).pdf and so on."""
    names = ["DRUCK.pdf", *(f"DRUCK ({number}).pdf" for number in range(2, count + 1))]
    until(lambda: set(names) <= set(job.names()))
    return [job.lines(name) for name in names]


def orders(job) -> list[str]:
    return [name for name in job.names() if re.match(r"KRV\d", name)]


class Hosts(JobTest):
    def test_jobs_of_two_hosts_are_printed_each_once_and_in_their_order(self):
        hosts = {self.job: 10 if SLOW else 100, self.new_job(): 10 if SLOW else 30}
        Messenger(self, *hosts)
        machines = [Dosbox(job, f"HOST {count} - > D:\\AUS.TXT") for job, count in hosts.items()]
        for machine, (job, count) in zip(machines, hosts.items()):
            calls = machine.finish().calls()
            self.assertEqual((machine.text(), [call[:2] for call in calls]), ("", [(0, True)] * count))
            self.assertEqual(texts_of_pdfs(job, count), [[[f"Auftrag {number:04}"]] for number in range(1, count + 1)])
            self.assertEqual((orders(job), len(job.pdfs())), ([], count))


class Calls(JobTest):
    def test_the_command_tail_arrives_as_it_stands(self):
        rest = 'RÜCK 11.OUT" KEINEGRAFIK "Korvano PDF" /DEBUG'.encode("cp850")
        tail = b' "' + b".\\" * ((125 - len(rest)) // 2) + rest
        self.assertEqual(len(tail), 127)
        self.job.write("RÜCK 11.OUT", "Rückseite")
        Messenger(self, self.job)
        machine = Dosbox(self.job, "HOST 1 - > D:\\AUS.TXT", tail=tail).finish()
        self.assertEqual((machine.text(), machine.calls()[0][:2]), ("", (0, True)))
        until(lambda: b"> Programm regul" in (self.job.read("KRVWinPr.LOG") or b""))
        self.assertEqual(self.job.lines("RÜCK 11.pdf"), [["Rückseite"]])

    def test_what_writes_no_completion_file(self):
        """An earlier job's is not taken for it: a mode without one leaves it as it is, a failed job takes it away."""
        self.job.write("KRVWINPR.OK", "alt")
        picture = bytes.fromhex("424d3e000000000000003e0000002800000001000000010000000100010000000000000000000000000000"
                                "000000000000000000000000000000ffffff0000000000")
        self.job.write("BILD.BMP", picture)
        Messenger(self, self.job)
        machine = Dosbox(self.job, "KRVWINPR /INVERT BILD.BMP > D:\\INVERT.TXT", "IF ERRORLEVEL 1 SET LEVEL=1",
                         "ECHO [%LEVEL%] >> D:\\INVERT.TXT", "TYPE KRVWINPR.OK >> D:\\INVERT.TXT", "HOST 1 - > D:\\AUS.TXT",
                         tail=b" FEHLT.OUT").finish()
        self.assertEqual(machine.text("INVERT.TXT"), "[]\nalt")
        self.assertNotEqual(self.job.read("BILD.BMP"), picture)
        self.assertRegex(machine.text(), "^KRVWinPr ist zu Ende, ohne KRVWINPR.OK zu schreiben")
        self.assertEqual((machine.calls()[0][:2], orders(self.job)), ((1, False), []))

    def test_an_order_stays_where_nobody_takes_it(self):
        """Meanwhile keys pressed during the wait count, a clock that jumps does not; last, a drive is not ready."""
        self.job.write("KRVWINPR.OK", "alt")
        order(self.job.folder, 99998, " DRUCK.OUT")
        machine = Dosbox(self.job, "COPY HOST.COM KRVWINPR.EXE > NUL", "SET KRVBOTE=1",
                         *(f"HOST 1 {what} > D:\\{what}.TXT" for what in "KBATD")).finish()
        untaken = ("KRVWINPR: Auftrag KRV{:05}.AUF holt niemand ab. Bitte außerhalb von DOS\n"
                   "KRVWinPrBote für diesen Ordner starten, dann wird noch gedruckt:\nC:\\\n"
                   "KRVWINPR.COM und KRVWINPR.EXE dürfen nicht in einem Ordner liegen!\n")
        ended = "KRVWINPR: Auftrag KRV{:05}.AUF wird noch gedruckt; Warten abgebrochen.\n"
        missing = "KRVWINPR: Auftrag KRV{:05}.AUF lässt sich nicht schreiben:\nC:\\\nLaufwerk oder Ordner fehlt.\n"
        for what, number, text, left, shortest, longest in (
                ("K", 99999, ended, False, 0, 800), ("B", 1, ended, False, 0, 800), ("A", 2, untaken, True, 900, 3000),
                ("T", 3, untaken, False, 850, 3000), ("D", 1, missing, False, 0, 800)):
            with self.subTest(what):
                [call] = machine.calls(f"{what}.TXT")
                self.assertEqual((machine.text(f"{what}.TXT"), call[:3]), (text.format(number), (1, False, left)))
                self.assertTrue(shortest < call.time < longest, call)
        self.assertEqual(orders(self.job), [f"KRV{number:05}.AUF" for number in (1, 2, 3, 99998, 99999)])
        Messenger(self, self.job)
        self.assertEqual(texts_of_pdfs(self.job, 5), [[["Auftrag 0001"]]] * 5)
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_the_wait_for_a_program_that_hangs_has_an_end(self):
        program = self.job.write("../haengt", "#!/bin/sh\nexec sleep 3")
        program.chmod(0o755)
        self.job.write_settings(f"Programm={program}", key=rf"{PRODUCT_KEY}\Bote")
        Messenger(self, self.job)
        machine = Dosbox(self.job, "SET KRVWARTEN=1 ", "SET KRVBOTE=5000x", "HOST 1 - > D:\\AUS.TXT").finish()
        self.assertEqual(machine.text(), "KRVWINPR: Auftrag KRV00001.AUF ist angenommen, aber noch nicht fertig.\n"
                                         "Bitte nachsehen, ob KRVWinPr etwas meldet.\n")
        self.assertTrue(900 < machine.calls()[0].time < 4000)
        self.assertEqual(orders(self.job), ["KRV00001.AUF", "KRV00001.ERG"])

    @needs_namespace
    def test_a_disk_that_takes_no_order(self):
        self.job.write("VOLL", bytes(28000))
        for remount, size, reason in (("bind,ro", 64, "Schreibgeschützt, oder das Hauptverzeichnis ist voll."),
                                      ("", 40, "Der Datenträger ist voll.")):
            machine = Dosbox(self.job, "KRVWINPR X > D:\\AUS.TXT", "IF ERRORLEVEL 1 ECHO Fehler >> D:\\AUS.TXT",
                             prefix=on_disk(self.job.folder, f"size={size}k", remount)).finish()
            self.assertEqual(machine.text(), "KRVWINPR: Auftrag KRV00001.AUF lässt sich nicht schreiben:\nC:\\\n"
                                             f"{reason}\nFehler\n")
            self.assertEqual(orders(self.job), [])


if __name__ == "__main__":
    unittest.main()
