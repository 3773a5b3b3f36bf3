"""Bad input, missing rights, full disks, killed and simultaneous jobs."""

import contextlib
import os
import random
import re
import resource
import shutil
import signal
import socket
import time
import unittest

from support import (CAN_MOUNT, LOG_LINE, NAMESPACE, OK_TEXT, OWN_VALUES, PRINTER, PRINTER_KEY, PRODUCT_KEY, PROGRAM,
                     SLOW, WITHOUT_PRIVILEGES, JobTest, needs_namespace, on_disk)

# What starts a command where there is no /proc.
WITHOUT_PROC = [*NAMESPACE, "sh", "-c", 'mount -t tmpfs tmpfs /proc && exec "$@"', "sh"]


class Surroundings(JobTest):
    def test_what_cannot_be_read_is_refused_with_the_reason(self):
        (self.job.folder / "ORDNER").mkdir()
        os.mkfifo(self.job.folder / "ROHR")
        self.job.write("GEHEIM.OUT", "Seite").chmod(0)
        for argument, number, reason in (
                ("FEHLT.OUT", 53, "Datei nicht gefunden: FEHLT.OUT"), ("ORDNER", 75, "ORDNER .*Ordner"),
                ("fehlt/A.OUT", 76, "Pfad nicht gefunden: fehlt/A.OUT .*Ordner"), ("ROHR", 75, "ROHR .*Datei"),
                ("X" * 300, 52, "XXX .*zu lang"), ("GEHEIM.OUT", 70, "GEHEIM.OUT .*Berechtigung")):
            with self.subTest(argument):
                run = self.job.run(argument, prefix=WITHOUT_PRIVILEGES)
                self.assertRegex(run.errors, rf"^KRVWinPr: Druckauftrag '{argument}' abgebrochen, "
                                             rf"Fehler {number}: .*{reason}.*\n$")
                self.assertEqual((self.job.read("KRVWINPR.OK"), self.job.pdfs()), (None, []))
        # A host that waits must be let go all the same.
        self.job.run("FEHLT.OUT", "/WAIT")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_a_print_file_that_is_the_completion_file_is_refused(self):
        for real, given, arguments in (("KRVWINPR.OK", "krvwinpr.ok", []), ("krvwinpr.ok", "A.OUT", ["/WAIT"])):
            with self.subTest(real):
                job = self.new_job()
                job.write(real, "Seite")
                if given == "A.OUT":
                    (job.folder / given).symlink_to(real)
                run = job.run(given, "", PRINTER, *arguments)
                self.assertRegex(run.errors, f"'{given}' abgebrochen, Fehler 75: .*die Datei KRVWINPR.OK selbst")
                self.assertEqual((job.read(real), job.pdfs()), (b"Seite", []))

    @needs_namespace
    @unittest.skipIf(SLOW, "the sanitizers need /proc")
    def test_modules_come_from_the_programs_folder_alone(self):
        relative = [*NAMESPACE, "sh", "-c", 'mount -t tmpfs tmpfs /proc && shift && exec "$0" "$@"',
                    os.path.relpath(PROGRAM, self.job.folder)]
        self.job.write("A.OUT", "Seite")
        self.job.write("krvwinpr-pdf.so", "")
        run = self.job.run("A.OUT", prefix=relative)
        self.assertRegex(run.errors, "findet seinen eigenen Ordner nicht")
        self.assertEqual(self.job.run("A.OUT", prefix=WITHOUT_PROC).errors, "")
        self.assertEqual(self.job.lines("A.pdf"), [["Seite"]])

    def test_random_bytes(self):
        source = random.Random(20261121)
        macros = b"^FE ^BC1,2,A9\\ ^LR ^TR ^GR ^GZ1 ^BE ^10 ^SE ^LS ^PL ^HE ^CR , . 1 9 E e - \\ \r\n \f".split(b" ")
        pages = 0
        for length in (*range(1, 9), 1000, 4095, 4096, 4097, 300_000, 1_000_000):
            for data in (source.randbytes(length), b"".join(source.choices(macros, k=length))[:length], b"x" * length):
                with self.subTest(length=length, data=data[:20]):
                    job = self.new_job()
                    job.write("A.OUT", data)
                    job.run("A.OUT", *source.choice(([], ["/TWOPASS"])))
                    self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)
                    if job.pdfs():
                        pages += 1
                        job.assert_sound("A.pdf")
        self.assertGreaterEqual(pages, 20)

    def test_more_pages_than_can_be_counted(self):
        self.job.write("A.OUT", b"Seite\f" * 40_000)
        run = self.job.run("A.OUT", "/DEBUG", timeout=200)
        self.assertIn("'A.OUT' nur bis Seite 32767 gedruckt, Fehler 6: Überlauf. ", run.errors)
        self.assertIn(">     Allgemeiner Fehler in DoReport 6 Überlauf", self.job.log())
        self.job.assert_sound("A.pdf", 32767)

    def test_without_a_print_service_the_pdf_printer_prints(self):
        dead = str(self.job.folder / "cups.sock")
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(dead)
        for server, printer in (("/nirgendwo/cups.sock", ""), (dead, ""), ("127.0.0.1:1", "KORVANO pdf")):
            with self.subTest(server=server, printer=printer):
                job = self.new_job()
                job.write("A.OUT", "Seite")
                self.assertEqual(job.run("A.OUT", "", printer, CUPS_SERVER=server, timeout=30).errors, "")
                self.assertEqual(job.lines("A.pdf"), [["Seite"]])


