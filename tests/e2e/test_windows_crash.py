"""Crashes of the Windows program under Wine, made on purpose: what becomes of the host, the job and the report. The
environment is that of test_windows.py."""

import re
import resource
import signal
import subprocess
import tempfile
import unittest

from support import OK_TEXT
from test_windows import KEY, PROGRAM, QUEUE, WINE, WindowsTest
from windows_screen import WindowsScreenTest

LONGEST_LOG = 1 << 20
ENTRY = re.compile(r"((?:\r\n)?===== (Fehlerbericht \d{8}-\d{9}-\d+) =====\r\n.*?===== Ende, \2 =====\r\n)", re.S)
CALL = re.compile(r"^ *\d+ +(\S+) +\(", re.M)
# What Windows calls it, and the innermost of the program's own routines.
KINDS = {"access": (r"3221225477: Zugriffsverletzung \(0xc0000005\) beim Schreiben nach 0x0", "crashWhereAsked"),
         "abort": (r"\d+: Abbruch durch das Programm selbst", "crashWhereAsked"),
         "overflow": (r"3221225725: Stapelüberlauf \(0xc00000fd\)", "fillStack"),
         "throw": (r"51: Ausnahme, die niemand behandelt: .*out_of_range", "crashWhereAsked"),
         "illegal": (r"3221225501: Unzulässiger Befehl \(0xc000001d\)", "crashWhereAsked")}


class Crash(WindowsTest):
    def crash(self, *arguments, on="start:access", limits=None):
        """What the program says on standard error; the second process, which offers the report, is ended."""
        with tempfile.TemporaryFile() as errors:
            run = subprocess.run([*WINE, PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                 stderr=errors, timeout=60, cwd=self.job.folder, preexec_fn=limits,
                                 env=self.cups.environment() | {"KRVWINPR_CRASH": on}, restore_signals=limits is None)
            errors.seek(0)
            text = errors.read().decode("cp1252")
        self.assertEqual(run.returncode, 0, text)
        self.wine("taskkill", "/f", "/im", "KRVWinPr.exe", check=False)
        return text

    def entries(self):
        """The log's entries, which are all that it holds."""
        log, = self.error_logs()
        text = log.read_bytes().decode()
        found = [entry for entry, _ in ENTRY.findall(text)]
        self.assertEqual("".join(found), text)
        return found

    def test_every_kind_is_reported_and_lets_the_host_go(self):
        self.job.write("A.OUT", "eins\r\n^FE\f")
        at_start = ["wWinMain", "platform_windows.program.run", "startup.MMain.Main"]
        on_page = [*at_start, "report.MPrint.DoReport", "report.printPages", "report.PageInterpreter.DoPage"]
        for number, (place, kind, routines) in enumerate((place, kind, routines)
                                                         for place, routines in (("start", at_start), ("page", on_page))
                                                         for kind in KINDS):
            with self.subTest(place, kind=kind):
                said = self.crash("A.OUT", "KEINEGRAFIK", QUEUE, "/WAIT", on=f"{place}:{kind}")
                self.assertRegex(said, r"KRVWinPr: Unerwarteter Fehler: .*; Bericht in .*\\KRVWinPr.ERR\r\n")
                self.assertEqual((self.job.read("KRVWINPR.OK"), self.job.names()), (OK_TEXT, ["A.OUT", "KRVWINPR.OK"]))
                (self.job.folder / "KRVWINPR.OK").unlink()
                self.assertEqual(len(self.entries()), number + 1)
                text = self.entries()[-1]
                what, innermost = KINDS[kind]
                self.assertRegex(text, rf"Fehler: +{what}")
                self.assertRegex(text, "Host: +wartete und hat KRVWINPR.OK bekommen")
                self.assertRegex(text, r'"A.OUT KEINEGRAFIK Laser /WAIT"')
                calls = iter(CALL.findall(text))
                for routine in [*routines, f"runtime.development.{innermost}"]:
                    self.assertIn(routine, calls, text)  # one behind the other
        kept = [path.read_bytes() for folder in self.kept() for path in folder.glob("A*.OUT")]
        self.assertEqual(kept, [self.job.read("A.OUT")] * len(KINDS))  # what was accepted
        self.assertEqual(self.cups.jobs(QUEUE), [])

    def test_what_the_log_has_stays_whole(self):
        self.crash()
        first, = self.entries()
        log, = self.error_logs()

        # A disk that is full behind a part of the new entry: a limit for the process's files does the same.
        def limits():
            resource.setrlimit(resource.RLIMIT_FSIZE, (len(first.encode()) + 500,) * 2)

        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        said = self.crash(limits=limits)
        self.assertRegex(said, "KRVWinPr: Unerwarteter Fehler: Zugriffsverletzung")
        self.assertNotIn("Bericht in", said)
        self.assertEqual(self.entries(), [first])

        # The log is full: the oldest entries go, one in two at most.
        older = first * (LONGEST_LOG // len(first.encode()))
        log.write_bytes(("nicht von hier\r\n" + older).encode())
        self.crash("neu")
        entries = self.entries()
        self.assertLessEqual(log.stat().st_size, LONGEST_LOG)
        self.assertGreater(log.stat().st_size, LONGEST_LOG - 3 * len(first.encode()))
        self.assertEqual({entry.lstrip() for entry in entries[:-1]}, {first.lstrip()})
        self.assertIn('"neu"', entries[-1])
        self.assertEqual([path.name for path in log.parent.iterdir() if path.is_file()], [log.name])


class Offer(WindowsScreenTest):
    def windows(self):
        return self.screen.tool("sh", "-c", "xdotool search --onlyvisible --name Fehlerbericht || true").split()

    def test_who_sits_there_is_offered_the_report_once(self):
        self.job.write("A.OUT", "eins\r\n")
        self.screen.environment["KRVWINPR_CRASH"] = "page:access"
        self.start("A.OUT", "KEINEGRAFIK", QUEUE)
        self.screen.height("KRVWinPr: Fehlerbericht")
        self.assertEqual(self.program.wait(20), 0)
        key = KEY.split(r"\Drucker")[0]
        self.cups.wait_until(lambda: "Fehlerbericht 20" in self.wine("reg", "query", key), "the mark of what was seen")
        # Without a window manager Wine gives the keyboard to no window of a process that another one has started.
        self.wine("taskkill", "/f", "/im", "KRVWinPr.exe")

        del self.screen.environment["KRVWINPR_CRASH"]
        self.start("/VORSCHAU", "A.OUT", "KEINEGRAFIK", QUEUE)
        self.screen.height("Vorschau")
        self.assertEqual(self.windows(), [])
        self.screen.press("Escape")
        self.assertEqual(self.program.wait(20), 0)


if __name__ == "__main__":
    unittest.main()
