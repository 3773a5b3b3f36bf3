"""The messenger of hosts in an emulator: orders as the host's program leaves them, and all that can go wrong."""

import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import time
import unittest

from messenger_orders import answer, mark_of, order, order_text, wait_for_answer
from private_bus import PrivateBus
from support import OK_TEXT, PRINTER, PRODUCT_KEY, PROGRAM, SLOW, WITHOUT_PRIVILEGES, JobTest

MESSENGER = PROGRAM.with_name("KRVWinPrBote")
KEY = rf"{PRODUCT_KEY}\Bote"
NOBODY = 65534

# What stands for KRVWinPr: notes its arguments, says that it has written the completion file, and does what the first one says.
FAKE = """#!/bin/sh
say() { printf K >&"$KRVWINPR_STARTER"; }
echo "$@" >> "%s"
case $1 in
    HAENGT) exec sleep 8;;
    BLEIBT) say; exec sleep 8;;
    STUERZT) kill -SEGV $$;;
    SPAETER) say; sleep 1; echo fertig >> "%s";;
    *) say;;
esac
"""


class MessengerTest(JobTest):
    def setUp(self):
        super().setUp()
        self.root = self.job.folder.parent
        self.seen, self.started = self.root / "gesehen", 0
        self.fake = self.root / "programm"
        self.fake.write_text(FAKE % (self.seen, self.seen))
        self.fake.chmod(0o755)

    def settings(self, *lines, fake=True):
        """What the messenger's key says; no folder is looked at without a reason."""
        values = [*([f"Programm={self.fake}"] if fake else []), "Abfrage=60000", *lines]
        temporary = self.job.settings.with_suffix(".neu")
        self.job.settings.parent.mkdir(parents=True, exist_ok=True)
        temporary.write_text("\n".join((f"[{KEY}]", *values, "")))
        os.replace(temporary, self.job.settings)

    def start(self, folders=None, prefix=(), limits=None, ready="wird überwacht") -> subprocess.Popen:
        """The messenger on these folders, by default that of the job; on those of the settings where there are none."""
        self.started += 1
        folders = [self.job.folder] if folders is None else folders
        with (self.root / f"bote{self.started}.log").open("wb") as errors:
            process = subprocess.Popen([*prefix, MESSENGER, *folders], env=self.job.environment, stderr=errors,
                                       stdin=subprocess.DEVNULL, preexec_fn=limits, start_new_session=True)
        self.addCleanup(lambda: (process.kill(), process.wait()))
        self.said(ready)
        return process

    def log(self) -> str:
        """What the messenger that was started last has written."""
        return (self.root / f"bote{self.started}.log").read_text()

    def said(self, pattern):
        """It has written a line like this, or does soon."""
        self.assertTrue(self.becomes(lambda: re.search(pattern, self.log())), f"{pattern}: {self.log()}")

    def becomes(self, true) -> bool:
        end = time.monotonic() + 15
        while not (result := true()) and time.monotonic() < end:
            time.sleep(0.005)
        return result

    def stop(self, process):
        process.send_signal(signal.SIGTERM)
        self.assertEqual(process.wait(20), 0)
        self.assertNotRegex(self.log(), "Sanitizer|runtime error:")

    def order(self, number, tail, folder=None, **options):
        return order(folder or self.job.folder, number, tail, **options)

    def answered(self, number, letters="ONE", folder=None, seconds=20.0):
        letter, mark, text = wait_for_answer(folder or self.job.folder, number, letters, seconds)
        return letter, mark, " ".join(text.split())

    def runs(self) -> list[str]:
        return self.seen.read_text().splitlines() if self.seen.exists() else []

    def assert_aside(self, name, reason):
        self.said(f"{re.escape(name)} wird nicht ausgeführt: .*{reason}.*{name[:-4]}.ABG")


