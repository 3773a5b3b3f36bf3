#!/usr/bin/env python3
"""Measures how long a user waits for the preview, beside an empty window and a PDF viewer's library.

    bench/preview.sh                      installs what is missing, builds, and calls this on a display of its own
    bench/preview.py LINUX                with the build folder"""

import argparse
import os
import pathlib
import statistics
import subprocess
import tempfile

LINES, COLUMNS, MANY, PAGED = 60, 80, 30_000, 1_000
RED, GREEN, MAGENTA = (b"^CR", "ff0000"), (b"^CG", "00ff00"), (b"^CM", "ff00ff")
NEEDLE = "zuletzt"


def page(number, last) -> bytes:
    """Full lines, and a bar across the page whose colour says which one it is."""
    color = MAGENTA if number == last else RED if number % 2 else GREEN
    text = b"Seite %d, Artikel 4711-A, 12 St\x81ck zu 123,45 EUR, zusammen 1.481,40 EUR abz\x81glich Rabatt 3 %%. " % number
    lines = [text[:COLUMNS]] * LINES
    lines[LINES // 2] = color[0] + b"\xdb" * COLUMNS + b"^CS"
    if number == last:
        lines[3] = NEEDLE.encode()
    return b"\r\n".join(lines)


def print_file(path, pages):
    with open(path, "wb") as file:
        for number in range(1, pages + 1):
            file.write(page(number, MANY) + (b"\f" if number < pages else b""))


class Bench:
    def __init__(self, build, folder, rounds):
        self.build, self.folder, self.rounds = build, folder, rounds
        self.environment = os.environ | {"XDG_CONFIG_HOME": str(folder / "config"), "HOME": str(folder)}

    def run(self, *command) -> list[str]:
        return subprocess.run([str(part) for part in command], cwd=self.folder, env=self.environment, check=True,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=600).stdout.split()

    def watch(self, file, *steps) -> list[float]:
        program = [self.build / "KRVWinPr", "/VORSCHAU", file, "KEINEGRAFIK", "Korvano PDF"]
        return [float(word) for word in self.run(self.build / "screen-watch", *steps, "--", *program)]

    def medians(self, **candidates) -> dict[str, float]:
        """Taking turns; the first round loads what all need, and does not count."""
        times = {name: [] for name in candidates}
        for _ in range(self.rounds + 1):
            for name, measure in candidates.items():
                times[name].append(measure())
        return {name: statistics.median(values[1:]) for name, values in times.items()}


def report_start(bench):
    first = ("shows", RED[1])
    times = bench.medians(
        empty=lambda: float(bench.run(bench.build / "window-shown", bench.build / "empty-window")[-1]),
        two=lambda: bench.watch("two.txt", *first)[0],
        many=lambda: bench.watch("many.txt", *first)[0])
    print(f"start to the first page of 2: {times['two']:.0f} ms, an empty window {times['empty']:.0f} ms: "
          f"{times['two'] / times['empty']:.2f} times")
    print(f"of {MANY} pages: {times['many']:.0f} ms, {times['many'] / times['two']:.2f} times that")


def report_use(bench):
    turns = bench.watch("many.txt", "shows", RED[1], "times", "60", "press", "Next", "shows", f"{GREEN[1]}/{RED[1]}")
    print(f"next page: {statistics.median(turns[1:]):.1f} ms, the slowest of 60 {max(turns[1:]):.1f} ms")
    digits = [word for digit in str(MANY) for word in ("press", digit)]
    jump = bench.watch("many.txt", "shows", RED[1], "press", "ctrl+g", *digits, "press", "Return", "shows", MAGENTA[1])
    print(f"jump to page {MANY}: {jump[-1]:.0f} ms")
    letters = [word for letter in NEEDLE for word in ("press", letter)]
    found = bench.watch("many.txt", "shows", RED[1], "press", "ctrl+f", *letters, "press", "Return", "shows", MAGENTA[1])
    print(f"first hit of a search, on page {MANY}: {found[-1]:.0f} ms")
    now, most = bench.watch("many.txt", "shows", RED[1], "times", str(PAGED), "press", "Next", "shows",
                            f"{GREEN[1]}/{RED[1]}", "memory")[-2:]
    file = (bench.folder / "many.txt").stat().st_size
    print(f"memory after paging through {PAGED} pages: the file's {file / 2**20:.1f} MiB and "
          f"{now / 1024 - file / 2**20:.1f} MiB, at most {most / 1024 - file / 2**20:.1f} MiB")


def report_viewer(bench, dpi=96):
    for name in ("two", "many"):
        bench.run(bench.build / "KRVWinPr", f"{name}.txt", "KEINEGRAFIK", "Korvano PDF")
        times = bench.medians(
            own=lambda: float(bench.run(bench.build / "preview-first-page", f"{name}.txt", dpi)[-1]),
            poppler=lambda: float(bench.run(bench.build / "poppler-first-page", f"{name}.pdf", dpi)[-1]))
        print(f"file opened and first page painted at {dpi} dpi ({name}): {times['own']:.1f} ms, poppler on its PDF "
              f"{times['poppler']:.1f} ms: {times['poppler'] / times['own']:.2f} times as fast")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("linux", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=11)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(options.linux.resolve(), pathlib.Path(folder), options.rounds)
        print_file(bench.folder / "two.txt", 2)
        print_file(bench.folder / "many.txt", MANY)
        report_start(bench)
        report_use(bench)
        report_viewer(bench)


main()
