"""The messenger of hosts in an emulator on Windows, under Wine: orders as the host's program leaves them. The environment
is that of test_windows.py; the messenger lies beside the program."""

import os
import pathlib
import re
import shutil
import subprocess
import time
import unittest

from dos_machine import Dosbox
from messenger_orders import mark_of, order, order_text, wait_for_answer
from support import OK_TEXT, PRODUCT_KEY, lines_of, output_of
from test_windows import PROGRAM, QUEUE, WINE, WindowsTest

MESSENGER = pathlib.Path(PROGRAM).with_name("KRVWinPrBote.exe")
RUN_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Run"


def windows_path(path) -> str:
    return "Z:" + str(path).replace("/", "\\")


class Messenger(WindowsTest):
    def setUp(self):
        super().setUp()
        self.before = self.boxes.seek(0, os.SEEK_END)
        self.logs = []

    def set(self, name, value, key=rf"{PRODUCT_KEY}\Bote"):
        self.wine("reg", "add", key, "/v", name, "/d", str(value), "/f")

    def start(self, *folders, ready="wird überwacht", **environment) -> subprocess.Popen:
        log = self.job.folder.parent / f"bote{len(self.logs)}.log"
        self.logs.append(log)
        with log.open("wb") as errors:
            process = subprocess.Popen([*WINE, MESSENGER, *map(windows_path, folders or [self.job.folder])],
                                       env=self.cups.environment() | environment, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=errors, start_new_session=True)
        self.addCleanup(lambda: (process.kill(), process.wait()))
        self.said(ready)
        return process

    def said(self, pattern, log=-1):
        """A line of a messenger like this, now or soon."""
        end = time.monotonic() + 20
        while not re.search(pattern, text := self.logs[log].read_text("cp1252")):
            self.assertLess(time.monotonic(), end, f"{pattern}: {text}")
            time.sleep(0.01)

    def answered(self, number, letters="ONE", folder=None):
        return wait_for_answer(folder or self.job.folder, number, letters)

    def lines_of_job(self, number):
        """What a job on the queue has on its pages."""
        pdf, postscript = self.job.folder / "job.pdf", self.cups.wait_for_jobs(QUEUE, number + 1)[number].path
        output_of("gs", "-q", "-dBATCH", "-dNOPAUSE", "-sDEVICE=pdfwrite", f"-sOutputFile={pdf}", postscript)
        return lines_of(pdf)


class Orders(Messenger):
    def test_orders_are_printed_one_behind_the_other(self):
        first = len(self.cups.jobs(QUEUE))
        self.set("Abfrage", 60000)
        self.set("C", windows_path(self.job.folder.parent), rf"{PRODUCT_KEY}\Laufwerke")
        messenger = self.start()
        for number, name in enumerate(("ÄRGER & Ü.OUT", "B.OUT", r"C:\AUFTRAG\C.OUT")):
            self.job.write(name[-5:] if ":" in name else name, f"Seite {number}")
            order(self.job.folder, number, f' "{name}"  KEINEGRAFIK  {QUEUE}', directory=r"C:\AUFTRAG")
        for number in range(3):
            self.assertEqual(self.answered(number)[0], "O")
            self.assertEqual(self.lines_of_job(first + number), [[f"Seite {number}"]])
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        order(self.job.folder, 3, "/INVERT FEHLT.PCX", directory=r"C:\AUFTRAG")
        order(self.job.folder, 4, " FEHLT.OUT", directory=r"C:\AUFTRAG")
        self.assertEqual(self.answered(3)[0], "N")
        self.assertRegex(self.answered(4)[2], "ohne KRVWINPR.OK zu schreiben")
        self.assertIsNone(messenger.poll())

    def test_what_cannot_be_carried_out_is_answered_and_told(self):
        elsewhere = self.job.folder.parent / "anderswo"
        elsewhere.mkdir()
        self.set("C", windows_path(elsewhere), rf"{PRODUCT_KEY}\Laufwerke")
        self.set("Programm", r"C:\fehlt\KRVWinPr.exe")
        self.start()
        order(self.job.folder, 1, "", data=order_text(1, "A.OUT")[:-9])
        order(self.job.folder, 2, "A.OUT")
        order(self.job.folder, 3, "A.OUT", directory="D:\\")
        for number, reason in ((1, "abgeschnitten"), (2, "Laufwerke"), (3, "lässt sich nicht starten.*fehlt")):
            with self.subTest(number):
                letter, _, text = self.answered(number, "E")
                self.assertEqual(letter, "E")
                self.assertRegex(" ".join(text.split()), reason)
                self.said(rf"KRV0000{number}.AUF wird nicht ausgeführt: .*{reason}.*KRV0000{number}.ABG")
        end = time.monotonic() + 20
        while len(re.findall(r"\[KRVWinPr\] Bote, Ordner Z:", shown := "\n".join(self.shown()))) < 3:
            self.assertLess(time.monotonic(), end, shown)
            time.sleep(0.05)

    def test_a_crash_of_the_program_is_answered_and_the_next_order_carried_out(self):
        self.start(KRVWINPR_CRASH="start:access")
        for number in (1, 2):
            self.job.write("A.OUT", "eins")
            order(self.job.folder, number, f"A.OUT KEINEGRAFIK {QUEUE}")
            self.assertEqual(self.answered(number)[:2], ("E", mark_of(number, f"A.OUT KEINEGRAFIK {QUEUE}")))
        self.wine("taskkill", "/f", "/im", "KRVWinPr.exe", check=False)  # what offers the report

    def test_a_second_messenger_takes_over_from_one_that_was_killed(self):
        first = self.start()
        self.start(ready="schon ein anderer Bote aus: .* auf .*, Prozess ")
        self.job.write("A.OUT", "eins")
        order(self.job.folder, 1, f"A.OUT KEINEGRAFIK {QUEUE}")
        self.assertEqual(self.answered(1)[0], "O")
        self.said("KRV00001.AUF begonnen", log=0)
        first.kill()
        order(self.job.folder, 2, f"A.OUT KEINEGRAFIK {QUEUE}")
        self.assertEqual(self.answered(2)[0], "O")
        self.said("KRV00002.AUF begonnen")
        self.assertEqual(self.logs[1].read_text("cp1252").count("begonnen"), 1)

    def test_a_folder_that_vanishes_is_watched_again_when_it_is_back(self):
        folder = self.job.folder / "FIRMA"
        folder.mkdir()
        self.start(folder)
        shutil.rmtree(folder)
        self.said("FIRMA: wird nicht überwacht")
        folder.mkdir()
        (folder / "A.OUT").write_bytes(b"eins")
        order(folder, 1, f"A.OUT KEINEGRAFIK {QUEUE}")
        self.assertEqual(self.answered(1, folder=folder)[0], "O")

    def test_where_nothing_is_reported_the_folder_is_looked_at(self):
        self.set("Ereignisse", "0")
        self.set("Abfrage", "100")
        self.start(ready="durch regelmäßiges Nachsehen")
        order(self.job.folder, 1, "/INVERT FEHLT.PCX")
        self.assertEqual(self.answered(1)[0], "N")


