#!/usr/bin/env python3
"""Measures what a call costs a host in dosbox at its default speed, how soon the messenger starts a program for an order, and
what it takes while nothing happens.

    bench/messenger.sh        installs what is missing, builds, and calls this
    bench/messenger.py BUILD  with the build folder"""

import argparse
import os
import pathlib
import statistics
import sys
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests/e2e"))
PARSER = argparse.ArgumentParser(description=__doc__.splitlines()[0])
PARSER.add_argument("build", type=pathlib.Path)
PARSER.add_argument("--calls", type=int, default=100)
PARSER.add_argument("--seconds", type=int, default=30)
OPTIONS = PARSER.parse_args()
os.environ["KRVWINPR"] = str(OPTIONS.build.resolve() / "KRVWinPr")
from dos_machine import Dosbox, Messenger  # noqa: E402
from messenger_orders import order, wait_for_answer  # noqa: E402
from support import PRODUCT_KEY, Job  # noqa: E402

# What stands for KRVWinPr: notes the time, and says that it has written the completion file.
NOTES_TIME = '#!/bin/bash\necho $EPOCHREALTIME >> "{file}"\nprintf K >&"$KRVWINPR_STARTER"\n'


def spread(milliseconds) -> str:
    ordered = sorted(milliseconds)
    return (f"median {statistics.median(ordered):.1f} ms, 95 of 100 within {ordered[len(ordered) * 95 // 100 - 1]:.1f} ms, "
            f"the slowest {ordered[-1]:.1f} ms")


def host(test, count):
    """From the call to the completion file as the host sees it, by its own clock."""
    job = Job(test)
    Messenger(test, job)
    calls = Dosbox(job, f"HOST {count} - > D:\\AUS.TXT").finish().calls()
    test.assertEqual([call[:2] for call in calls], [(0, True)] * count)
    print(f"{count} calls of a host in dosbox: {spread([call.time for call in calls])}")


def reaction(test, count):
    """From the order's last name to the first line of the program."""
    job = Job(test)
    times = job.folder.parent / "zeiten"
    program = job.write("../programm", NOTES_TIME.format(file=times))
    program.chmod(0o755)
    job.write_settings(f"Programm={program}", key=rf"{PRODUCT_KEY}\Bote")
    Messenger(test, job)
    written = []
    for number in range(1, count + 1):
        written.append(time.time())
        path = order(job.folder, number, "A.OUT")
        wait_for_answer(job.folder, number)
        path.unlink()
        path.with_suffix(".ERG").unlink()
        time.sleep(0.02)
    started = map(float, times.read_text().split())
    delays = [1000 * (begin - left) for left, begin in zip(written, started, strict=True)]
    print(f"{count} orders to the start of the program: {spread(delays)}")


def idle(test, seconds, *settings):
    jobs = [Job(test) for _ in range(3)]
    jobs[0].write_settings(*settings, key=rf"{PRODUCT_KEY}\Bote")
    process = Messenger(test, *jobs).process
    time.sleep(1)

    def used() -> int:
        """Nanoseconds on a processor."""
        return sum(int(path.read_text().split()[0]) for path in pathlib.Path(f"/proc/{process.pid}/task").glob("*/schedstat"))

    before = used()
    time.sleep(seconds)
    share = (used() - before) / seconds / 1e9
    print(f"nothing happens in 3 folders{', ' if settings else ''}{' '.join(settings)}: {100 * share:.3f} % of a core")


test = unittest.TestCase()
try:
    host(test, OPTIONS.calls)
    reaction(test, OPTIONS.calls)
    for polls in ((), ("Ereignisse=0",)):
        idle(test, OPTIONS.seconds, *polls)
finally:
    test.doCleanups()
