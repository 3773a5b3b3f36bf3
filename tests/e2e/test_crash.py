"""What becomes of crashes: the report, the host, the job, and who is told."""

import os
import pathlib
import re
import resource
import shutil
import signal
import time
import unittest

from private_bus import PrivateBus
from private_screen import PrivateScreen
from support import OK_TEXT, SLOW, JobTest

ENTRY = re.compile(r"\r\n===== (Fehlerbericht \d{8}-\d{9}-\d+) =====\r\n(.*?)===== Ende, \1 =====\r\n", re.DOTALL)
ROUTINE = re.compile(r"^ *\d+ +(\S+) +\(", re.MULTILINE)
SECRET = "Kontonummer 4711"
LONGEST = 1 << 20

KINDS = {"access": "11: Zugriffsverletzung", "abort": "6: Abbruch", "overflow": "11: Stapelüberlauf",
         "throw": "51: Ausnahme, die niemand behandelt: basic_string", "illegal": "4: Unzulässiger Befehl"}
# What is called from one place only the compiler may have put into its caller.
START = ["main", "startup.MMain.Main"]
PLACES = {"start": START,
          "page": [*START, "report.MPrint.DoReport", "report.printPages", "report.PagePrinter.print",
                   "report.PageInterpreter.DoPage"],
          "module": [*START, "report.MPrint.DoReport", "report.printPages", "printer.Printer.NewPage",
                     "platform_linux.documents.PdfPrintDocument.endPage", "platform_linux.pdf.Document.endPage"]}


