#!/usr/bin/python3
"""Pictures of the program's windows for the handbook, made from the real program on a display of their own.

    docs/handbuch/pictures.py BUILD OUT [NAME...]

writes OUT/NAME.png for each name, or for all: twice as many pixels as the handbook shows them in. The same program gives
the same bytes, because clock, home folder, printers and their jobs are the picture's own. Needs Xvfb, xdotool,
imagemagick, faketime and cupsd."""

import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/e2e"))

from private_cups import PPD, PrivateCups  # noqa: E402
from private_screen import PrivateScreen  # noqa: E402

SCALE = 2
PATIENCE = 30  # seconds
LASER, LABELS, OFFICE = "Laser-Buchhaltung", "Etiketten-Lager", "Buero-1-OG"
DATE = "2026-03-02"
LETTER = [ROOT / "samples/BRIEF" / name for name in ("BRIEF.OUT", "HINTERGR.PCX", "HPLASER.INI", "LASER")]
# A printer that takes a job and is never done with it.
BUSY = "#!/bin/sh\n[ $# = 0 ] && exit\ncat > /dev/null\ntouch '{0}/begun'\nwhile [ -e '{0}' ]; do sleep 0.2; done\n"
KEY = r"HKCU\Software\Velmora\KRVWinPr\3.0"

PICTURES = {}


def picture(name):
    def registered(function):
        PICTURES[name] = function
        return function

    return registered


def clock(time_of_day):
    """What makes a program's clock stand still; time goes by for it all the same."""
    library = next(Path("/usr/lib").glob("*/faketime/libfaketimeMT.so.1"), None)
    if library is None:
        raise RuntimeError("Das Paket „faketime“ fehlt.")
    return {"LD_PRELOAD": str(library), "FAKETIME": f"{DATE} {time_of_day}", "FAKETIME_DONT_FAKE_MONOTONIC": "1",
            "NO_FAKE_STAT": "1", "TZ": "Europe/Berlin"}


class ClockedCups(PrivateCups):
    """Takes its time of day from a file."""

    def environment(self, **more):
        steered = {"FAKETIME_TIMESTAMP_FILE": str(self.root / "clock"), "FAKETIME_NO_CACHE": "1"}
        environment = super().environment(**(clock("09:00:00") | steered | more))
        del environment["FAKETIME"]
        return environment

    def set_clock(self, time_of_day):
        (self.root / "clock").write_text(f"{DATE} {time_of_day}\n")

    def start(self):
        self.set_clock("09:00:00")
        super().start()
        self.add_tray_queue(LASER, "-o", "PageSize=A4", ppd=PPD.replace("Test Laser mit Schächten", "Laser A4"))
        self.add_pdf_queue(LABELS)
        self.add_tray_queue(OFFICE, "-o", "PageSize=A4")
        self.run("lpadmin", "-d", OFFICE)

    @property
    def busy(self) -> Path:
        """Where a printer that is kept busy shows that it has begun."""
        return self.root / "busy"

    def keep_busy(self, queue):
        backend = self.root / "bin/backend/busy"
        backend.write_text(BUSY.format(self.busy))
        backend.chmod(0o755)
        self.busy.mkdir()
        self.busy.chmod(0o777)
        self.run("lpadmin", "-p", queue, "-v", "busy:/")


