#!/usr/bin/env python3
"""Runs two builds of the program over the same jobs and compares everything that they leave, byte for byte:

    compare_output.py BEFORE AFTER [--files 2000] [--seed 1] [--windows 0] [--jobs 2] [--keep FOLDER]

BEFORE and AFTER are checkouts with build/linux and, for --windows, build/windows. A job's files, standard error, exit
code, settings and what arrives at the queues of a private print server count; --windows N does the samples and the
first N files with the Windows program under Wine as well. The exit code is 1 where a job differs; both versions are
kept.

Both builds run at the same path, and so do their jobs. What else differs from run to run is listed in MASKS."""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from collections import Counter
from concurrent.futures import ThreadPoolExecutor
from contextlib import ExitStack, contextmanager
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(ROOT / "tests/e2e"))
sys.dont_write_bytecode = True

from print_file_generator import PRODUCT, Job, fixed_jobs, generated_jobs, picture_files  # noqa: E402
from private_cups import PrivateCups  # noqa: E402

SIDES = ("before", "after")
PRINTERS = {"": "Korvano PDF", "plain": "Archiv", "trays": "Büro", "windows": "Laser"}
TIMEOUT = 60  # seconds, of one job
KILLED = b"124"  # exit code of a program that had to be ended (krv-answer's) or did not start
MASKS = [(re.compile(path), re.compile(pattern, re.MULTILINE), mask) for path, pattern, mask in (
    (r"\.LOG$", rb"^\d\d\.\d\d\.\d{4}( \d\d:\d\d:\d\d)?(?=>)", b"DD.MM.YYYY hh:mm:ss"),
    (r"\.LOG$", rb"^.*>     nach DoEvents, Timer: .*\n", b""),  # each look of /WAIT at the queue, with the time
    (r"Nicht gedruckt/.*\.txt$", rb"^Zeit: .*$", b"Zeit:"),
    # When, by which process and in which build is all that the other lines of a report say.
    (r"KRVWinPr\.ERR$", rb"^(?!Fehler:|Betriebsart:|Druckdatei:|Host:).*$", b""),
    (r"settings\.ini$", rb"^\s*[#;].*\n", b""),  # comments may change
    (r"\.options$", rb"^(job-uuid|time-at-creation|time-at-processing)=.*", rb"\1"),  # the print server's
    (f"^{PRINTERS['trays']}-", rb"/ID \[<[0-9a-f]+><[0-9a-f]+>\]", b"/ID"),  # random, by the print server's filter
)]


class Cups(PrivateCups):
    """Hands out every printed job once."""

    def take(self, *queues):
        self.wait_until(lambda: not self.run("lpstat", "-W", "not-completed", "-o").strip(), "empty queues")
        taken = [(queue, job, job.path.read_bytes()) for queue in queues for job in self.jobs(queue)]
        for record in (self.root / "out").glob("*/*"):
            record.unlink()
        return taken


def keep_printed(place: Path, queue: str, job, data: bytes, ending: str) -> None:
    name = f"{queue}-{len(list(place.glob('*.options'))) + 1}"
    (place / (name + ending)).write_bytes(data)
    options = "".join(f"{option}={value}\n" for option, value in job.options.items())
    (place / (name + ".options")).write_text(f"{job.title}\n{job.content_type}\n{options}")


def for_printer(text: str, printer: str) -> str:
    return text.replace("{printer}", printer).replace("{PRINTER}", printer.swapcase())


def programs_of(trees: list[Path], windows: bool) -> list[list[Path]]:
    programs = [[tree / "build/linux/KRVWinPr", *(tree / "build/linux").glob("krvwinpr-*.so")] for tree in trees]
    if windows:
        # One build's helper answers the boxes of both programs.
        for tree, files in zip(trees, programs):
            files += [tree / "build/windows/KRVWinPr.exe", trees[0] / "build/windows/krv-answer.exe"]
    for file in sum(programs, []):
        if not file.exists():
            sys.exit(f"{file} is missing.")
    return programs