@unittest.skipIf(SLOW, "the sanitizers report crashes themselves")
class CrashTest(JobTest):
    def setUp(self):
        super().setUp()
        self.job.environment["KONTO"] = SECRET
        self.data = pathlib.Path(self.job.environment["HOME"]) / ".local/share/KRVWinPr"
        self.log = self.data / "KRVWinPr.ERR"
        self.print_file = self.job.write("A.OUT", f"1\r\n{SECRET}\r\n\f2\r\n")

    def entries(self) -> list[str]:
        text = self.log.read_bytes().decode() if self.log.exists() else ""
        return [match[2] for match in ENTRY.finditer(text)]

    def value(self, label) -> str:
        """Of the newest entry."""
        found = re.search(rf"^{label}: +(.*)\r$", self.entries()[-1], re.MULTILINE)
        return found[1] if found else ""

    def crash(self, where, *arguments, **options):
        run = self.job.start(*arguments, KRVWINPR_CRASH=where, **options).finish(60)
        self.assertEqual(run.returncode, 0, run.errors)
        return run

    def assert_in_order(self, expected, routines):
        rest = iter(routines)
        for name in expected:
            self.assertIn(name, rest, f"{name} of {expected} is not in its place in {routines}")

    @unittest.skipUnless(os.environ.get("KRVWINPR_DEVELOPED") == "1", "only a development build crashes on purpose")
    def test_every_crash_is_reported_and_lets_the_host_go_and_keeps_the_job(self):
        for place, routines in PLACES.items():
            for count, (kind, text) in enumerate(KINDS.items(), 1):
                with self.subTest(place=place, kind=kind):
                    (self.job.folder / "KRVWINPR.OK").unlink(missing_ok=True)
                    run = self.crash(f"{place}:{kind}", "A.OUT", "KEINEGRAFIK", "/WAIT")
                    self.assertRegex(run.errors, f"^KRVWinPr: Unerwarteter Fehler: .*; Bericht in {self.log}\n$")
                    self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
                    self.assertEqual(self.job.names(), ["A.OUT", "KRVWINPR.OK"])
                    self.assertTrue(self.value("Fehler").startswith(text), self.value("Fehler"))
                    self.assertEqual(self.value("Host"), "wartete und hat KRVWINPR.OK bekommen")
                    self.assert_in_order(routines, ROUTINE.findall(self.entries()[-1]))
                    self.assertIn('"KEINEGRAFIK"\r\n', self.entries()[-1])
                    if place != "start":
                        kept = pathlib.Path(self.value("Aufbewahrt als"))
                        self.assertEqual(kept.name, f"A ({count + (place == 'module') * len(KINDS)}).OUT")
                        self.assertEqual(kept.read_bytes(), self.print_file.read_bytes())
                        self.assertEqual([self.value(label) for label in ("Druckdatei", "Drucker", "Seite")],
                                         ["A.OUT", "Korvano PDF", "1"])
                        self.assertEqual(self.value("Byte der Datei"), "3" if place == "page" else "21")
        self.assertEqual(len(self.entries()), len(PLACES) * len(KINDS))
        self.assertNotIn(SECRET.encode(), self.log.read_bytes())
        self.assertEqual(self.log.stat().st_mode & 0o777, 0o600)

    @unittest.skipUnless(os.environ.get("KRVWINPR_DEVELOPED") == "1", "only a development build crashes on purpose")
    def test_the_completion_file_is_the_one_that_is_there_and_only_for_who_waits(self):
        self.crash("start:access", "A.OUT")
        self.assertNotIn("KRVWINPR.OK", self.job.names())
        self.assertEqual(self.value("Host"), "wartete nicht auf das Ende dieses Auftrags")
        self.crash("page:access", "A.OUT")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        (self.job.folder / "KRVWINPR.OK").rename(self.job.write("krvwinpr.ok", "alt"))
        self.job.write("krvwinpr.ok", "alt")
        run = self.crash("start:error", "A.OUT", "/WAIT")
        self.assertEqual(self.job.read("krvwinpr.ok"), OK_TEXT)
        self.assertRegex(run.errors, f"Laufzeitfehler '5'.*\nKRVWinPr: Bericht in {self.log}\n$")
        self.assertTrue(self.value("Fehler").startswith("5: Ungültiger Prozeduraufruf"))
        self.assert_in_order(START, ROUTINE.findall(self.entries()[-1]))

    @unittest.skipUnless(os.environ.get("KRVWINPR_DEVELOPED") == "1", "only a development build crashes on purpose")
    def test_the_log_is_whole_on_a_full_disk_and_never_too_long(self):
        def limit(size):
            return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))

        self.crash("page:access", "A.OUT", "/WAIT")
        whole = self.log.read_bytes()
        run = self.crash("page:access", "A.OUT", "/WAIT", limits=limit(len(whole) + 500))
        self.assertEqual(self.log.read_bytes(), whole)
        self.assertRegex(run.errors, "Unerwarteter Fehler: .*SIGSEGV[^;]*\n$")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

        full = whole * (LONGEST // len(whole))
        self.log.write_bytes(b"Rest eines Eintrags" + full)
        self.crash("page:access", "A.OUT", limits=limit(LONGEST // 2))
        self.assertEqual(self.log.read_bytes(), b"Rest eines Eintrags" + full)
        self.crash("page:illegal", "A.OUT")
        self.assertTrue(LONGEST - 2 * len(whole) < self.log.stat().st_size <= LONGEST)
        entries = self.entries()
        self.assertGreaterEqual(len(entries), LONGEST // len(whole) - 2)
        self.assertIn("SIGILL", entries[-1])
        self.assertEqual(sorted(path.name for path in self.data.iterdir()), ["KRVWinPr.ERR", "Nicht gedruckt"])

    def test_signals_from_outside_are_reported_too(self):
        self.job.write("LANG.OUT", (SECRET + "\r\n") * 60 * 30000)
        for number in signal.SIGSEGV, signal.SIGBUS, signal.SIGFPE, signal.SIGSYS:
            (self.job.folder / "KRVWINPR.OK").unlink(missing_ok=True)
            run = self.job.start("LANG.OUT")
            self.assertTrue(self.job.wait_for_ok(time.monotonic() + 20))
            run.send_signal(number)
            self.assertEqual(run.finish(60).returncode, 0)
            self.assertIn("Unerwarteter Fehler", run.errors)
            self.assertIn(f"({number.name}), geschickt von Prozess {os.getpid()}", self.value("Fehler"))
            self.assert_in_order([*START, "report.MPrint.DoReport"], ROUTINE.findall(self.entries()[-1]))
        self.assertEqual(len(self.entries()), 4)
        self.assertNotIn(SECRET.encode(), self.log.read_bytes())
        self.assertEqual(self.job.names(), ["A.OUT", "KRVWINPR.OK", "LANG.OUT"])

    @unittest.skipUnless(all(map(shutil.which, ("Xvfb", "xdotool", "gdbus"))), "needs xvfb, xdotool and gdbus")
    @unittest.skipUnless(os.environ.get("KRVWINPR_DEVELOPED") == "1", "only a development build crashes on purpose")
    def test_who_sits_there_is_offered_the_report_once(self):
        with PrivateBus() as bus, PrivateScreen(bus) as screen:
            self.crash("page:access", "A.OUT", "/WAIT", **screen.environment)
            screen.height("Fehlerbericht")
            self.assertLessEqual({"Kopieren", "Speichern unter …", "Ordner zeigen", "Senden …", "Schließen"},
                                 set(screen.controls()))
            self.save(screen)
            self.close(screen)
            self.assertRegex(self.job.settings.read_text(), r"(?m)^Fehlerbericht=.*Fehlerbericht \d{8}-")

            self.crash("start:abort", "A.OUT")
            seen = self.job.start("/VORSCHAU", "A.OUT", **screen.environment)
            screen.height("Fehlerbericht")
            self.close(screen)
            self.leave(screen, seen)
            again = self.job.start("/VORSCHAU", "A.OUT", **screen.environment)
            screen.height("Vorschau: A.OUT")
            self.assertEqual(self.windows(screen), 0)
            self.leave(screen, again)
        self.assertEqual(len(self.entries()), 2)

    def titled(self, screen, title) -> list[str]:
        return screen.tool("sh", "-c", f"xdotool search --onlyvisible --name {title} || true").split()

    def windows(self, screen) -> int:
        return len(self.titled(screen, "Fehlerbericht"))

    def save(self, screen):
        saved = self.job.folder / "Bericht für Müller.txt"
        screen.tool("xdotool", "search", "--onlyvisible", "--name", "Fehlerbericht", "windowfocus", "--sync")
        screen.press("alt+s")
        screen.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", "speichern", "windowfocus", "--sync",
                    "type", "--delay", "40", str(saved))
        screen.press("Return")
        end = time.monotonic() + 10
        while not saved.exists() and time.monotonic() < end:
            time.sleep(0.05)
        self.assertIn(self.entries()[-1], saved.read_bytes().decode())
        while len(self.titled(screen, "speichern")) > 0 and time.monotonic() < end:
            time.sleep(0.05)

    def leave(self, screen, preview):
        screen.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", "Vorschau: A.OUT", "windowfocus", "--sync")
        screen.press("Escape")
        self.job.check(preview.finish(30))

    def close(self, screen):
        screen.tool("xdotool", "search", "--onlyvisible", "--name", "Fehlerbericht", "windowfocus", "--sync")
        screen.press("Escape")
        end = time.monotonic() + 10
        while self.windows(screen) > 0 and time.monotonic() < end:
            time.sleep(0.05)
        self.assertEqual(self.windows(screen), 0)


if __name__ == "__main__":
    unittest.main()
