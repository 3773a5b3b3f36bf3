#!/usr/bin/env python3
"""Measures the list of a queue's jobs beside libcups and lpstat, with a print server of its own.

    bench/print_jobs.sh      installs what is missing, builds, and calls this
    bench/print_jobs.py BUILD  with the build folder"""

import argparse
import pathlib
import statistics
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/e2e"))
from private_cups import PrivateCups  # noqa: E402

# Each request stands in the log, and no number of jobs is too many.
SERVER = "AccessLogLevel all\nMaxJobs 0\nMaxLogSize 0\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=21)
    options = parser.parse_args()
    program = options.build.resolve() / "print-jobs"
    with PrivateCups(configuration=SERVER) as cups:
        cups.add_pdf_queue("archiv")
        cups.run("cupsdisable", "archiv")
        document = cups.root / "a.pdf"
        document.write_bytes(b"%PDF-1.4\n%%EOF")
        log = cups.root / "log/access_log"
        filled = 0
        for count in (1000, 10000):
            for _ in range(filled, count, 1000):
                cups.run(program, "fill", "archiv", document, "1000")
            filled = count
            lpstat = []
            for _ in range(options.rounds):
                begin = time.perf_counter()
                cups.run("lpstat", "-W", "not-completed", "-o", "archiv")
                lpstat.append(1000 * (time.perf_counter() - begin))
            before = log.read_text().count(" Get-Jobs ")
            jobs, own, own_cpu, library, library_cpu = map(float, cups.run(program, "list", "archiv", str(options.rounds)).split())
            asked = log.read_text().count(" Get-Jobs ") - before - options.rounds
            print(f"{jobs:.0f} jobs: {asked / options.rounds:g} requests a list, {own:.1f} ms, of them {own_cpu:.1f} ms of "
                  f"the program's; libcups {library:.1f} ms ({own / library:.2f} times), {library_cpu:.1f} ms; "
                  f"lpstat {statistics.median(lpstat):.1f} ms ({own / statistics.median(lpstat):.2f} times)")


main()
