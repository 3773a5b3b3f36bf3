"""Bad input, missing rights, full disks, killed and simultaneous jobs."""

import os
import random
import re
import resource
import signal
import socket
import stat
import time
import unittest

from support import (OK_TEXT, ON_DISK, OWN_VALUES, PRINTER, PRINTER_KEY, PRODUCT_KEY, SLOW, STAMP, JobTest,
                     namespace_command, page_count, without_privileges)

NAMESPACE = namespace_command()
needs_namespace = unittest.skipUnless(NAMESPACE, "needs a mount namespace (unshare -m, or -rm for users) and tmpfs, "
                                                 "which this system does not allow here")


def on_disk(folder, options, remount="") -> list[str]:
    """What starts a command while a small disk takes the folder's place."""
    return [*NAMESPACE, "sh", "-c", ON_DISK, "sh", str(folder), options, remount]


def file_size_limit(size):
    return lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


def nameless_files(folder) -> bool:
    """Whether the file system can keep a file that has no name yet."""
    try:
        os.close(os.open(folder, os.O_TMPFILE | os.O_RDWR))
    except OSError:
        return False
    return True


class PrintFiles(JobTest):
    def refused(self, argument, number, reason, **options):
        run = self.job.run(argument, **options)
        self.assertRegex(run.errors, f"^KRVWinPr: Druckauftrag '{argument}' abgebrochen, Fehler {number}: .*{reason}")
        self.assertEqual(run.errors.count("\n"), 1, run.errors)
        self.assertEqual((self.job.read("KRVWINPR.OK"), self.job.pdfs()), (None, []))

    def test_what_cannot_be_read_is_refused_with_the_reason(self):
        job = self.job
        (job.folder / "ORDNER").mkdir()
        os.mkfifo(job.folder / "ROHR")
        job.write("GEHEIM.OUT", "Seite").chmod(0)
        self.refused("FEHLT.OUT", 53, "Datei nicht gefunden: FEHLT.OUT")
        self.refused("fehlt/A.OUT", 76, "Pfad nicht gefunden: fehlt/A.OUT .*Ordner")
        self.refused("ORDNER", 75, "ORDNER .*Ordner")
        self.refused("ROHR", 75, "ROHR .*Datei")
        self.refused("X" * 300, 52, "XXX .*zu lang")
        self.refused("GEHEIM.OUT", 70, "GEHEIM.OUT .*Berechtigung", prefix=without_privileges())
        # A host that waits must be let go all the same.
        job.run("FEHLT.OUT", "/WAIT")
        self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)

    def test_random_bytes(self):
        source = random.Random(20261121)
        lengths = [*range(1, 17), 100, 1000, 4095, 4096, 4097, 30_000, 300_000, 1_000_000]
        macros = b"^FE ^BC1,2,A9\\ ^LR ^TR ^GR ^GZ1 ^BE ^10 ^SE ^LS ^PL ^HE ^CR , . 1 9 E e - \\ \r\n \f".split(b" ")
        printed = 0
        for length in lengths:
            for alphabet in ("any", "macros"):
                with self.subTest(length=length, alphabet=alphabet):
                    data = source.randbytes(length) if alphabet == "any" else b"".join(
                        source.choices(macros, k=length))[:length]
                    job = self.new_job()
                    job.write("A.OUT", data)
                    run = job.run("A.OUT", *source.choice(([], ["/TWOPASS"])))
                    self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)
                    if job.pdfs():
                        job.assert_sound("A.pdf")
                    feeds = data.count(b"\f")
                    if " abgebrochen, Fehler " not in run.errors and feeds > 0 and b"^LR\f" not in data:
                        # The last page is printed where something is drawn on it.
                        pages = page_count(job.folder / "A.pdf") if job.pdfs() else 0
                        self.assertIn(pages, (feeds, feeds + 1) if not data.endswith(b"\f") else (feeds, feeds - 1))
                        printed += 1
        self.assertGreaterEqual(printed, 10)

    def test_a_line_without_an_end(self):
        job = self.job
        job.write("A.OUT", b"x" * 1_000_000 + b"\r\nzwei")
        job.write("B.OUT", b"^FEy^FA" * 150_000 + b"\r\nzwei")
        for name in ("A", "B"):
            job.run(f"{name}.OUT")
            job.assert_sound(f"{name}.pdf", 1)
            lines = job.lines(f"{name}.pdf")[0]
            self.assertEqual((len(lines), lines[-1]), (2, "zwei"))
            self.assertIn(len(lines[0]), (80, 81, 82))  # what the sheet has room for
            self.assertLess((job.folder / f"{name}.pdf").stat().st_size, 100_000)

    def test_more_pages_than_can_be_counted(self):
        self.job.write("A.OUT", b"Seite\f" * 40_000)
        run = self.job.run("A.OUT", "/DEBUG", timeout=200)
        self.assertIn("'A.OUT' abgebrochen, Fehler 6: Überlauf", run.errors)
        self.assertIn(">     Allgemeiner Fehler in DoReport 6 Überlauf", self.job.log())
        self.job.assert_sound("A.pdf", 32767)