class Workshop:
    """The folder in which everything happens. What runs is always in "program", jobs are always in "run"."""

    def __init__(self, folder: Path, programs: list[list[Path]]):
        self.folder, self.program = folder, folder / "program"
        for side, files in zip(SIDES, programs):
            (folder / side).mkdir()
            (folder / f"program-{side}").mkdir()
            for file in files:
                shutil.copy2(file, folder / f"program-{side}")

    def place(self, job: Job) -> Path:
        return self.folder / "run" / f"{job.number:05d}"

    def lay_out(self, job: Job) -> Path:
        """The folder in which the job starts."""
        folder = self.place(job) / "auftrag"
        folder.mkdir(parents=True)
        for name, data in job.files.items():
            (folder / name).parent.mkdir(exist_ok=True)
            (folder / name).write_bytes(data)
        return folder

    def run(self, side: str, jobs: list[Job], do) -> None:
        """Has the jobs done with a side's program, and takes away what it leaves."""
        os.rename(self.folder / f"program-{side}", self.program)
        do(jobs)
        os.rename(self.program, self.folder / f"program-{side}")
        for job in jobs:
            os.rename(self.place(job), self.folder / side / f"{job.number:05d}")


@contextmanager
def workshop_in(keep: Path | None, programs: list[list[Path]]):
    if keep:
        keep.mkdir(parents=True)
    workshop = Workshop((keep or Path(tempfile.mkdtemp(prefix="krv-compare-"))).resolve(), programs)
    try:
        yield workshop
    finally:
        for path in workshop.folder.iterdir():
            if path.name not in SIDES or not any(path.iterdir()):
                shutil.rmtree(path)
        if any(workshop.folder.iterdir()):
            print(f"Both versions are kept in {workshop.folder}/before and {workshop.folder}/after.")
        else:
            workshop.folder.rmdir()


class Native:
    """Does jobs with the native program; those for queues one after the other, so that each finds them idle."""

    def __init__(self, workshop: Workshop, cups: Cups, pool: ThreadPoolExecutor):
        self.workshop, self.cups, self.pool = workshop, cups, pool
        self.queues = PRINTERS["plain"], PRINTERS["trays"]
        cups.add_pdf_queue(PRINTERS["plain"])
        cups.add_tray_queue(PRINTERS["trays"])
        cups.run("lpadmin", "-d", PRINTERS["plain"])

    def __call__(self, jobs: list[Job]) -> None:
        queued = self.pool.submit(lambda: [self._print(job) for job in jobs if job.queue])
        list(self.pool.map(self._run, [job for job in jobs if not job.queue]))
        queued.result()

    def _print(self, job: Job) -> None:
        if "/WAIT" in job.arguments:
            for queue in self.queues:
                self.cups.run("cupsdisable", queue)
        self._run(job)
        for queue, printed, data in self.cups.take(*self.queues):
            keep_printed(self.workshop.place(job), queue, printed, data, ".pdf")

    def _open_queues(self, process: subprocess.Popen, log: Path) -> None:
        """When /WAIT has counted their jobs or, without a log, must have; how many it finds were a race otherwise."""
        latest = time.monotonic() + 1
        while process.poll() is None and time.monotonic() < latest:
            if log.exists() and b"Anzahl Jobs" in log.read_bytes():
                break
            time.sleep(0.01)
        for queue in self.queues:
            self.cups.run("cupsenable", queue)

    def _run(self, job: Job) -> None:
        printer, folder = PRINTERS[job.queue], self.workshop.lay_out(job)
        place = folder.parent
        # Without a queue nobody answers the jobs that name a printer: they are not to wait for it.
        settings = [*job.settings, *([] if job.queue else [(rf"{PRODUCT}\3.0", "Wartezeit", "0")])]
        if settings:
            (place / "config/KRVWinPr").mkdir(parents=True)
            (place / "config/KRVWinPr/settings.ini").write_text("".join(
                f"[{for_printer(key, printer)}]\n{name}={value}\n" for key, name, value in settings))
        environment = {"PATH": os.environ["PATH"], "HOME": str(place), "XDG_CONFIG_HOME": str(place / "config"),
                       "LANG": "de_DE.UTF-8", "SOURCE_DATE_EPOCH": "1700000000",
                       "CUPS_SERVER": str(self.cups.socket) if job.queue else "/nirgends/cups.sock", **job.environment}
        command = [self.workshop.program / "KRVWinPr", *(for_printer(text, printer) for text in job.arguments)]
        with (place / "standard-output").open("wb") as output, (place / "standard-error").open("wb") as errors:
            process = subprocess.Popen(command, cwd=folder, env=environment, stdin=subprocess.DEVNULL, stdout=output,
                                       stderr=errors)
        if job.queue and "/WAIT" in job.arguments:
            self._open_queues(process, folder / "KRVWinPr.LOG")
        try:
            (place / "exit-code").write_text(str(process.wait(TIMEOUT)))
        except subprocess.TimeoutExpired:
            process.kill()
            (place / "exit-code").write_bytes(KILLED)
            process.wait()


def windows_path(path: Path) -> str:
    return "Z:" + str(path).replace("/", "\\")