class LittleRoom(JobTest):
    """Whatever there is no room for is missing as a whole, and the user is told."""

    SHORT = b"Seite\r\n\f" * 3
    LONG = b"".join(b"Seite %d %s\r\n\f" % (n, random.Random(n).randbytes(300).hex().encode()) for n in range(200))

    def outcome(self, data, *arguments, **options):
        """Whether completion file, PDF and log are there whole."""
        job = self.job
        job.write("A.OUT", data)
        errors = job.run("A.OUT", *arguments, **options).errors
        self.assertIn(job.read("KRVWINPR.OK"), (None, OK_TEXT))
        log = (job.read("KRVWinPr.LOG") or b"\r\n").decode()
        self.assertTrue(log.endswith("\r\n"), log[-100:])
        for line in log.removesuffix("\r\n").split("\r\n"):
            self.assertRegex(line, LOG_LINE)
        logged = "/DEBUG" not in arguments or log.endswith("> Programm regulär beendet!\r\n\r\n")
        there = {"KRVWINPR.OK": "KRVWINPR.OK" in job.names(), "„A.pdf“": job.pdfs() != [], "KRVWinPr.LOG": logged}
        for name in job.pdfs():
            # A job that cannot log any more delivers the pages that it has finished.
            job.assert_sound(name, data.count(b"\f") if logged else None)
        reasons = [line for line in errors.splitlines() if re.search("kein Platz|größer als", line)]
        named = {name for name in there if any(name in line for line in reasons)}
        if logged:
            self.assertEqual(named, {name for name, present in there.items() if not present}, errors)
        else:
            self.assertIn("KRVWinPr.LOG", named, errors)
        self.assertEqual(errors == "", all(there.values()), errors)
        return tuple(there.values())

    def check(self, rooms, limited):
        """Each job in each of the rooms; limited gives the options of a run in one of them."""
        outcomes = set()
        for data, sizes in zip((self.SHORT, self.LONG), rooms):
            for size in sizes:
                for arguments in ([], ["/DEBUG"], ["", PRINTER, "/WAIT"]):
                    with self.subTest(size=size, arguments=arguments):
                        self.new_job()
                        outcomes.add(self.outcome(data, *arguments, **limited(size)))
        self.assertLessEqual({(False, False, False), (False, False, True), (True, False, True), (True, True, True)},
                             outcomes)

    @needs_namespace
    def test_a_full_disk(self):
        self.check((range(4, 44, 4), (160, 200, 300, 1000)),
                   lambda room: {"prefix": on_disk(self.job.folder, f"size={room}k")})

    def test_a_limit_to_the_size_of_files(self):
        self.check(((0, 1, 37, 38, 1000, 12_000), (100, 4096, 50_000, 1_000_000)),
                   lambda size: {"limits": lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))})

    @needs_namespace
    def test_a_full_disk_under_the_settings(self):
        for room, whole in ((4, False), (16, True)):
            with self.subTest(room=room):
                job = self.new_job()
                job.write_settings("LinkerRand=720", "# von Hand", "x" * 3000)
                old = job.settings.read_text()
                job.write("A.OUT", "Seite")
                run = job.run("A.OUT", prefix=on_disk(job.settings.parent, f"size={room}k"))
                self.assertAlmostEqual(job.words("A.pdf")[0][0].x, 12 + 36, delta=0.02)
                self.assertLessEqual(set(os.listdir(job.settings.parent)), {"settings.ini", "settings.ini.lock"})
                new = job.settings.read_text()
                self.assertTrue(new.startswith(old), new)
                self.assertEqual([f"{name}=" in new for name in OWN_VALUES], [whole] * len(OWN_VALUES))
                self.assertEqual(str(job.settings) in run.errors, not whole, run.errors)