class Printers(JobTest):
    def test_without_a_print_service_the_pdf_printer_prints(self):
        dead = self.job.folder / "cups.sock"
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(str(dead))
        for server in ("/nirgendwo/cups.sock", str(dead), "127.0.0.1:1", ""):
            for printer in ("", "Laser im Flur", "KORVANO pdf"):
                with self.subTest(server=server, printer=printer):
                    job = self.new_job()
                    job.write("A.OUT", "Seite")
                    run = job.run("A.OUT", "", printer, CUPS_SERVER=server, timeout=30)
                    self.assertEqual(run.errors, "")
                    self.assertEqual(job.lines("A.pdf"), [["Seite"]])


class LittleRoom(JobTest):
    """Whatever there is no room for is missing as a whole, and the user is told."""

    SHORT = b"Seite\r\n\f" * 3
    LONG = b"".join(b"Seite %d %s\r\n\f" % (n, random.Random(n).randbytes(300).hex().encode()) for n in range(200))

    EXPECTED = {(False, False, False), (False, False, True), (True, False, True), (True, True, True)}

    def setUp(self):
        super().setUp()
        self.outcomes = set()  # completion file, PDF and log are there whole

    def print_list(self, data, *arguments, **options):
        job = self.job
        job.write("A.OUT", data)
        run = job.run("A.OUT", *arguments, **options)
        self.assertIn(job.read("KRVWINPR.OK"), (None, OK_TEXT))
        log = (job.read("KRVWinPr.LOG") or b"\r\n").decode()
        for line in log.removesuffix("\r\n").split("\r\n"):
            self.assertRegex(line, f"^({STAMP}> .*|======= NEUER START ========|)$")
        self.assertTrue(log.endswith("\r\n"), log[-100:])
        there = {"KRVWINPR.OK ": job.read("KRVWINPR.OK") is not None, "„A.pdf“": bool(job.pdfs()),
                 "KRVWinPr.LOG ": "/DEBUG" not in arguments or log.endswith("> Programm regulär beendet!\r\n\r\n")}
        self.outcomes.add(tuple(there.values()))
        for name in job.pdfs():
            # A job that cannot log any more delivers the pages that it has finished.
            job.assert_sound(name, data.count(b"\f") if there["KRVWinPr.LOG "] else None)
        errors = [line for line in run.errors.splitlines() if re.search("kein Platz|größer als", line)]
        if there["KRVWinPr.LOG "]:
            for name, present in there.items():
                self.assertEqual(any(name in line for line in errors), not present, f"{name}: {run.errors}")
        else:
            self.assertTrue(any("KRVWinPr.LOG " in line for line in errors), run.errors)
        self.assertEqual(run.errors == "", all(there.values()), run.errors)

    @needs_namespace
    def test_a_full_disk(self):
        for data, rooms in ((self.SHORT, range(4, 44, 4)), (self.LONG, (160, 200, 300, 1000))):
            for room in rooms:
                for arguments in ([], ["/DEBUG"], ["", PRINTER, "/WAIT"]):
                    with self.subTest(room=room, arguments=arguments):
                        job = self.new_job()
                        self.print_list(data, *arguments, prefix=on_disk(job.folder, f"size={room}k"))
        self.assertLessEqual(self.EXPECTED, self.outcomes)

    def test_a_limit_to_the_size_of_files(self):
        for data in (self.SHORT, self.LONG):
            for size in (0, 1, 37, 38, 100, 1000, 4096, 12_000, 50_000, 1_000_000):
                for arguments in ([], ["/DEBUG"]):
                    with self.subTest(size=size, arguments=arguments):
                        self.new_job()
                        self.print_list(data, *arguments, limits=file_size_limit(size))
        self.assertLessEqual(self.EXPECTED, self.outcomes)

    @needs_namespace
    def test_a_full_disk_under_the_settings(self):
        old = f"[{PRINTER_KEY}]\nLinkerRand=720\n# von Hand\n{'x' * 3000}\n"
        whole = False
        for room in (4, 8, 12, 16):
            with self.subTest(room=room):
                job = self.new_job()
                job.write_settings(old)
                job.write("A.OUT", "Seite")
                run = job.run("A.OUT", prefix=on_disk(job.settings.parent, f"size={room}k"))
                self.assertAlmostEqual(job.words("A.pdf")[0][0].x, 12 + 36, delta=0.02)
                self.assertLessEqual(set(os.listdir(job.settings.parent)), {"settings.ini", "settings.ini.lock"})
                new = job.settings.read_text()
                whole = new != old
                self.assertTrue(new.startswith(old), new)
                self.assertEqual([f"{name}=" in new for name in OWN_VALUES], [whole] * len(OWN_VALUES))
                self.assertEqual(str(job.settings) in run.errors, not whole, run.errors)
        self.assertTrue(whole, "there was room at last")