class Desk:
    """Somebody's display, home and working folder, with printers."""

    def __init__(self, build, cups, screen, folder):
        self.build, self.cups, self.screen = build.resolve(), cups, screen
        self.home, self.work, self.program = folder / "meier", folder / "meier/FIRMA", None
        self.work.mkdir(parents=True)
        for sample in (ROOT / "samples/RECHNUNG.OUT", *LETTER):
            (shutil.copytree if sample.is_dir() else shutil.copy)(sample, self.work / sample.name)

    def environment(self, time_of_day="09:15:00", **more):
        return {"PATH": os.environ["PATH"], "HOME": str(self.home), "LANG": "de_DE.UTF-8", "USER": "meier",
                "CUPS_SERVER": str(self.cups.socket), "CUPS_USER": "meier", "QT_SCALE_FACTOR": str(SCALE),
                "QT_CURSOR_FLASH_TIME": "0", "SOURCE_DATE_EPOCH": "1772439300",
                "XDG_RUNTIME_DIR": str(self.home)} | self.screen.environment | clock(
                    time_of_day) | more

    def start(self, *arguments, **more):
        self.end()
        self.program = subprocess.Popen([self.build / "KRVWinPr", *arguments], cwd=self.work,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL, env=self.environment(**more))

    def end(self):
        if self.program:
            self.program.kill()
            self.program.wait()

    def run(self, *arguments, **more):
        self.start(*arguments, **more)
        self.program.wait(PATIENCE)

    def settings(self, *sections):
        file = self.home / ".config/KRVWinPr/settings.ini"
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text("\n".join(sections), "utf-8")

    def window(self, title) -> str:
        self.screen.tool("xdotool", "mousemove", "5000", "5000")
        return self.screen.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", title).split()[-1]

    def press(self, title, *keys):
        self.screen.tool("xdotool", "windowfocus", "--sync", self.window(title))
        self.screen.press(*keys)

    def settled(self, title) -> bytes:
        """What the window shows once it does not change any more."""
        window, before, end = self.window(title), b"", time.monotonic() + PATIENCE
        while time.monotonic() < end:
            shown = subprocess.run(["import", "-window", window, "-depth", "8", "ppm:-"], check=True,
                                   env=os.environ | self.screen.environment, stdout=subprocess.PIPE).stdout
            if shown == before:
                return shown
            before = shown
            time.sleep(0.4)
        raise RuntimeError(f"Das Fenster „{title}“ kommt nicht zur Ruhe.")


@picture("auswahl")
def selection(desk):
    desk.start("/DRUCKERAUSWAHL")
    return "Druckerauswahl"


@picture("auswahl-erweitert")
def selection_unfolded(desk):
    desk.settings(rf"[{KEY}\Drucker\{LASER}]", "Schacht1=2", "Schacht2=3", "ObererRand=540")
    (desk.work / "KRVWIN.ASW").write_text(LASER + "\r\n")
    desk.start("/DRUCKERAUSWAHL")
    desk.press("Druckerauswahl", *["Tab"] * 4, "space")
    return "Druckerauswahl"


@picture("testfrage")
def test_question(desk):
    selection_unfolded(desk)
    desk.press("Druckerauswahl", "alt+t")
    return "^KRVWinPr$"


@picture("vorschau")
def preview(desk):
    desk.settings(rf"[{KEY}\Vorschau]", "Links=0", "Oben=0", "Breite=1120", "Hoehe=820")
    desk.start("/VORSCHAU", "BRIEF.OUT", "HINTERGR.PCX", LASER)
    return "Vorschau"


@picture("vorschau-suche")
def preview_search(desk):
    desk.settings(rf"[{KEY}\Vorschau]", "Links=0", "Oben=0", "Breite=1120", "Hoehe=620", "Zoom=Seitenbreite")
    desk.start("/VORSCHAU", "RECHNUNG.OUT", "KEINEGRAFIK", LASER)
    desk.press("Vorschau", "ctrl+f", *"EUR", "Return")
    desk.press("Vorschau", "Tab")
    return "Vorschau"


@picture("drucken")
def print_form(desk):
    preview(desk)
    desk.press("Vorschau", "ctrl+p")
    desk.press("^Drucken$", "alt+a")
    return "^Drucken$"


