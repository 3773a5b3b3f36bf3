#!/usr/bin/env python3
"""Measures how long a user waits for the printer selection, beside empty windows, on a display of its own.

    bench/selection.sh                      installs what is missing, builds, and calls this
    bench/selection.py LINUX WINDOWS        with the build folders of both systems"""

import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/e2e"))
from private_cups import PrivateCups  # noqa: E402


def milliseconds(watcher, command, folder, environment):
    result = subprocess.run([watcher, *command], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                            capture_output=True, text=True, check=True, timeout=120)
    return float(result.stdout.split()[-1])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("linux", type=pathlib.Path)
    parser.add_argument("windows", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=11)
    parser.add_argument("--printers", type=int, default=3)
    options = parser.parse_args()
    linux, windows = options.linux.resolve(), options.windows.resolve()
    wine = [ROOT / "tests/wine-run.sh", windows / "wineprefix"]
    with PrivateCups() as cups, tempfile.TemporaryDirectory() as folder:
        for number in range(options.printers):
            cups.add_pdf_queue(f"Drucker{number}")
        environment = dict(cups.environment(), DISPLAY=os.environ["DISPLAY"], XDG_CONFIG_HOME=folder)
        for system, selection, empty in (
                ("Qt", [linux / "KRVWinPr"], [linux / "empty-window"]),
                ("user32 under Wine", [*wine, windows / "KRVWinPr.exe"], [*wine, windows / "empty-window.exe"])):
            times = {"selection": [], "empty": []}
            for number in range(options.rounds + 1):  # the first one loads what all need, and does not count
                for name, command in (("selection", [*selection, "/DRUCKERAUSWAHL"]), ("empty", empty)):
                    times[name].append(milliseconds(linux / "window-shown", command, folder, environment))
            own, least = (statistics.median(times[name][1:]) for name in ("selection", "empty"))
            print(f"{system}: {own:.0f} ms to the printer selection, {least:.0f} ms to an empty window: "
                  f"{own / least:.2f} times")


main()