class Rights(JobTest):
    def check(self, *arguments, **options):
        job = self.new_job()
        job.write("A.OUT", "Seite")
        prefix = options.pop("prefix")(job.folder)
        run = job.run("A.OUT", *arguments, prefix=prefix)
        self.assertEqual(job.names(), ["A.OUT"])
        return run.errors

    def test_a_folder_that_cannot_be_written(self):
        def forbidden(folder):
            self.addCleanup(folder.chmod, 0o755)
            folder.chmod(0o555)
            return without_privileges()

        ways = {"Berechtigung": forbidden}
        if NAMESPACE:
            ways["schreibgeschützt"] = lambda folder: on_disk(folder, "size=64k", "bind,ro")
        for reason, prefix in ways.items():
            with self.subTest(reason):
                errors = self.check(prefix=prefix).splitlines()
                self.assertEqual(len(errors), 2, errors)
                self.assertRegex(errors[0], f"KRVWINPR.OK .*{reason}")
                self.assertRegex(errors[1], "'A.OUT' abgebrochen, .*„A.pdf“ .*in einem anderen Ordner")
                errors = self.check("/DEBUG", prefix=prefix)
                self.assertRegex(errors, f"^KRVWinPr: Laufzeitfehler '70': .*KRVWinPr.LOG .*{reason}.*\n$")

    def test_names_that_are_taken_by_folders(self):
        for name in ("KRVWINPR.OK", "KRVWinPr.LOG"):
            with self.subTest(name):
                job = self.new_job()
                (job.folder / name).mkdir()
                job.write("A.OUT", "Seite")
                run = job.run("A.OUT", *(["/DEBUG"] if name.endswith("LOG") else []))
                self.assertRegex(run.errors, f"{name} .*Ordner")
                self.assertEqual(job.pdfs() != [], name == "KRVWINPR.OK")