@unittest.skipIf(SLOW, "the sanitizers have allocators of their own")
class LittleMemory(JobTest):
    """Wherever memory ends, the program ends by itself, prints whole pages or says that it did not."""

    def run_job(self, *arguments, **options):
        self.new_job().sample_letter()
        return self.job.run("BRIEF.OUT", *arguments, **options).errors

    def test_each_allocation_in_turn(self):
        preload = {"LD_PRELOAD": os.environ["KRVWINPR_NO_MEMORY"]}
        self.run_job("HINTERGR.PCX", "", "/DEBUG")
        lines, outcomes = [sorted(page) for page in self.job.lines("BRIEF.pdf")], set()
        for arguments in (["HINTERGR.PCX", "", "/DEBUG"], ["KEINEGRAFIK", PRINTER, "/WAIT"], ["FEHLT.PCX"]):
            self.run_job(*arguments, KRV_COUNT="../count", **preload)
            count = int((self.job.folder / "../count").read_text())
            self.assertGreater(count, 200)
            for number in range(1, count, max(1, count // 40)):
                with self.subTest(arguments=arguments, number=number):
                    errors = self.run_job(*arguments, KRV_FAIL=str(number), **preload)
                    whole = self.job.pdfs() and [sorted(page) for page in self.job.lines("BRIEF.pdf")] == lines
                    self.assertTrue(whole or errors)
                    self.assertTrue("/WAIT" not in arguments or self.job.read("KRVWINPR.OK") == OK_TEXT, errors)
                    outcomes.add((bool(whole), "Nicht genügend Speicher" in errors))
        self.assertLessEqual({(True, False), (False, True)}, outcomes)

    def test_allocations_of_a_job_whose_pages_are_compressed_beside(self):
        preload = {"LD_PRELOAD": os.environ["KRVWINPR_NO_MEMORY"]}

        def print_it(**options):
            self.new_job().write("A.OUT", LittleRoom.LONG)
            return self.job.run("A.OUT", "KEINEGRAFIK", PRINTER, **options).errors
        print_it(KRV_COUNT="../count", **preload)
        count = int((self.job.folder / "../count").read_text())
        for number in range(count // 2, count, max(1, count // 60)):
            with self.subTest(number=number):
                errors = print_it(KRV_FAIL=str(number), **preload)
                self.assertTrue(self.job.pdfs() or errors)
                for name in self.job.pdfs():
                    self.job.assert_sound(name, None if errors else LittleRoom.LONG.count(b"\f"))

    def test_a_limit_to_all_memory(self):
        outcomes = set()
        for size in (20, 60, 100, 400):
            limit = (size << 20, size << 20)
            errors = self.run_job("", PRINTER, "/WAIT", limits=lambda: resource.setrlimit(resource.RLIMIT_AS, limit))
            self.assertEqual((self.job.read("KRVWINPR.OK"), bool(errors)), (OK_TEXT, not self.job.pdfs()))
            outcomes.add("Nicht genügend Speicher" in errors)
        self.assertEqual(outcomes, {True, False})


class Rights(JobTest):
    def test_a_folder_that_cannot_be_written(self):
        for reason in ("Berechtigung", *(["schreibgeschützt"] if CAN_MOUNT else [])):
            for arguments, errors in (
                    ([], f"^.*KRVWINPR.OK .*{reason}.*\n.*'A.OUT' nicht gedruckt, .*„A.pdf“ .*einem anderen Ordner.*\n$"),
                    (["/DEBUG"], f"^KRVWinPr: Laufzeitfehler '70': .*KRVWinPr.LOG .*{reason}.*\n.* Bericht in .*\n$")):
                with self.subTest(reason, arguments=arguments):
                    job = self.new_job()
                    job.write("A.OUT", "Seite")
                    prefix = WITHOUT_PRIVILEGES
                    if reason == "Berechtigung":
                        self.addCleanup(job.folder.chmod, 0o755)
                        job.folder.chmod(0o555)
                    else:
                        prefix = on_disk(job.folder, "size=64k", "bind,ro")
                    self.assertRegex(job.run("A.OUT", *arguments, prefix=prefix).errors, errors)
                    self.assertEqual(job.names(), ["A.OUT"])

        # What the host has put there it can have written over.
        job = self.new_job()
        job.write("KRVWINPR.OK", "alt, und viel länger als die Zeile, die hineingehört")
        job.write("A.OUT", "Seite")
        self.addCleanup(job.folder.chmod, 0o755)
        job.folder.chmod(0o555)
        job.run("A.OUT", prefix=WITHOUT_PRIVILEGES)
        self.assertEqual(job.read("KRVWINPR.OK"), OK_TEXT)

    def test_names_that_are_taken_by_folders(self):
        for name, arguments, pdfs in (("KRVWINPR.OK", [], ["A.pdf"]), ("KRVWinPr.LOG", ["/DEBUG"], [])):
            with self.subTest(name):
                job = self.new_job()
                (job.folder / name).mkdir()
                job.write("A.OUT", "Seite")
                self.assertRegex(job.run("A.OUT", *arguments).errors, f"{name} .*Ordner")
                self.assertEqual(job.pdfs(), pdfs)

    def test_settings_that_cannot_be_reached_are_left_alone(self):
        ways = {"unreadable": (12, lambda settings: settings.chmod(0)),
                "a folder": (12, lambda settings: (settings.unlink(), settings.mkdir())),
                "a pipe": (12, lambda settings: (settings.unlink(), os.mkfifo(settings))),
                "blocked": (12, lambda settings: (shutil.rmtree(settings.parent), settings.parent.write_text("x"))),
                "read-only": (48, lambda settings: settings.parent.chmod(0o555))}
        for way, (x, prepare) in ways.items():
            with self.subTest(way):
                job = self.new_job()
                job.write_settings("LinkerRand=720")
                prepare(job.settings)
                job.write("A.OUT", "Seite")
                before = self.state(job.settings.parents[1])
                run = job.run("A.OUT", prefix=WITHOUT_PRIVILEGES)
                self.assertAlmostEqual(job.words("A.pdf")[0][0].x, x, delta=0.02)
                self.assertEqual(self.state(job.settings.parents[1]), before)
                self.assertIn(f"Die Einstellungen konnten nicht gespeichert werden ({job.settings})", run.errors)
                job.settings.parent.chmod(0o755)

    @staticmethod
    def state(top):
        """Everything below a folder, but for the settings' lock: mode and content."""
        return {path: (path.stat().st_mode, path.is_file() and os.access(path, os.R_OK) and path.read_bytes())
                for path in top.rglob("*") if path.suffix != ".lock"}


class SeveralJobs(JobTest):
    SETTINGS = ["LinkerRand=720", "unverständlich"]

    def assert_settings_whole(self, *counts):
        lines = [line for line in self.job.settings.read_text().splitlines() if line and line[0] not in "#;"]
        own = [line for line in lines if re.match(f"({'|'.join(OWN_VALUES)})=.", line)]
        # They are stored in two steps: those of the start, and the printer.
        self.assertIn(len(own), counts)
        self.assertEqual({line.split("=")[0] for line in own}, set(OWN_VALUES[:len(own)]))
        self.assertEqual([line for line in lines if line not in own],
                         [f"[{PRINTER_KEY}]", *self.SETTINGS] + ([f"[{PRODUCT_KEY}]"] if own else []))

    def test_jobs_at_the_same_time_do_not_get_in_each_others_way(self):
        text = b"".join(b"Seite %d\f" % number for number in range(40))
        names = ["A.pdf", *(f"A ({number}).pdf" for number in range(2, 7))]
        for _ in range(2 if SLOW else 5):
            job = self.new_job()
            job.write_settings(*self.SETTINGS)
            job.write("A.OUT", text)
            for run in [job.start("A.OUT", "/DEBUG") for _ in names]:
                job.check(run.finish(60))
                self.assertEqual(run.errors, "")
            self.assertEqual(job.names(), sorted([*names, "A.OUT", "KRVWINPR.OK", "KRVWinPr.LOG"]))
            self.assertEqual((job.read("A.OUT"), job.read("KRVWINPR.OK")), (text, OK_TEXT))
            for name in names:
                job.assert_sound(name, 40)
            self.assertEqual(job.log().count("> Programm regulär beendet!"), 6)
            self.assert_settings_whole(4)

    @needs_namespace
    @unittest.skipIf(SLOW, "the sanitizers need /proc")
    def test_a_job_that_is_told_to_end_leaves_no_unfinished_file(self):
        self.job.write("A.OUT", b"".join(b"Seite %d\r\n" % number * 20 + b"\f" for number in range(20_000)))
        self.job.write("KRVWINPR.OK", "")
        for number in (signal.SIGTERM, signal.SIGHUP):
            # Without /proc a file that has no name cannot be given one, so it has a hidden one from the beginning.
            run = self.job.start("A.OUT", prefix=WITHOUT_PROC)
            end = time.monotonic() + 30
            while len(self.job.names()) < 3 and time.monotonic() < end:
                time.sleep(0.001)
            run.send_signal(number)
            run.finish(20)
            self.assertEqual(run.returncode, -number, "it was still printing")
            self.assertEqual(self.job.names(), ["A.OUT", "KRVWINPR.OK"])

    def test_a_killed_job_leaves_nothing_that_looks_finished(self):
        text = b"".join(b"Seite %d\r\n" % number * 20 + b"\f" for number in range(100_000))
        for arguments, delay in (*(([], delay) for delay in (0, 0.02, 0.05, 0.1)),
                                 *((["", PRINTER, "/WAIT"], delay) for delay in (0.03, 0.1))):
            with self.subTest(arguments=arguments, delay=delay):
                job = self.new_job()
                job.write_settings(*self.SETTINGS)
                job.write("A.OUT", text)
                run = job.start("A.OUT", *arguments)
                end = time.monotonic() + 30
                while not arguments and job.read("KRVWINPR.OK") is None and time.monotonic() < end:
                    time.sleep(0.001)
                time.sleep(delay)
                run.end()
                self.assertEqual(run.returncode, -signal.SIGKILL, "it was still printing")
                self.assertEqual(job.pdfs(), [])
                self.assertEqual(job.read("KRVWINPR.OK"), None if arguments else OK_TEXT)
                with contextlib.suppress(OSError):  # where the file system can keep a file that has no name yet
                    os.close(os.open(job.folder, os.O_TMPFILE | os.O_RDWR))
                    self.assertEqual(job.names(), ["A.OUT"] if arguments else ["A.OUT", "KRVWINPR.OK"])
                self.assert_settings_whole(0, 3, 4)
                # The next job is not hindered by what the killed one may have left, not even its lock.
                job.write("B.OUT", "Seite")
                self.assertEqual(job.run("B.OUT", timeout=20).errors, "")
                self.assertEqual(job.pdfs(), ["B.pdf"])
                self.assert_settings_whole(4)


if __name__ == "__main__":
    unittest.main()
