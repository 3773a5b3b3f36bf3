#!/usr/bin/env python3
"""Measures the list of a queue's jobs beside libcups and lpstat, and what the open form costs, with a print server and on
a display of its own.

    bench/print_jobs.sh        installs what is missing, builds, and calls this
    bench/print_jobs.py BUILD  with the build folder"""

import argparse
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/e2e"))
from private_cups import PrivateCups  # noqa: E402

# Each request stands in the log, and no number of jobs is too many.
SERVER = "AccessLogLevel all\nMaxJobs 0\nMaxLogSize 0\n"
TICKS = os.sysconf("SC_CLK_TCK")


def fill(cups, program, count):
    document = cups.root / "a.pdf"
    document.write_bytes(b"%PDF-1.4\n%%EOF")
    for _ in range(0, count, 1000):
        cups.run(program, "fill", "archiv", document, "1000")


def lists(cups, program, rounds):
    lpstat = []
    for _ in range(rounds):
        begin = time.perf_counter()
        cups.run("lpstat", "-W", "not-completed", "-o", "archiv")
        lpstat.append(1000 * (time.perf_counter() - begin))
    log = cups.root / "log/access_log"
    before = log.read_text().count(" Get-Jobs ")
    jobs, own, own_cpu, library, library_cpu = map(float, cups.run(program, "list", "archiv", str(rounds)).split())
    asked = log.read_text().count(" Get-Jobs ") - before - rounds
    other = statistics.median(lpstat)
    print(f"{jobs:.0f} jobs: {asked / rounds:g} requests a list, {own:.1f} ms, {own_cpu:.1f} ms of the processor; libcups "
          f"{library:.1f} ms ({own / library:.2f} times), {library_cpu:.1f} ms; lpstat {other:.1f} ms ({own / other:.2f} times)")


def processor_seconds(process):
    fields = pathlib.Path(f"/proc/{process.pid}/stat").read_text().rsplit(")", 1)[1].split()
    return sum(map(int, fields[11:13])) / TICKS


def form(cups, program, seconds):
    """The share of one core that the open form takes, while nothing happens and while a job changes every second."""
    with tempfile.TemporaryDirectory() as folder:
        environment = cups.environment(DISPLAY=os.environ["DISPLAY"], XDG_CONFIG_HOME=folder, XDG_DATA_HOME=folder)
        process = subprocess.Popen([program, "/AUFTRAEGE", "archiv"], cwd=folder, env=environment,
                                   stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            time.sleep(5)
            for what, change in (("nothing happens", False), ("a job changes every second", True)):
                log = cups.root / "log/access_log"
                asked, begin = log.read_text().count(" Get-Jobs "), processor_seconds(process)
                for second in range(seconds):
                    if change:
                        cups.run("lp", "-i", "archiv-1", "-q", str(60 + second % 2))
                    time.sleep(1)
                share = (processor_seconds(process) - begin) / seconds
                print(f"the form, {what}: {100 * share:.1f} % of a core, "
                      f"{log.read_text().count(' Get-Jobs ') - asked} lists in {seconds} s")
        finally:
            process.terminate()
            process.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=21)
    parser.add_argument("--seconds", type=int, default=30)
    options = parser.parse_args()
    build = options.build.resolve()
    with PrivateCups(configuration=SERVER) as cups:
        cups.add_pdf_queue("archiv")
        cups.run("cupsdisable", "archiv")
        for more in (1000, 9000):
            fill(cups, build / "print-jobs", more)
            lists(cups, build / "print-jobs", options.rounds)
            form(cups, build / "KRVWinPr", options.seconds)


main()