class SeveralJobs(JobTest):
    SETTINGS = f"# Kopf\n[{PRINTER_KEY}]\nLinkerRand=720\nunverständlich\n"

    def assert_settings_whole(self):
        own = [line for line in self.job.settings_lines() if re.match(f"({'|'.join(OWN_VALUES)})=.", line)]
        # They are stored in two steps: those of the start, and the printer.
        names = {line.split("=")[0] for line in own}
        self.assertIn(names, (set(), set(OWN_VALUES[:3]), set(OWN_VALUES)))
        self.assertEqual(len(own), len(names))
        rest = [line for line in self.job.settings_lines() if line not in own]
        self.assertEqual(rest, [f"[{PRINTER_KEY}]", "LinkerRand=720", "unverständlich"] +
                         ([f"[{PRODUCT_KEY}]"] if own else []))
        return names

    def test_jobs_at_the_same_time_do_not_get_in_each_others_way(self):
        text = b"".join(b"Seite %d\f" % number for number in range(40))
        for _ in range(2 if SLOW else 5):
            job = self.new_job()
            job.write_settings(self.SETTINGS)
            job.write("A.OUT", text)
            runs = [job.start("A.OUT", "/DEBUG") for _ in range(6)]
            for run in runs:
                job.check(run.wait(60))
                self.assertEqual(run.errors, "")
            names = ["A.pdf", *(f"A ({number}).pdf" for number in range(2, 7))]
            self.assertEqual(job.names(), sorted([*names, "A.OUT", "KRVWINPR.OK", "KRVWinPr.LOG"]))
            self.assertEqual(job.read("A.OUT"), text)
            self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)
            for name in names:
                job.assert_sound(name, 40)
            self.assertEqual(job.log().count("> Programm regulär beendet!"), 6)
            self.assertEqual(self.assert_settings_whole(), set(OWN_VALUES))

    def test_a_killed_job_leaves_nothing_that_looks_finished(self):
        text = b"".join(b"Seite %d\r\n" % number * 20 + b"\f" for number in range(20_000))
        for arguments, delays in (([], (0, 0.02, 0.05, 0.1)), (["", PRINTER, "/WAIT"], (0.03, 0.1))):
            for delay in delays:
                with self.subTest(arguments=arguments, delay=delay):
                    job = self.new_job()
                    job.write_settings(self.SETTINGS)
                    job.write("A.OUT", text)
                    run = job.start("A.OUT", *arguments)
                    end = time.monotonic() + 30
                    while not arguments and job.read("KRVWINPR.OK") is None and time.monotonic() < end:
                        time.sleep(0.001)
                    time.sleep(delay)
                    run.kill()
                    self.assertEqual(run.process.returncode, -signal.SIGKILL, "it was still printing")
                    self.assertEqual(job.pdfs(), [])
                    if nameless_files(job.folder):
                        self.assertEqual(job.names(), ["A.OUT"] if arguments else ["A.OUT", "KRVWINPR.OK"])
                    self.assertEqual(job.read("KRVWINPR.OK"), None if arguments else OK_TEXT)
                    self.assert_settings_whole()
                    # The next job is not hindered by what the killed one may have left, not even its lock.
                    job.write("B.OUT", "Seite")
                    self.assertEqual(job.run("B.OUT", timeout=20).errors, "")
                    self.assertEqual(job.pdfs(), ["B.pdf"])
                    self.assertEqual(self.assert_settings_whole(), set(OWN_VALUES))


class Settings(JobTest):
    def test_what_cannot_be_understood_is_kept_and_hides_nothing(self):
        source = random.Random(20261121)
        for length in (0, 1, 2, 3, 10, 1000, 100_000):
            noise = source.randbytes(length).replace(b"[", b"(")
            job = self.new_job()
            job.write_settings(f"[kaputt\nLinkerRand=2\n[{PRINTER_KEY}]\nwas?\nLinkerRand=720\n[?\n".encode() + noise)
            old = job.settings.read_bytes()
            job.write("A.OUT", "Seite")
            job.run("A.OUT")
            self.assertAlmostEqual(job.words("A.pdf")[0][0].x, 48, delta=0.02)
            self.assertTrue(job.settings.read_bytes().startswith(old))
            self.assertLessEqual({f"{name}=" for name in OWN_VALUES},
                                 {re.sub("=.*", "=", line) for line in job.settings_lines()})

    def test_settings_that_cannot_be_reached_are_left_alone(self):
        def unreadable(job):
            job.write_settings("[x]\n")
            job.settings.chmod(0)

        def folder(job):
            job.settings.mkdir(parents=True)

        def pipe(job):
            job.settings.parent.mkdir(parents=True)
            os.mkfifo(job.settings)

        def blocked(job):
            job.settings.parents[1].write_text("kein Ordner")

        def read_only(job):
            job.printer_settings("LinkerRand=720")
            job.settings.parent.chmod(0o555)
            self.addCleanup(job.settings.parent.chmod, 0o755)

        for prepare, x in ((unreadable, 12), (folder, 12), (pipe, 12), (blocked, 12), (read_only, 48)):
            with self.subTest(prepare.__name__):
                job = self.new_job()
                prepare(job)
                job.write("A.OUT", "Seite")
                top = job.settings.parents[1]
                before = self.state(top)
                run = job.run("A.OUT", prefix=without_privileges())
                self.assertAlmostEqual(job.words("A.pdf")[0][0].x, x, delta=0.02)
                self.assertEqual(self.state(top), before)
                self.assertIn(f"Die Einstellungen konnten nicht gespeichert werden ({job.settings})", run.errors)

    @staticmethod
    def state(top):
        """Everything below a folder, but for the settings' lock: mode and content."""
        entries = {}
        for path in [top, *top.rglob("*")]:
            if path.suffix != ".lock":
                mode = stat.S_IMODE(path.stat().st_mode)
                content = path.read_bytes() if path.is_file() and os.access(path, os.R_OK) else None
                entries[path] = (mode, content)
        return entries


if __name__ == "__main__":
    unittest.main()
