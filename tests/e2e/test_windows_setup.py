"""The installer and the zip files for Windows, made from what is built and tried in a fresh Wine prefix. The
environment is that of test_windows.py; KRVWINPR_WINDOWS32 names the build folder with the programs for 32 bits."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import time
import unittest
import zipfile

from dos_machine import Dosbox
from support import OK_TEXT, VERSION, output_of
from test_windows import PREFIX, PROGRAM, QUEUE, TESTS, WindowsTest
from test_windows_messenger import RUN_KEY, windows_path

ROOT = TESTS.parent
NARROW = os.environ["KRVWINPR_WINDOWS32"]
DRIVE = pathlib.Path(PREFIX) / "drive_c"
HOST = DRIVE / "FIRMA"
ENTRY = r"Software\Microsoft\Windows\CurrentVersion\Uninstall\KRVWinPr"
FILES = ["Deinstallieren.exe", "KRVWinPr-Handbuch.html", "KRVWinPr-Handbuch.pdf", "KRVWinPr.exe", "KRVWinPrBote.exe",
         "LIZENZ.txt"]
MENU = ["Druckaufträge.lnk", "Druckerauswahl.lnk", "Handbuch.lnk", "KRVWinPr deinstallieren.lnk", "Vorschau.lnk"]
# What Wine itself and makensis's own programs leave behind, whatever is installed.
NOISE = re.compile(r"/Temp/|PendingFileRenameOperations|\\Software\\Wine|\\Explorer\\|\\Print|_USER\\Console")
POLICIES = r"HKLM\Software\Microsoft\Windows\CurrentVersion\Policies\System"


def make(out, stub):
    """The release files in a folder, from inputs that have just been written."""
    handbook = out / "handbuch"
    handbook.mkdir(parents=True)
    for kind in "html", "pdf":
        (handbook / f"KRVWinPr-Handbuch.{kind}").write_text("Handbuch")
    subprocess.run([ROOT / "packaging/make_windows.sh", pathlib.Path(PROGRAM).parent, NARROW, handbook, out],
                   env=os.environ | {"SOURCE_DATE_EPOCH": "1700000000", "KRV_SETUP_STUB": stub}, check=True)
    return sorted(out.glob("KRVWinPr-*"))


@unittest.skipUnless(os.path.exists(f"{NARROW}/KRVWinPr.exe"), "preset windows32 is not built")
class Setup(WindowsTest):
    @classmethod
    def setUpClass(cls):
        cls.end_wine()
        shutil.rmtree(PREFIX)
        cls.out = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.setup = make(cls.out / "wide", "amd64-unicode")[0]
        super().setUpClass()

    def setUp(self):
        super().setUp()
        self.before = self.boxes.seek(0, os.SEEK_END)
        HOST.mkdir()
        self.wine("reg", "delete", r"HKCU\Software\Velmora", "/f", check=False)
        for data in DRIVE.glob("users/*/AppData/Local/KRVWinPr"):
            shutil.rmtree(data)
        self.addCleanup(shutil.rmtree, HOST)
        self.state = self.everything()

        self.addCleanup(lambda: [self.uninstall(folder) for folder in self.program_folders()])

    def tearDown(self):
        self.assertEqual(self.shown(), [])

    def install(self, *arguments, code=0):
        return self.wine(self.setup, "/S", *arguments, code=code)

    @staticmethod
    def program_folders():
        return [*DRIVE.glob("users/*/AppData/Local/Programs/KRVWinPr"), *DRIVE.glob("Program Files*/KRVWinPr")]

    def uninstall(self, folder, *arguments):
        """The program that is called goes on as a copy of itself."""
        self.wine(folder / "Deinstallieren.exe", "/S", *arguments)
        self.until(lambda: not folder.exists() and not self.processes(r"\~nsu"))

    def until(self, condition):
        end = time.monotonic() + 30
        while not condition():
            self.assertLess(time.monotonic(), end)
            time.sleep(0.05)

    @staticmethod
    def processes(text) -> list[str]:
        """Those of this Windows with a command line like that."""
        found = [place for place in pathlib.Path("/proc").glob("[1-9]*") if place.name != str(os.getpid())]
        for name, part in ("cmdline", text), ("environ", f"WINEPREFIX={PREFIX}"):
            command = ["grep", "-lsF", part, "/dev/null", *(place / name for place in found)]
            found = [pathlib.Path(line).parent for line in
                     subprocess.run(command, stdout=subprocess.PIPE, text=True).stdout.split()]
        return [place.name for place in found]

    def everything(self) -> set[str]:
        """What there is in this Windows: files, keys and values."""
        found = {str(path.relative_to(DRIVE)) for path in DRIVE.rglob("*")}
        for root in "HKCU", r"HKLM\Software", r"HKLM\System":
            file = self.job.folder / "export.reg"
            self.wine("reg", "export", root, windows_path(file), "/y")
            key = ""
            for line in file.read_text("utf-16").replace("\\\n", "").splitlines():
                key = line if line.startswith("[") else key
                found.add(f"{key} {line}")
            file.unlink()
        return {text for text in found if not NOISE.search(text)}

    def entry(self, root="HKCU") -> dict[str, str]:
        text = self.wine("reg", "query", rf"{root}\{ENTRY}", check=False)
        return dict(re.findall(r"^ {4}(\w+) {4}REG_\w+ {4}(.*?)\r?$", text, re.M))

    def print_sample(self, program):
        before = len(self.cups.jobs(QUEUE))
        self.job.sample("RECHNUNG.OUT")
        self.wine(program, "RECHNUNG.OUT", "KEINEGRAFIK", QUEUE)
        job = self.cups.wait_for_jobs(QUEUE, before + 1)[before]
        self.assertIn("Rechnung", output_of("ps2ascii", job.path))
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_for_one_user_it_installs_prints_and_leaves_the_settings_or_nothing(self):
        (HOST / "KRVWinPr.exe").write_text("eine alte Version")
        self.state = self.everything()
        for arguments, left in (((), r"Velmora|Local/KRVWinPr"), (("/ALLES",), "^$")):
            self.install("/WINDOWS=C:\\FIRMA\\")
            folder, = self.program_folders()
            self.assertEqual(sorted(os.listdir(folder)), FILES)
            menu, = DRIVE.glob("users/*/AppData/Roaming/Microsoft/Windows/Start Menu/Programs/KRVWinPr")
            self.assertEqual(sorted(os.listdir(menu)), MENU)
            self.assertIn("FIRMA".encode("utf-16-le"), (menu / "Druckerauswahl.lnk").read_bytes(), "where it starts")
            entry = self.entry()
            self.assertEqual((entry["DisplayVersion"], entry["Publisher"], entry["HostArt"], entry["HostOrdner"]),
                             (VERSION, "Velmora", "WINDOWS", r"C:\FIRMA"))
            self.print_sample(HOST / "KRVWinPr.exe")
            kept = folder.parents[1] / "KRVWinPr/Nicht gedruckt/BRIEF.OUT"
            kept.parent.mkdir(parents=True, exist_ok=True)
            kept.write_text("Brief")
            self.uninstall(folder, *arguments)
            self.assertEqual(kept.exists(), not arguments)
            self.assertEqual((HOST / "KRVWinPr.exe").read_text(), "eine alte Version")
            self.assertEqual([text for text in self.everything() ^ self.state if not re.search(left, text)], [])

    def test_what_cannot_be_is_refused_and_changes_nothing(self):
        (HOST / "krvwinpr.com").write_text("")
        emulator = HOST / "DOS"
        emulator.mkdir()
        (emulator / "KRVWinPr.exe").write_text("")
        state = self.everything()
        for code, text, *arguments in (
                (5, "liegt KRVWINPR.COM", "/WINDOWS=C:\\FIRMA"), (5, "liegt KRVWINPR.COM", "/D=C:\\FIRMA"),
                (5, "liegt KRVWinPr.exe", "/EMULATOR=C:\\FIRMA\\DOS"),
                (5, "gibt es nicht: C:\\\\FEHLT", "/WINDOWS=C:\\FEHLT"),
                (3, "^/WINDOS=C:\\\\FIRMA ist hier nichts", "/WINDOS=C:\\FIRMA"), (0, "/EMULATOR=Ordner", "/?")):
            with self.subTest(arguments):
                self.assertRegex(self.install(*arguments, code=code), text)
        self.assertEqual(self.everything() ^ state, set())
        self.install()
        folder, = self.program_folders()
        self.assertRegex(self.install("/ALLE", code=3), "schon nur für Sie eingerichtet")
        self.wine("reg", "add", rf"HKCU\{ENTRY}", "/v", "DisplayVersion", "/d", VERSION + ".1", "/f")
        self.assertRegex(self.install(code=6), "neuere Version " + re.escape(VERSION) + r"\.1")
        self.install("/DOWNGRADE")
        self.assertEqual(self.entry()["DisplayVersion"], VERSION)

    def test_an_update_that_fails_leaves_the_old_version(self):
        self.install("/EMULATOR=" + windows_path(self.job.folder))
        folder, = self.program_folders()
        for name in "KRVWinPr.exe", "LIZENZ.txt":
            (folder / name).write_text("alt")
        in_the_way = folder / "KRVWinPr-Handbuch.html.alt/darin"
        in_the_way.mkdir(parents=True)
        self.addCleanup(shutil.rmtree, in_the_way.parent)
        before = {path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}
        self.assertRegex(self.install(code=2), "KRVWinPr-Handbuch.html lässt sich nicht schreiben")
        self.assertEqual({path.name: path.read_bytes() for path in folder.iterdir() if path.is_file()}, before)
        self.until(lambda: self.processes("KRVWinPrBote.exe"))

    def test_a_host_in_an_emulator_prints_before_and_after_an_update(self):
        folder = windows_path(self.job.folder)
        self.install("/EMULATOR=" + folder)
        com = self.job.read("KRVWINPR.COM")
        for number in range(2):
            first = len(self.cups.jobs(QUEUE))
            messenger, = self.processes("KRVWinPrBote.exe")
            tail = f" DRUCK.OUT KEINEGRAFIK {QUEUE}".encode()
            machine = Dosbox(self.job, "HOST 1 - > D:\\AUS.TXT", tail=tail).finish()
            self.assertEqual([call[:2] for call in machine.calls()], [(0, True)], machine.text())
            self.assertEqual(self.job.read("KRVWINPR.COM"), com)
            self.cups.wait_for_jobs(QUEUE, first + 1)
            if number == 0:
                self.install()
                self.assertNotEqual(self.processes("KRVWinPrBote.exe"), [messenger])
                self.assertEqual((self.entry()["HostArt"], self.entry()["HostOrdner"]), ("EMULATOR", folder))
        self.install("/OHNEHOST")
        self.assertNotIn("KRVWINPR.COM", self.job.names())
        self.install("/EMULATOR=" + folder)
        self.uninstall(*self.program_folders())
        self.assertEqual(self.processes("KRVWinPrBote.exe"), [])
        self.assertNotIn("KRVWINPR.COM", self.job.names())
        self.assertNotIn("KRVWinPrBote", self.wine("reg", "query", RUN_KEY, check=False))

    def test_for_all_users_it_installs_prints_and_leaves_nothing(self):
        self.install("/ALLE", r"/D=C:\Program Files\KRVWinPr")
        folder, = self.program_folders()
        self.assertEqual(sorted(os.listdir(folder)), FILES)
        self.assertEqual((self.entry(), self.entry("HKLM")["InstallLocation"]), ({}, r"C:\Program Files\KRVWinPr"))
        menu = DRIVE / "ProgramData/Microsoft/Windows/Start Menu/Programs/KRVWinPr"
        self.assertEqual(sorted(os.listdir(menu)), MENU)
        self.assertIn("%TEMP%".encode("utf-16-le"), (menu / "Druckerauswahl.lnk").read_bytes(), "no host to answer")
        self.print_sample(folder / "KRVWinPr.exe")
        # The messenger would have the administrator's rights.
        for value in "1", "0":
            self.wine("reg", "add", POLICIES, "/v", "EnableLUA", "/t", "REG_DWORD", "/d", value, "/f")
            if value == "1":
                self.assertRegex(self.install("/EMULATOR=C:\\FIRMA", code=4), "ohne „Als Administrator ausführen“")
        self.uninstall(folder, "/ALLES")
        self.assertEqual(self.everything() ^ self.state, set())

    def test_the_same_input_gives_the_same_bytes(self):
        first, second = (make(self.out / name, "x86-unicode") for name in "ab")
        self.assertEqual([file.name for file in first],
                         [f"KRVWinPr-{VERSION}-{kind}" for kind in ("Setup.exe", "x64.zip", "x86.zip")])
        for one, other in zip(first, second):
            self.assertEqual(one.read_bytes(), other.read_bytes(), one.name)
        content = first[0].read_bytes()
        header = content.index(b"PE\0\0")
        self.assertEqual(content[header + 4:header + 6], b"\x4c\x01", "for 32 bits as well")
        for text in b'level="asInvoker"', b"dpiAware", "Velmora".encode("utf-16-le"):
            self.assertIn(text, content)
        for file in first[1:]:
            with zipfile.ZipFile(file) as packed:
                self.assertEqual(packed.namelist(), ["KRVWinPr.exe", "KRVWinPrBote.exe", "LIZENZ.txt"])
                licence = packed.read("LIZENZ.txt").replace(b"\r\n", b"\n")
                for text in "LICENSE", "packaging/windows/third_party.txt":
                    self.assertIn((ROOT / text).read_bytes(), licence)


if __name__ == "__main__":
    unittest.main()
