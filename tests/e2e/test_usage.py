#!/usr/bin/env python3
"""What users meet at a shell: the words that ask for help, the line of a long job, and the completion of names."""

import os
import pathlib
import pty
import re
import shutil
import signal
import subprocess
import time
import unittest

from support import PRINTER, PROGRAM, SLOW, VERSION, JobTest

COMPLETION = pathlib.Path(__file__).resolve().parents[2] / "packaging/completion"
MESSENGER = PROGRAM.with_name("KRVWinPrBote")


class Terminal:
    """A terminal with a program in it."""

    def __init__(self, test, command, folder, environment):
        self.said = ""
        self.process, self.end = pty.fork()
        if self.process == 0:
            os.chdir(folder)
            os.execvpe(str(command[0]), [str(part) for part in command], environment)
        test.addCleanup(os.close, self.end)

    def read(self) -> bool:
        try:
            piece = os.read(self.end, 65536).decode("utf-8", "replace")
        except OSError:  # the program has gone
            piece = ""
        self.said += piece
        return piece != ""

    def read_to(self, pattern) -> str:
        """What is said up to a pattern, which must come."""
        while not (found := re.search(pattern, self.said)):
            assert self.read(), f"{pattern!r} not in {self.said!r}"
        before, self.said = self.said[:found.start()], self.said[found.end():]
        return before

    def finish(self) -> str:
        while self.read():
            pass
        os.waitpid(self.process, 0)
        return self.said

    def type(self, text):
        os.write(self.end, text.encode())


class Words(JobTest):
    def asked(self, *arguments, program=PROGRAM) -> str:
        done = subprocess.run([program, *arguments], cwd=self.job.folder, env=self.job.environment, timeout=60,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return done.stdout

    def test_are_answered_on_standard_output(self):
        self.assertEqual(self.asked("--version"), f"KRVWinPr {VERSION}\n")
        for word in ("/?", "-h", "--help"):
            text = self.asked(word)
            self.assertIn(f"\n  {self.job.settings}\n", text)
            self.assertIn("\nParameter: KRVWinPr [/DRUCKERAUSWAHL|", text)
        self.assertIn("/STATUS", self.asked("--help", program=MESSENGER))
        self.assertEqual(self.asked("--version", program=MESSENGER), f"KRVWinPrBote {VERSION}\n")
        self.assertEqual(self.job.names(), [])

    def test_print_a_file_of_that_name(self):
        self.job.write("-h", "Text")
        self.job.run("-h")
        self.assertEqual(self.job.names(), ["-h", "-h.pdf", "KRVWINPR.OK"])
        self.assertIn("Ist der Schalter „/WAIT“ gemeint?", self.job.run("/wait", "-h").errors)


class LongJob(JobTest):
    """One that is stopped for a second on its way."""

    PAGES = 2_000 if SLOW else 20_000

    def printed(self, **environment) -> str:
        self.new_job()
        self.job.write("A.OUT", ("Zeile mit Text\r\n" * 60 + "\f") * self.PAGES)
        terminal = Terminal(self, [PROGRAM, "A.OUT", "KEINEGRAFIK", PRINTER, "/TWOPASS"], self.job.folder,
                            self.job.environment | environment)
        self.assertTrue(self.job.wait_for_ok(time.monotonic() + 20))
        os.kill(terminal.process, signal.SIGSTOP)
        time.sleep(1.1)
        os.kill(terminal.process, signal.SIGCONT)
        return terminal.finish()

    def test_shows_how_far_it_is_and_then_what_it_took(self):
        first, *lines, summary, end = self.printed(TERM="xterm").split("\r")
        self.assertEqual((first, end), ("", "\n"))
        pages = f"{self.PAGES:,}".replace(",", ".")
        self.assertTrue(lines)
        for line in lines:
            self.assertRegex(line, rf"^Seite [\d.]+ von {pages}(, [\d.]+ Seiten/s)?\x1B\[K$")
        took = re.fullmatch(rf"{pages} Seiten in (\d+)(,\d)? s\x1B\[K", summary)
        self.assertTrue(took, summary)
        self.assertLessEqual(len(lines), 10 * int(took[1]))

    def test_shows_nothing_where_lines_cannot_be_written_over(self):
        self.assertEqual(self.printed(TERM="dumb"), "")


class Completion(JobTest):
    """What a shell makes of a beginning and the key Tab."""

    FILES = ("RECHNUNG.OUT", "Zwei Wörter.out", "LOGO.BMP", "logo.txt")
    PRINTERS = "#!/bin/sh\nprintf 'Laser\\nBüro links\\nLabel\\n'\n"

    def shell(self, *command) -> Terminal:
        tools = self.job.folder.parent / "tools"
        tools.mkdir()
        (tools / "lpstat").write_text(self.PRINTERS)
        (tools / "lpstat").chmod(0o755)
        for name in self.FILES:
            self.job.write(name, "x")
        (self.job.folder / "ORDNER").mkdir()
        shell = Terminal(self, command, self.job.folder, self.job.environment |
                         {"PATH": f"{tools}:{os.environ['PATH']}", "TERM": "dumb", "LC_ALL": "C.UTF-8", "PS1": "> "})
        self.addCleanup(shell.finish)
        self.addCleanup(shell.type, "\x03\nexit\n")
        return shell

    def check(self, shell):
        shell.type("for p in KRVWinPr KRVWinPrBote; do eval \"$p() { printf '<%s>' \\\"\\$@\\\"; echo =; }\"; done; echo rea''dy\n")
        shell.read_to("ready\r?\n")
        for typed, arguments in (
                ("KRVWinPr /vors\tREC\tKEI\tlas\t", "</VORSCHAU><RECHNUNG.OUT><KEINEGRAFIK><Laser>"),
                ("KRVWinPr /WAIT Zwei\tLOGO.B\tKorv\t/TWO\t", "</WAIT><Zwei Wörter.out><LOGO.BMP><Korvano PDF></TWOPASS>"),
                ('KRVWinPr RECHNUNG.OUT KEINEGRAFIK "Bü\t', "<RECHNUNG.OUT><KEINEGRAFIK><Büro links>"),
                ("KRVWinPr /AUF\tbüro\t/DEBUG2\t", "</AUFTRAEGE><Büro links></DEBUG2>"),
                ("KRVWinPr --v\t", "<--version>"), ("KRVWinPrBote /E\tORD\t", "</EIN><ORDNER>")):
            with self.subTest(typed):
                shell.type(typed)
                time.sleep(0.3)
                shell.type("\n")
                got = re.findall("<.*>", shell.read_to("=\r?\n").replace("/>", ">"))
                self.assertEqual(got[-1], arguments)

    def test_of_bash(self):
        shell = self.shell("bash", "--norc", "--noprofile", "-i")
        shell.type(f"source {COMPLETION}/KRVWinPr.bash; bind 'set bell-style none'\n")
        self.check(shell)

    @unittest.skipUnless(shutil.which("zsh"), "needs zsh")
    def test_of_zsh(self):
        shell = self.shell("zsh", "-f", "-i")
        shell.type(f"fpath=({self.job.folder.parent} $fpath); cp {COMPLETION}/KRVWinPr.zsh ../_KRVWinPr; "
                   "autoload -U compinit; compinit -u -D; unsetopt beep\n")
        self.check(shell)


if __name__ == "__main__":
    unittest.main()