@picture("auftraege")
def job_list(desk):
    desk.cups.keep_busy(LASER)
    desk.cups.run("cupsreject", LABELS)
    desk.settings(f"[{KEY}]", "Wartezeit=0", "", rf"[{KEY}\Druckauftraege]", "Links=0", "Oben=0", "Breite=1120",
                  "Hoehe=560")
    jobs = (("08:41:30", "schulz", "ETIKETT.OUT", LABELS), ("09:03:10", "meier", "RECHNUNG.OUT", LASER),
            ("09:07:25", "meier", "LIEFERSC.OUT", LASER), ("09:12:40", "schulz", "MAHNUNG.OUT", LASER))
    for time_of_day, user, name, printer in jobs:
        (desk.work / name).write_bytes((ROOT / "samples/RECHNUNG.OUT").read_bytes())
        desk.cups.set_clock(time_of_day)
        desk.run(name, "KEINEGRAFIK", printer, time_of_day=time_of_day, CUPS_USER=user)
    desk.cups.set_clock("09:15:00")
    desk.cups.wait_until((desk.cups.busy / "begun").exists, "the first job")
    desk.start("/AUFTRAEGE", LASER)
    desk.press("Druckauftr", "alt+a", "Down", "Down")
    return "Druckauftr"


@picture("meldung")
def message(desk):
    desk.start("RECHNUNG.OUT", "BRIEFKOPF.BMP", "Korvano PDF")
    return "^KrvWinPr$"


# What a report says of the machine that it was made on, and what stands for it in the picture.
ELSEWHERE = ((r"\d{8}-\d{9}-\d+", "20260302-091500123-4711"), (r"(?m)^(Zeit: +).*", r"\g<1>02.03.2026 09:15:00 CET"),
             (r"von Prozess \d+", "von Prozess 4712"), (r"(?m)^.*libfaketime.*\n", ""),
             (r"(?ms)^System: .*(?=^=====)", "System:             Debian GNU/Linux 12 (bookworm)\r\n"))


@picture("fehlerbericht")
def error_report(desk):
    desk.cups.run("cupsreject", LABELS)
    data = desk.home / ".local/share/KRVWinPr"
    for _ in range(9):
        shutil.rmtree(data, ignore_errors=True)
        (desk.work / "KRVWINPR.OK").unlink(missing_ok=True)
        # Without a desktop it offers no report by itself.
        desk.start("RECHNUNG.OUT", "KEINEGRAFIK", LABELS, DISPLAY="")
        desk.cups.wait_until((desk.work / "KRVWINPR.OK").exists, "the job")
        time.sleep(1)  # then it waits for the printer
        desk.program.send_signal(signal.SIGSEGV)
        desk.program.wait(PATIENCE)
        file = data / "KRVWinPr.ERR"
        report = file.read_bytes().decode().replace(str(desk.home), "/home/meier")
        if "LinuxSystem.sleep" in report:  # and did not ask the printer just then, which it does now and again
            break
    for machine, stands_for_it in ELSEWHERE:
        report = re.sub(machine, stands_for_it, report)
    file.write_bytes(report.encode())
    desk.start("/DRUCKERAUSWAHL")
    return "Fehlerbericht"


def make(names, build: Path, folder: Path):
    """Writes NAME.png for each of the names into the folder; build is the built program's."""
    unknown = set(names) - set(PICTURES)
    if unknown:
        raise RuntimeError("Kein Bild heißt so: " + ", ".join(sorted(unknown)))
    with ClockedCups() as cups, PrivateScreen(size="2560x1800") as screen:
        for name in names:
            with tempfile.TemporaryDirectory(prefix="krv-handbuch-") as place:
                desk = Desk(build, cups, screen, Path(place))
                try:
                    shown = desk.settled(PICTURES[name](desk))
                finally:
                    desk.end()
            subprocess.run(["convert", "ppm:-", "-strip", "-define", "png:exclude-chunks=date,time",
                            f"png:{folder / name}.png"], input=shown, check=True)


if __name__ == "__main__":
    Path(sys.argv[2]).mkdir(parents=True, exist_ok=True)
    make(sys.argv[3:] or list(PICTURES), Path(sys.argv[1]), Path(sys.argv[2]))