def registry_value(text: str) -> str:
    kind, _, content = text.rpartition(":")
    if kind == "REG_DWORD":
        return f"dword:{int(content, 0):08x}"
    return f"hex:{content}" if kind else '"{}"'.format(text.strip('"'))


class Wine:
    """Does jobs with the Windows program: many with one start of Wine, in a Wine prefix for each worker."""

    def __init__(self, workshop: Workshop, cups: Cups, pool: ThreadPoolExecutor, count: int):
        self.workshop, self.cups, self.pool = workshop, cups, pool
        cups.add_postscript_queue(PRINTERS["windows"], "-o", "Resolution=600dpi")
        cups.run("lpadmin", "-d", PRINTERS["windows"])
        self.prefixes = [workshop.folder / f"prefix-{number}" for number in range(count)]

    def end(self) -> None:
        for prefix in self.prefixes:
            subprocess.run([ROOT / "tests/wine-prefix.sh", "--end", prefix], check=True)

    def __call__(self, jobs: list[Job]) -> None:
        parts = [jobs[number::len(self.prefixes)] for number in range(len(self.prefixes))]
        list(self.pool.map(self._batch, self.prefixes, parts))
        places = {job.name: self.workshop.place(job) for job in jobs if job.name}
        for queue, printed, data in self.cups.take(PRINTERS["windows"]):
            keep_printed(places[re.search(r"[JS]\d{5}", printed.title.upper())[0]], queue, printed, data, ".ps")

    def _batch(self, prefix: Path, jobs: list[Job], attempts=3) -> None:
        lines = [line for job in jobs for line in self._commands(job)]
        prefix.mkdir(exist_ok=True)
        (prefix / "batch.cmd").write_bytes("\r\n".join(["@echo off", *lines, "exit 0", ""]).encode("cp850"))
        subprocess.run([ROOT / "tests/wine-run.sh", prefix, "cmd", "/c", windows_path(prefix / "batch.cmd")],
                       env=self.cups.environment(), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=TIMEOUT * (1 + len(jobs)))
        again = [job for job in jobs if not self._started(self.workshop.place(job))]
        for job in again:
            if attempts > 1:
                shutil.rmtree(self.workshop.place(job))
            else:
                (self.workshop.place(job) / "exit-code").write_bytes(KILLED)
        if again and attempts > 1:
            self._batch(prefix, again, attempts - 1)

    @staticmethod
    def _started(place: Path) -> bool:
        """Whether the job's program ran, and found Wine's spooler: on a busy machine either fails now and then."""
        code, boxes, errors = (path.read_bytes() if path.exists() else None
                               for path in (place / "exit-code", place / "boxes", place / "standard-error"))
        return None not in (code, boxes, errors) and b"9009" not in code and not boxes.startswith(
            b"cannot start") and b"Windows-Fehler 1722:" not in errors

    def _commands(self, job: Job) -> list[str]:
        printer, folder = PRINTERS["windows"], self.workshop.lay_out(job)
        settings = ["Windows Registry Editor Version 5.00", "", f"[-{PRODUCT}]"]
        for key, name, value in job.settings:
            if key.startswith(PRODUCT):  # the others are the machine's
                settings += [f"[{for_printer(key, printer)}]", f'"{name}"={registry_value(value)}']
        text = "\r\n".join([*settings, ""]).replace("HKCU", "HKEY_CURRENT_USER")
        (folder.parent / "settings.reg").write_bytes(text.encode("utf-16"))
        arguments = [for_printer(text, printer) for text in job.arguments]
        command = [windows_path(self.workshop.program / "krv-answer.exe"), "--no",
                   windows_path(self.workshop.program / "KRVWinPr.exe"),
                   *(f'"{text}"' if " " in text or not text else text for text in arguments)]
        return [f"cd /d {windows_path(folder)}", r"regedit /S ..\settings.reg",
                rf"{' '.join(command)} >..\boxes 2>..\standard-error", r"echo %errorlevel% >..\exit-code",
                rf"reg query {PRODUCT} /s >..\settings"]


# --- comparison -----------------------------------------------------------------------------------------------------


def masked(path: str, data: bytes) -> bytes:
    for name, pattern, mask in MASKS:
        if name.search(path):
            data = pattern.sub(mask, data)
    return data


def contents(folder: Path) -> dict[str, bytes]:
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


