#!/usr/bin/env python3
"""Measures the Windows program under Wine, beside the least that a Windows program can do there.

    bench/windows.sh            installs what is missing, builds, and calls this
    bench/windows.py BUILD      with the build folder of the preset "windows"
"""

import argparse
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/e2e"))
from private_cups import PrivateCups  # noqa: E402


class Bench:
    def __init__(self, build, cups, folder):
        self.build, self.folder = build, folder
        self.prefix = build / "wineprefix"
        self.environment = cups.environment()

    def start(self, *command):
        return subprocess.Popen([ROOT / "tests/wine-run.sh", self.prefix, *command], cwd=self.folder,
                                env=self.environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def seconds(self, *command):
        begin = time.perf_counter()
        self.start(*command).wait()
        return time.perf_counter() - begin

    def seconds_to_completion_file(self):
        done = self.folder / "KRVWINPR.OK"
        done.unlink(missing_ok=True)
        begin = time.perf_counter()
        job = self.start(self.build / "KRVWinPr.exe", "R1.OUT")
        while not done.exists():
            time.sleep(0.0005)
        result = time.perf_counter() - begin
        job.wait()
        return result

    def report(self, pages):
        with (self.folder / f"R{pages}.OUT").open("wb") as out:
            subprocess.run([sys.executable, ROOT / "samples/generate_report.py", str(pages)], stdout=out, check=True)


def main():
    parser = argparse.ArgumentParser(description="Measures the Windows program under Wine.")
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--pages", type=int, default=200)
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    build = options.build.resolve()
    with PrivateCups() as cups, tempfile.TemporaryDirectory() as name:
        cups.add_postscript_queue("Laser", "-o", "Resolution=600dpi")
        cups.run("lpadmin", "-d", "Laser")
        subprocess.run([ROOT / "tests/wine-prefix.sh", "--end", build / "wineprefix"], check=True)
        bench = Bench(build, cups, pathlib.Path(name))
        bench.report(1)
        bench.report(options.pages)
        print(f"size of KRVWinPr.exe: {(build / 'KRVWinPr.exe').stat().st_size / 1024:.0f} KiB")
        bench.seconds(build / "textout-bench.exe")
        empty, handshake, ours, least, placed = [], [], [], [], []
        for _ in range(options.rounds * 3):
            empty.append(bench.seconds(build / "textout-bench.exe"))
            handshake.append(bench.seconds_to_completion_file())
        for _ in range(options.rounds):
            ours.append(bench.seconds(build / "KRVWinPr.exe", f"R{options.pages}.OUT"))
            least.append(bench.seconds(build / "textout-bench.exe", "Laser", f"R{options.pages}.OUT"))
            placed.append(bench.seconds(build / "textout-bench.exe", "Laser", f"R{options.pages}.OUT", "dx"))
        median = statistics.median
        print(f"start to completion file: {median(handshake) * 1000:.0f} ms, an empty program from start to end "
              f"{median(empty) * 1000:.0f} ms: {median(handshake) / median(empty):.2f} times")
        print(f"{options.pages} pages of 60 full lines: {options.pages / median(ours):.0f} pages a second, with nothing but "
              f"TextOut {options.pages / median(least):.0f}: {median(least) / median(ours):.2f}; with nothing but ExtTextOut "
              f"and the place of each character {options.pages / median(placed):.0f}: {median(placed) / median(ours):.2f}")
        subprocess.run([ROOT / "tests/wine-prefix.sh", "--end", build / "wineprefix"], check=True)


if __name__ == "__main__":
    main()