class Orders(MessengerTest):
    def test_an_order_is_a_call_of_the_program(self):
        self.settings(fake=False)
        process = self.start()
        self.job.write("ÄRGER Ü.OUT", "Größe")
        tail = f' "ÄRGER Ü.OUT"  "{PRINTER}"'
        before = time.monotonic()
        self.order(7, tail)
        self.assertEqual(self.answered(7), ("O", mark_of(7, tail), ""))
        self.assertLess(time.monotonic() - before, 5, "nobody has to look for it")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.order(8, "/INVERT FEHLT.PCX")
        self.assertEqual(self.answered(8)[0], "N")
        self.order(9, "FEHLT.OUT")
        self.assertRegex(self.answered(9)[2], "ohne KRVWINPR.OK zu schreiben")
        self.said("KRV00007.AUF: KRVWinPr ist zu Ende nach")
        self.assertEqual(self.job.lines("ÄRGER Ü.pdf"), [["Größe"]])
        self.stop(process)
        self.assertNotIn("KRVWINPR.BOT", self.job.names())

    def test_what_is_no_proper_order_is_set_aside(self):
        (self.root / "anderswo").mkdir()
        self.settings()
        with self.job.settings.open("a") as settings:
            settings.write(f"[{PRODUCT_KEY}\\Laufwerke]\nC={self.root}\nD={self.root}/anderswo\n")
        bus = self.enterContext(PrivateBus())
        self.job.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address
        whole = order_text(1, "A.OUT", "C:\\AUFTRAG")
        self.order(1, "", data=whole[:-20])
        self.order(2, "", data=whole.replace(b"A.OUT", b"B.OUT"))
        self.order(3, "", data=whole + b"x" * 2000)
        self.order(4, "A.OUT", directory="D:\\AUFTRAG")
        self.order(5, "A.OUT", directory="C:\\AUFTRAG\\..\\X")
        (self.root / "fremd").write_bytes(whole)
        (self.job.folder / "KRV00006.AUF").symlink_to(self.root / "fremd")
        reasons = [".", ".", ".", "Laufwerke", "kein Ordner eines Laufwerks", "Verweis"]
        if os.geteuid() == 0:
            os.chown(self.order(7, "", data=whole), NOBODY, NOBODY)
            reasons.append("gehört dem Benutzer nobody")
        process = self.start()
        for number, reason in enumerate(reasons, 1):
            self.assertEqual(self.answered(number)[0], "E")
            self.assert_aside(f"KRV{number:05}.AUF", reason)
        self.order(8, "GUT", directory="C:\\AUFTRAG")
        self.assertEqual(self.answered(8)[0], "O")
        self.assertEqual(self.runs(), ["GUT"])
        self.assertEqual([name for name in self.job.names() if name.endswith(".AUF")], ["KRV00008.AUF"])
        self.assertEqual((self.root / "fremd").read_bytes(), whole)
        # The desktop is not covered with messages.
        messages = sorted(bus.message() for _ in range(4))
        self.assertTrue(all(f"{self.job.folder}: Der Auftrag KRV0000" in message for message in messages[:3]), messages)
        self.assertIn("Weitere Meldungen des Boten", messages[3])
        self.assertTrue(bus.lines.empty())
        self.stop(process)

    def test_a_thousand_orders_at_once_keep_their_order_and_nobody_else_waiting(self):
        count = 100 if SLOW else 1000
        other = self.root / "zweiter"
        other.mkdir()
        self.settings(f"Ordner1={self.job.folder}")
        for number in range(count):
            self.order(number, f"NR{number}")
        process = self.start([])
        self.settings(f"Ordner1={self.job.folder}", f"Ordner2={other}")
        self.order(5, "ANDERER", other)
        self.assertEqual(self.answered(count - 1, "ASO")[0], "A", "all of them are taken at once")
        self.assertEqual(self.answered(5, folder=other)[0], "O")
        self.assertEqual(self.answered(count - 1, seconds=60)[0], "O")
        self.assertEqual([run for run in self.runs() if run != "ANDERER"], [f"NR{number}" for number in range(count)])
        self.stop(process)