def differences(before: dict[str, bytes], after: dict[str, bytes]) -> list[str]:
    ended = before.get("exit-code", KILLED).strip() != KILLED
    found = [] if ended else ["exit-code: the program did not run to its end"]
    for path in sorted(before.keys() | after.keys()):
        if path not in before or path not in after:
            found.append(f"{path}: only {SIDES[path in after]}")
            continue
        one, other = masked(path, before[path]), masked(path, after[path])
        if one != other:
            shorter = min(len(one), len(other))
            at = next((at for at in range(shorter) if one[at] != other[at]), shorter)
            found.append(f"{path}: differs from byte {at} on")
    return found


def count(counts: Counter, job: Job, files: dict[str, bytes]) -> None:
    counts["jobs"] += 1
    for path, data in files.items():
        if data.startswith(b"%PDF"):
            counts["PDF files"] += 1
            counts["PDF pages"] += len(re.findall(rb"/Type */Page\b", data))
        elif path.endswith(".ps"):
            counts["PostScript files"] += 1
            counts["PostScript pages"] += data.count(b"\n%%Page: ")
    counts["logs"] += any(path.endswith(".LOG") for path in files)
    counts["queue jobs"] += sum(path.endswith(".options") for path in files)
    counts["with messages"] += bool(files.get("standard-error") or files.get("boxes"))
    counts["inverted pictures"] += job.arguments[:1] == ["/INVERT"] and any(
        files.get(f"auftrag/{name}") != data for name, data in job.files.items())


def compare(workshop: Workshop, jobs: list[Job], do, size: int, keep: bool, expected: list[str]) -> int:
    """Prints what differs and returns in how many jobs something does."""
    counts, differing, begin = {side: Counter() for side in SIDES}, 0, time.monotonic()
    for start in range(0, len(jobs), size):
        part = jobs[start:start + size]
        for side in SIDES:
            workshop.run(side, part, do)
        for job in part:
            places = [workshop.folder / side / f"{job.number:05d}" for side in SIDES]
            results = [contents(place) for place in places]
            for side, files in zip(SIDES, results):
                count(counts[side], job, files)
            found = differences(*results)
            differing += bool(found)
            for line in found:
                print(f"job {job.number}: {line}", flush=True)
            if not found and not keep:
                for place in places:
                    shutil.rmtree(place)
    for side in SIDES:
        print(f"{side}: " + ", ".join(f"{counts[side][what]} {what}" for what in ("jobs", *expected, "with messages")))
        if not all(counts[side][what] for what in expected):
            sys.exit(f"The program {side} did less than it must: nothing has been shown.")
    seconds = time.monotonic() - begin
    print(f"{len(jobs)} jobs, each twice, in {seconds:.0f} s: {seconds / len(jobs) / 2:.3f} s for one run", flush=True)
    return differing


def main() -> int:
    parser = argparse.ArgumentParser(description="Runs two builds over the same jobs and compares what they leave.")
    parser.add_argument("trees", metavar="TREE", nargs=2, type=Path, help="before, after")
    parser.add_argument("--files", type=int, default=2000, help="generated print files (2000)")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--windows", type=int, default=0, help="samples and so many files under Wine, too (0: none)")
    parser.add_argument("--jobs", type=int, default=2, help="at the same time (2)")
    parser.add_argument("--keep", type=Path, metavar="FOLDER", help="a new folder to keep everything in")
    options = parser.parse_args()
    programs = programs_of(options.trees, options.windows > 0)
    pictures = picture_files()
    fixed, generated = fixed_jobs(pictures), generated_jobs(options.files, options.seed, pictures)
    windows = [job for job in fixed if job.windows] + generated[:options.windows] if options.windows else []
    with ExitStack() as stack:
        cups = stack.enter_context(Cups())
        workshop = stack.enter_context(workshop_in(options.keep, programs))
        pool = stack.enter_context(ThreadPoolExecutor(options.jobs))

        def differing(jobs, do, size, *expected):
            return compare(workshop, jobs, do, size, bool(options.keep), [*expected, "logs", "inverted pictures"])

        number_from(0, fixed + generated)
        found = differing(fixed + generated, Native(workshop, cups, pool), 100, "PDF files", "PDF pages", "queue jobs")
        if windows:
            wine = Wine(workshop, cups, pool, options.jobs)
            stack.callback(wine.end)
            number_from(len(fixed + generated), windows)
            found += differing(windows, wine, 20 * options.jobs, "PostScript files", "PostScript pages")
        print(f"{len(fixed + generated + windows)} jobs compared, {found} differ")
    return 1 if found else 0


def number_from(first: int, jobs: list[Job]) -> None:
    for number, job in enumerate(jobs, first):
        job.number = number


if __name__ == "__main__":
    sys.exit(main())
