"""The Debian packages: what is in them, and how a fresh Debian installs them, prints with them and loses them again.

Packs the build that the program belongs to."""

import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import unittest

from dos_machine import Dosbox, Messenger, until
from fresh_debian import FreshDebian
from private_cups import PrivateCups
from private_screen import PrivateScreen
from support import OK_TEXT, PRINTER, PROGRAM, PROJECT, VERSION, JobTest, lines_of, output_of

PAGES = ("KRVWinPr.1", "KRVWinPrBote.1")
ENTRIES = {"krvwinpr": "Druckerauswahl", "krvwinpr-vorschau": "Druckvorschau", "krvwinpr-auftraege": "Druckaufträge",
           "krvwinpr-handbuch": "Druckhandbuch"}
OPTION = re.compile(r"(?<=\s)(?:/[A-Z]{3,}2?|--[a-z]+)\b")
TOOLS = ("dh", "lintian", "man", "desktop-file-validate", "gio")


@unittest.skipUnless(all(map(shutil.which, TOOLS)), "needs one of the programs " + ", ".join(TOOLS))
class DebianPackages(JobTest):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory(prefix="krv-packages-")))
        handbook = cls.folder / "handbuch"
        handbook.mkdir()
        (handbook / "KRVWinPr-Handbuch.html").write_text("<!DOCTYPE html><title>Handbuch</title>")
        (handbook / "KRVWinPr-Handbuch.pdf").write_bytes(b"%PDF-1.7\n" + b"%\n" * 5000 + b"%%EOF\n")
        cls.pack(PROJECT, "packages")
        cls.files = sorted((cls.folder / "packages").iterdir())
        cls.packages = {file.name.split("_")[0]: file for file in cls.files}
        for file in cls.files:
            subprocess.run(["dpkg-deb", "-x", file, cls.folder / "root"], check=True)
        cls.share = cls.folder / "root/usr/share"

    @classmethod
    def pack(cls, project, out, umask=-1, **environment):
        subprocess.run([project / "packaging/make_deb.sh", PROGRAM.parent, cls.folder / "handbuch", cls.folder / out],
                       env=os.environ | {"SOURCE_DATE_EPOCH": "1800000000"} | environment, umask=umask, check=True)

    def test_the_same_bytes_in_another_place(self):
        project = self.folder / "an derer Ort"
        shutil.copytree(PROJECT / "packaging", project / "packaging")
        for name in ("CMakeLists.txt", "CHANGELOG.md"):
            shutil.copy(PROJECT / name, project)
        self.pack(project, "again", umask=0o077, TZ="Asia/Tokyo", LC_ALL="C", HOME="/nowhere")
        contents = [{file.name: file.read_bytes() for file in (self.folder / out).iterdir()} for out in ("packages", "again")]
        self.assertEqual([name for name in contents[0].keys() | contents[1].keys()
                          if contents[0].get(name) != contents[1].get(name)], [])

    def test_what_debians_own_checks_say(self):
        run = subprocess.run(["lintian", "--allow-root", "--fail-on", "error,warning", *self.files],
                             stdout=subprocess.PIPE, text=True)
        self.assertEqual((run.returncode, run.stdout), (0, ""))
        for page in (place / name for place in (self.share / "man/man1", self.share / "man/de/man1") for name in PAGES):
            run = subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", f"{page}.gz"], capture_output=True,
                                 text=True, env=os.environ | {"LC_ALL": "C.UTF-8", "MANWIDTH": "80"})
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            self.assertIn(f"KRVWinPr {VERSION}", run.stdout)
            help_text = subprocess.run([PROGRAM.parent / page.stem, "--help"], env=self.job.environment, timeout=20,
                                       stdout=subprocess.PIPE, text=True).stdout
            self.assertIn("--version", help_text)
            self.assertLessEqual(set(OPTION.findall(help_text)), set(OPTION.findall(run.stdout)))

    def test_they_run_no_scripts_and_have_their_version(self):
        self.assertEqual(self.packages.keys(), {"krvwinpr", "krvwinpr-desktop", "krvwinpr-doc"})
        for file in self.files:
            self.assertEqual(output_of("sh", "-c", 'dpkg-deb --ctrl-tarfile "$0" | tar -t', file).split(),
                             ["./", "./control", "./md5sums"])
            self.assertTrue(output_of("dpkg-deb", "-f", file, "Version").startswith(VERSION + "-1"))
        unit = self.folder / "root/usr/lib/systemd/user/krvwinpr-messenger.service"
        self.assertIn('\nExecStart="/usr/bin/KRVWinPrBote"\n', unit.read_text())

    def test_menu_entries(self):
        """The preview's is started as a file manager does; the host's folder has to be the current one then."""
        entries = {file.stem: file for file in (self.share / "applications").iterdir()}
        self.assertEqual(entries.keys(), ENTRIES.keys())
        for name, german in ENTRIES.items():
            self.assertEqual(output_of("desktop-file-validate", entries[name]), "")
            self.assertIn(f"\nName[de]=Korvano {german}\n", entries[name].read_text())
        file = self.job.write('mein "$Host"/A.OUT', "eins")
        log = file.with_name("cwd")
        (self.job.folder / "KRVWinPr").write_text('#!/bin/sh\npwd > cwd\nprintf "%s|" "$@" >> cwd\n')
        (self.job.folder / "KRVWinPr").chmod(0o755)
        path = f"{self.job.folder}:{os.environ['PATH']}"
        subprocess.run(["gio", "launch", entries["krvwinpr-vorschau"], file], check=True, env=os.environ | {"PATH": path})
        until(lambda: log.exists() and log.read_text().endswith("|"))
        self.assertEqual(log.read_text(), f"{file.parent}\n/VORSCHAU|{file}|")

    def in_there(self, debian, *arguments, **environment):
        return subprocess.run([*debian.entering(self.job.folder), "KRVWinPr", *arguments], capture_output=True,
                              text=True, env=self.job.environment | environment, stdin=subprocess.DEVNULL, timeout=60)

    def test_a_fresh_debian_prints_and_is_as_before_afterwards(self):
        debian = self.enterContext(FreshDebian())
        before = debian.files()
        debian.apt("install", "--no-install-recommends", self.packages["krvwinpr"])
        self.job.sample_letter()
        self.job.run("BRIEF.OUT", "HINTERGR.PCX", PRINTER)
        expected = self.job.lines("BRIEF.pdf")
        (self.job.folder / "BRIEF.pdf").unlink()
        run = self.in_there(debian, "BRIEF.OUT", "HINTERGR.PCX", PRINTER)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(self.job.lines("BRIEF.pdf"), expected)
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        if os.environ.get("KRVWINPR_DEVELOPED") == "1":
            said = self.in_there(debian, "BRIEF.OUT", KRVWINPR_CRASH="page:abort").stderr
            report = pathlib.Path(said.split("Bericht in ")[1].strip()).read_text()
            self.assertIn(" report.MPrint.DoReport ", report, "the program has lost its names")

        self.job.sample("RECHNUNG.OUT")
        with PrivateCups() as cups:
            cups.add_pdf_queue("archiv")
            self.in_there(debian, "RECHNUNG.OUT", "KEINEGRAFIK", "archiv", CUPS_SERVER=str(cups.socket))
            [job] = cups.wait_for_jobs("archiv", 1)
            self.job.run("RECHNUNG.OUT", "KEINEGRAFIK", PRINTER)
            self.assertEqual(lines_of(job.path), self.job.lines("RECHNUNG.pdf"))

        messenger = Messenger(self, self.job, command=[*debian.entering(self.job.folder), "KRVWinPrBote"])
        machine = Dosbox(self.job, "HOST 1 - > D:\\AUS.TXT").finish()
        self.assertEqual((machine.text(), machine.calls()[0][:2]), ("", (0, True)))
        until(lambda: "DRUCK.pdf" in self.job.names())
        self.assertEqual(self.job.lines("DRUCK.pdf"), [["Auftrag 0001"]])
        messenger.stop()

        self.look_at_windows(debian)
        debian.apt("purge", "--autoremove", *self.packages)
        self.assertEqual(debian.files() ^ before, set())

    def look_at_windows(self, debian):
        screen = self.enterContext(PrivateScreen())
        for place, text in (({}, r"braucht einen Bildschirm.*Bitte das Paket krvwinpr-desktop installieren"),
                            (screen.environment, "^(?!.*Bildschirm).*Bitte das Paket krvwinpr-desktop installieren")):
            self.assertRegex(self.in_there(debian, "/DRUCKERAUSWAHL", **place).stderr.replace("\n", " "), text)
        debian.apt("install", "--no-install-recommends", *(self.packages["krvwinpr-" + part] for part in ("desktop", "doc")))
        window = subprocess.Popen([*debian.entering(self.job.folder), "KRVWinPr", "/DRUCKERAUSWAHL"],
                                  env=self.job.environment | screen.environment, stdin=subprocess.DEVNULL)
        self.addCleanup(window.kill)
        screen.height("Druckerauswahl")
        window.send_signal(signal.SIGTERM)
        window.wait(20)


if __name__ == "__main__":
    unittest.main()