class Hosts(Messenger):
    def test_the_jobs_of_a_host_in_dosbox_are_printed_in_their_order(self):
        first, count = len(self.cups.jobs(QUEUE)), 10
        self.start()
        machine = Dosbox(self.job, f"HOST {count} - > D:\\AUS.TXT", tail=f" DRUCK.OUT KEINEGRAFIK {QUEUE}".encode()).finish()
        self.assertEqual((machine.text(), [call[:2] for call in machine.calls()]), ("", [(0, True)] * count))
        for number in range(count):
            self.assertEqual(self.lines_of_job(first + number), [[f"Auftrag {number + 1:04}"]])
        self.assertFalse([name for name in self.job.names() if re.match(r"KRV\d", name)])


class Commands(Messenger):
    @staticmethod
    def running() -> int:
        """How many messengers of this build run without a command line."""
        found = subprocess.run(["grep", "-lsF", windows_path(MESSENGER), *pathlib.Path("/proc").glob("[1-9]*/cmdline")],
                               stdout=subprocess.PIPE, text=True)
        return len(found.stdout.split())

    def test_it_is_switched_on_and_off(self):
        folder = windows_path(self.job.folder)
        self.addCleanup(self.wine, MESSENGER, "/AUS")
        self.assertRegex(self.wine(MESSENGER, "/EIN", folder), "Der Bote läuft")
        self.assertIn(f'"{windows_path(MESSENGER)}"', self.wine("reg", "query", RUN_KEY, "/v", "KRVWinPrBote"))
        self.assertIn(len(self.job.read("KRVWINPR.COM")), range(1, 2049))
        self.job.write("A.OUT", "eins")
        order(self.job.folder, 1, f"A.OUT KEINEGRAFIK {QUEUE}")
        self.assertEqual(self.answered(1)[0], "O")
        self.assertRegex(self.wine(MESSENGER, "/STATUS"), "Dort ist der Bote .* auf .*, Prozess ")
        self.assertRegex(self.wine(MESSENGER, "/EIN", folder), "Der Bote läuft")
        self.assertEqual(self.running(), 1)
        self.assertRegex(self.wine(MESSENGER, "/AUS"), "ist beendet")
        self.assertRegex(self.wine(MESSENGER, "/STATUS"), "Dort ist kein Bote")
        self.assertNotIn("KRVWinPrBote", self.wine("reg", "query", RUN_KEY, "/v", "KRVWinPrBote", check=False))
        self.assertRegex(self.wine(MESSENGER, "/AUS", folder), "wird nicht mehr überwacht")
        self.assertNotIn("KRVWINPR.COM", self.job.names())

    def test_the_host_program_never_lies_beside_the_program(self):
        self.job.write("KRVWinPr.exe", "")
        self.assertRegex(self.wine(MESSENGER, "/EIN", windows_path(self.job.folder), check=False), "liegt KRVWinPr.exe")
        self.assertEqual(self.job.names(), ["KRVWinPr.exe"])


if __name__ == "__main__":
    unittest.main()