class Faults(MessengerTest):
    def test_two_messengers_print_once(self):
        self.settings()
        first = self.start()
        second = self.start(ready=f"ein anderer Bote aus: .*Prozess {first.pid}")
        self.order(1, "EINS")
        self.assertEqual(self.answered(1)[0], "O")
        before = self.wake_ups(first) + self.wake_ups(second)
        time.sleep(1)
        self.assertLess(self.wake_ups(first) + self.wake_ups(second) - before, 8, "none of them disturbs the other")
        first.kill()
        self.said("wird überwacht")
        self.order(2, "ZWEI")
        self.assertEqual(self.answered(2)[0], "O")
        self.assertEqual(self.runs(), ["EINS", "ZWEI"])
        self.stop(second)

    def wake_ups(self, process) -> int:
        return int(pathlib.Path(f"/proc/{process.pid}/status").read_text().split("voluntary_ctxt_switches:")[1].split()[0])

    def test_a_killed_messenger_loses_nothing_and_repeats_nothing(self):
        self.settings()
        first = self.start()
        self.order(1, "HAENGT")
        self.order(2, "ZWEI")
        self.assertEqual((self.answered(1, "S")[0], self.answered(2, "A")[0]), ("S", "A"))
        self.assertTrue(self.becomes(lambda: self.runs() == ["HAENGT"]))
        first.kill()
        second = self.start()
        self.assertEqual(self.answered(2)[0], "O")
        self.assertRegex(self.answered(1)[2], "mittendrin beendet")
        self.assert_aside("KRV00001.AUF", "mittendrin beendet")
        self.assertEqual(self.runs(), ["HAENGT", "ZWEI"])
        # What is being printed is printed to its end.
        self.order(3, "SPAETER")
        self.assertEqual(self.answered(3)[0], "O")
        self.stop(second)
        self.assertEqual(self.runs()[2:], ["SPAETER"])
        self.assertTrue(self.becomes(lambda: self.runs()[3:] == ["fertig"]))

    def test_a_program_that_does_not_do_its_work(self):
        self.settings()
        process = self.start()
        for number, tail in enumerate(("STUERZT", "BLEIBT", "DANACH"), 1):
            self.order(number, tail)
        self.assertRegex(self.answered(1)[2], r"Signal 11 \(SIGSEGV\)")
        self.assertEqual((self.answered(2)[0], self.answered(3, "A")[0]), ("O", "A"))
        begun = time.monotonic()
        self.assertEqual(self.answered(3)[0], "O")
        self.assertTrue(1.5 < time.monotonic() - begun < 10, "three seconds behind the completion file")
        self.stop(process)
        self.settings(f"Programm={self.root}/fehlt", fake=False)
        process = self.start()
        self.order(4, "VIER")
        self.assertRegex(self.answered(4)[2], "lässt sich nicht starten: Datei nicht gefunden")
        self.assert_aside("KRV00004.AUF", "fehlt")
        self.stop(process)

    def test_a_folder_that_cannot_be_written_or_goes_and_comes_back(self):
        self.settings()
        self.job.folder.chmod(0o555)
        process = self.start(prefix=WITHOUT_PRIVILEGES, ready="wird nicht überwacht, .*KRVWINPR.BOT .*Berechtigung")
        self.job.folder.chmod(0o755)
        self.said("auftrag: wird überwacht")
        shutil.rmtree(self.job.folder)
        self.said("wird nicht überwacht, bis das wieder geht: Pfad nicht gefunden")
        self.job.folder.mkdir()
        self.order(1, "EINS")
        self.assertEqual(self.answered(1)[0], "O")
        self.stop(process)

    def test_a_full_disk(self):
        self.settings()
        endless = resource.RLIM_INFINITY
        read, write = os.pipe()  # a log that no limit holds for
        process = self.start(limits=lambda: (os.dup2(write, 2), resource.setrlimit(resource.RLIMIT_FSIZE, (0, endless))),
                             ready="")
        os.close(write)
        with open(read, "r") as log:
            self.order(1, "EINS")
            line = next(line for line in log if "kann nicht" in line)
            self.assertRegex(line, "KRV00001.AUF kann nicht angenommen werden: .*größer als erlaubt")
            self.assertEqual((answer(self.job.folder, 1)[0], self.runs()), ("", []))
            resource.prlimit(process.pid, resource.RLIMIT_FSIZE, (endless, endless))
            self.order(2, "ZWEI")
            self.assertEqual((self.answered(1)[0], self.answered(2)[0]), ("O", "O"))
        self.assertEqual(self.runs(), ["EINS", "ZWEI"])

    def test_clocks_and_old_orders(self):
        self.settings("Alter=60", "Ereignisse=0", "Abfrage=50")
        for number, age in ((1, 100), (2, 20), (3, -100_000)):
            self.order(number, f"NR{number}", age=age)
        process = self.start(ready="wird überwacht, durch regelmäßiges Nachsehen")
        self.assertEqual([self.answered(number)[0] for number in (1, 2, 3)], ["E", "O", "O"])
        self.assert_aside("KRV00001.AUF", "gewartet")
        self.order(4, "NR4", age=1e9)
        self.assertEqual(self.answered(4)[0], "O")
        self.assertEqual(self.runs(), ["NR2", "NR3", "NR4"])
        self.stop(process)


class Commands(MessengerTest):
    def test_a_folder_is_named_and_given_up(self):
        def said_to(*arguments):
            return subprocess.run([MESSENGER, *arguments], env=self.job.environment, stdout=subprocess.PIPE, text=True,
                                  check=True, cwd=self.root, timeout=60).stdout

        self.assertIn(f"{self.job.folder} wird überwacht; KRVWINPR.COM liegt dort", said_to("/EIN", "auftrag"))
        process = self.start([])
        self.assertRegex(said_to("/STATUS"), f"auftrag: Dort ist der Bote .*Prozess {process.pid}.")
        self.stop(process)
        self.assertIn("Dort ist kein Bote", said_to("/STATUS"))
        said_to("/AUS", self.job.folder)
        said_to("/AUS")
        self.assertEqual(self.job.names() + os.listdir(self.job.settings.parents[1] / "autostart"), [])

    @unittest.skipUnless(shutil.which("systemd-analyze") and not SLOW, "needs systemd-analyze")
    def test_what_is_installed_is_what_systemd_starts(self):
        prefix = self.root / "Pro gramme"
        subprocess.run(["cmake", "--install", PROGRAM.parent, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
        unit = prefix / "lib/systemd/user/krvwinpr-messenger.service"
        run = subprocess.run(["systemd-analyze", "--user", "--man=no", "verify", unit], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True,
                             env=self.job.environment | {"XDG_RUNTIME_DIR": str(self.root)})
        self.assertEqual((run.returncode, run.stdout), (0, ""))
        self.assertIn(f'ExecStart="{prefix}/bin/KRVWinPrBote"\n', unit.read_text())
        self.assertTrue(os.access(prefix / "bin/KRVWinPrBote", os.X_OK))


if __name__ == "__main__":
    unittest.main()
