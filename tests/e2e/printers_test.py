"""The printers of the Linux adapter against a private print server."""

import os
import re
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from private_cups import PrivateCups

BUILD = Path(os.environ.get("KRV_BUILD", Path(__file__).resolve().parents[2] / "build/linux"))


def spooler(environment, *calls, cwd=None):
    """The lines that the spooler's calls answer with, one after the other, in one process."""
    result = subprocess.run([str(BUILD / "krv-printers"), *calls], env=environment, cwd=cwd, stdin=subprocess.DEVNULL,
                            stdout=subprocess.PIPE, text=True, timeout=60, check=True)
    return result.stdout.splitlines()


def pdf_words(data):
    """The words of a PDF, each with its left, top, right and bottom edge in points."""
    with tempfile.NamedTemporaryFile(suffix=".pdf") as file:
        file.write(data)
        file.flush()
        words = subprocess.run(["pdftotext", "-bbox", file.name, "-"], stdout=subprocess.PIPE, text=True, check=True)
    found = re.findall(r'<word xMin="(.*?)" yMin="(.*?)" xMax="(.*?)" yMax="(.*?)">(.*?)</word>', words.stdout)
    return [(word, *map(float, edges)) for *edges, word in found]


class Printers(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.cups = PrivateCups().__enter__()
        cls.addClassCleanup(cls.cups.__exit__)
        cls.cups.add_tray_queue("Zentrale", comment="Büro", location="Zimmer 3", print_scaling_default="fit")
        cls.cups.add_pdf_queue("archiv")
        cls.cups.add_tray_queue("Büro")

    def call(self, *calls, **environment):
        return spooler(self.cups.environment(**environment), *calls)

    def record(self, queue):
        return dict(line.split(" ", 1) for line in self.call(f"record|{queue}"))

    def test_queues_come_in_the_servers_order_before_the_builtin_printer(self):
        self.assertEqual(self.call("names", "running"), ["archiv", "Büro", "Zentrale", "Korvano PDF", "1"])

    def test_default_is_the_users_then_the_servers_then_the_builtin_printer(self):
        self.assertEqual(self.call("default"), ["Korvano PDF"])
        self.assertEqual(self.call("default", LPDEST="archiv"), ["archiv"])
        self.assertEqual(self.call("default", PRINTER="archiv"), ["archiv"])
        self.assertEqual(self.call("default", LPDEST="Fehlt"), ["Korvano PDF"])
        self.cups.set_default("archiv")
        self.assertEqual(self.call("default"), ["archiv"])
        self.assertEqual(self.call("default", LPDEST="Korvano PDF"), ["Korvano PDF"])
        self.assertEqual(self.call("set-default|Zentrale", "default"), ["Zentrale"])
        self.assertEqual(self.record("Zentrale")["attributes"], "68")
        self.assertEqual(self.record("archiv")["attributes"], "64")
        refused = self.call("set-default|Korvano PDF", "set-default|Fehlt", "default")
        self.assertTrue(refused[0].startswith("error ") and refused[1].startswith("error 1030 "), refused)
        self.assertEqual(refused[2], "Zentrale")

    def test_record_and_bins_say_what_the_driver_says(self):
        record = self.record("Zentrale")
        self.assertEqual(record["driver"], "Test Laser mit Schächten")
        self.assertEqual((record["comment"], record["location"]), ("Büro", "Zimmer 3"))
        self.assertTrue(record["port"].startswith("record:/"), record)
        self.assertEqual((record["status"], record["ppm"], record["priority"]), ("0", "24", "50 50"))
        self.assertEqual(self.call("bins|Büro", LC_ALL="de_DE.UTF-8"),
                         ["1 Automatisch", "2 Fach 1", "3 Fach 2", "4 Manuelle Zufuhr"])
        self.assertEqual(self.call("bins|Büro", LC_ALL="en_GB.UTF-8")[1], "2 Tray 1")
        self.assertEqual(self.call("bins|archiv", "bins|Korvano PDF"), [])

    def test_device_is_the_queues_own(self):
        # Letter at 1200 x 600 dpi with margins of 18, 20, 16 and 22 points.
        self.assertEqual(self.call("device|Zentrale"),
                         ["page 9634 6250 1200 600 10200 6600 300 183", "options 1 0 1 2"])
        self.assertEqual(self.call("device|archiv"), ["page 4961 7016 600 600 4961 7016 0 0", "options 9 0 1 2"])

    def test_options_arrive_as_the_drivers_own(self):
        before = len(self.cups.jobs("Zentrale"))
        self.assertEqual(self.call(r"print|Zentrale|auftrag\BRIEF.TXT|bin=2,paper=9,color=1:Eins|Zwei|bin=4,turn=2:Drei"
                                   "|bin=1,paper=1,color=2,turn=1:Vier"), [])
        jobs = self.cups.wait_for_jobs("Zentrale", before + 3)[before:]
        self.assertEqual([job.title for job in jobs], [r"auftrag\BRIEF.TXT"] * 3)
        self.assertEqual([job.options["InputSlot"] for job in jobs], ["Tray1", "Manual", "Auto"])
        self.assertEqual([job.options["PageSize"] for job in jobs], ["A4", "A4", "Letter"])
        self.assertEqual([job.options.get("ColorModel") for job in jobs], ["Gray", "Gray", None])
        self.assertEqual([job.options["orientation-requested"] for job in jobs], ["3", "4", "3"])
        self.assertEqual([[word for word, *_ in pdf_words(job.data)] for job in jobs],
                         [["Eins", "Zwei"], ["Drei"], ["Vier"]])
        # True to scale although the queue would fit the page: the text begins at the queue's margins for A4, 14 points
        # on the left and 22 at the top; a turned page lies with its top at the sheet's left edge and begins 16 points
        # from below.
        _, left, top, *_ = pdf_words(jobs[0].data)[0]
        self.assertAlmostEqual(left, 14, delta=0.2)
        self.assertAlmostEqual(top, 22, delta=2)
        _, left, _, _, bottom = pdf_words(jobs[1].data)[0]
        self.assertAlmostEqual(left, 14, delta=2)
        self.assertAlmostEqual(842 - bottom, 16, delta=0.2)

    def test_a_queue_without_a_driver_gets_the_pdf_as_it_is(self):
        before = len(self.cups.jobs("archiv"))
        self.assertEqual(self.call("print|archiv|Rechnung.txt|Eins"), [])
        job = self.cups.wait_for_jobs("archiv", before + 1)[before]
        self.assertEqual(job.content_type, "application/pdf")
        self.assertTrue(job.data.startswith(b"%PDF-") and job.data.rstrip().endswith(b"%%EOF"))

    def test_jobs_wait_in_a_disabled_queue_until_purged(self):
        self.cups.disable("Büro")
        self.assertEqual(self.call("print|Büro|Eins|A", "print|Büro|Zwei|bin=2:A|bin=3:B"), [])
        self.assertEqual(self.call("jobs|Büro"), ["3"])
        record = self.record("Büro")
        self.assertEqual((record["status"], record["jobs"]), ("1", "3"))
        self.assertEqual(self.call("admin|Büro", "purge|Büro", "jobs|Büro"), ["1", "0"])
        self.assertEqual(self.cups.waiting("Büro"), [])
        self.cups.enable("Büro")
        self.assertEqual(self.record("Büro")["status"], "0")

    def test_refusals_name_the_queue_and_the_remedy(self):
        self.cups.reject("Büro")
        self.addCleanup(self.cups.accept, "Büro")
        refused, record = self.call("print|Büro|Eins|A"), self.record("Büro")
        self.assertRegex(refused[0], "^error 1286 Drucker „Büro“: .*nimmt keine Aufträge an.*cupsaccept Büro")
        self.assertEqual((record["status"], record["jobs"]), ("4096", "0"))
        for call in ("record", "jobs", "bins", "device", "purge", "admin"):
            self.assertRegex(self.call(f"{call}|Fehlt")[0], "^error 1030 Drucker „Fehlt“: .*lpstat -e", call)
        self.assertEqual(self.call("print|Zentrale|Eins|bin=5:A"), ["error 380 Ungültiger Eigenschaftswert"])


class Rights(unittest.TestCase):
    def test_purging_other_peoples_jobs_needs_the_right_to(self):
        with PrivateCups(may_purge=False) as cups:
            cups.add_pdf_queue("archiv")
            cups.disable("archiv")
            answer = spooler(cups.environment(), "print|archiv|Eins|A", "admin|archiv", "purge|archiv", "jobs|archiv")
        self.assertEqual([answer[0], answer[2]], ["0", "1"])
        self.assertRegex(answer[1], "^error 10[0-9]+ Drucker „archiv“: .*Verwalter")


class Faults(unittest.TestCase):
    def test_a_server_that_stops_or_hangs_leaves_the_builtin_printer(self):
        calls = ("names", "default", "running", "record|archiv", "jobs|archiv", "print|archiv|Eins|A")
        with PrivateCups() as cups, tempfile.TemporaryDirectory() as folder:
            cups.add_pdf_queue("archiv")
            cups.set_default("archiv")
            cups.suspend()
            start = time.monotonic()
            hanging = spooler(cups.environment(), *calls)
            seconds = time.monotonic() - start
            cups.stop()
            stopped = spooler(cups.environment(), *calls, r"print|Korvano PDF|a\BRIEF.TXT|A", cwd=folder)
            files = os.listdir(folder)
            cups.start()
            again = spooler(cups.environment(), *calls[:3])
        for answer, code, text in ((hanging, 110, "antwortet nicht"), (stopped, 111, "nicht erreichbar")):
            self.assertEqual(answer[:3], ["Korvano PDF", "Korvano PDF", "0"])
            self.assertEqual(len(answer), 6)
            for line in answer[3:]:
                self.assertRegex(line, f"^error {code} Drucker „archiv“: .*{text}")
        self.assertLess(seconds, 6)
        self.assertEqual(files, ["BRIEF.pdf"])
        self.assertEqual(again, ["archiv", "Korvano PDF", "archiv", "1"])


if __name__ == "__main__":
    unittest.main()
