#!/usr/bin/env python3
"""Measures KRVWinPr beside its peers in one run and prints the ratios of docs/PERFORMANCE.md.

    bench/run.sh            installs the peers, builds, and calls this
    bench/compare.py BUILD  with the build folder

All times are medians over several rounds in which the candidates take turns."""

import argparse
import os
import pathlib
import random
import re
import shutil
import statistics
import struct
import subprocess
import sys
import tempfile
import time
import zlib

import pictures

ROOT = pathlib.Path(__file__).resolve().parent.parent
TEXT_FILTER = "/usr/lib/cups/filter/texttopdf"
PRINTER = "Korvano PDF"


def line_art(width: int, height: int) -> bytes:
    """A BMP of one bit a pixel: rules, and a field of dots that does not compress well."""
    stride = (width + 31) // 32 * 4
    dots = random.Random(1)
    rows = []
    for row in range(height):
        line = bytearray(b"\0" if row % 400 < 6 else b"\xFF") * stride
        if row < 500:
            line[40:120] = dots.randbytes(80)
        rows.append(bytes(line))
    pixels = b"".join(reversed(rows))
    header = struct.pack("<2sIHHI IiiHHIIiiII", b"BM", 62 + len(pixels), 0, 0, 62, 40, width, height, 1, 1, 0, len(pixels),
                         11811, 11811, 2, 2)
    return header + b"\0\0\0\0\xFF\xFF\xFF\0" + pixels


class Result:
    def __init__(self, seconds: float, cpu: float, peak_kib: int):
        self.seconds, self.cpu, self.peak_kib = seconds, cpu, peak_kib


def run(command, folder, env=None, stdout=None) -> Result:
    """Runs a command to its end; wall and processor seconds, peak memory of the process."""
    begin = time.perf_counter()
    process = subprocess.Popen(command, cwd=folder, env=env, stdout=stdout or subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - begin
    if status != 0:
        sys.exit(f"{command[0]} failed with status {status}")
    return Result(seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss)


class Bench:
    def __init__(self, build: pathlib.Path, folder: pathlib.Path):
        self.program = build / "KRVWinPr"
        self.build = build
        self.folder = folder
        self.env = dict(os.environ, LANG="de_DE.UTF-8", XDG_CONFIG_HOME=str(folder / "config"), XDG_CACHE_HOME=str(folder / "cache"),
                        CUPS_SERVER=str(folder / "no-cups.sock"))
        for name in ("DISPLAY", "WAYLAND_DISPLAY", "LC_ALL"):
            self.env.pop(name, None)

    def report(self, pages: int, ascii_only: bool = False) -> pathlib.Path:
        path = self.folder / f"{'A' if ascii_only else 'R'}{pages}.OUT"
        if not path.exists():
            command = [sys.executable, ROOT / "samples/generate_report.py", str(pages)]
            text = subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout
            path.write_bytes(bytes(byte if byte < 128 else 97 + byte % 26 for byte in text) if ascii_only else text)
        return path

    def print_report(self, pages: int, ascii_only: bool = False, keep: bool = False) -> tuple[Result, int]:
        path = self.report(pages, ascii_only)
        pdf = path.with_suffix(".pdf")
        pdf.unlink(missing_ok=True)
        result = run([self.program, path.name, "KEINEGRAFIK", PRINTER], self.folder, self.env)
        size = pdf.stat().st_size
        if not keep:
            pdf.unlink()
        return result, size

    def text_filter(self, pages: int, ascii_only: bool = False) -> tuple[Result, int]:
        source = self.report(pages, ascii_only).with_suffix(".txt")
        if not source.exists():
            text = self.report(pages, ascii_only).read_bytes().decode("cp850")
            source.write_text(text, encoding="utf-8", newline="")
        output = self.folder / "peer.pdf"
        with output.open("wb") as out:
            result = run([TEXT_FILTER, "1", "bench", "bench", "1", "media=A4 cpi=12 lpi=6.5", source], self.folder,
                         dict(self.env, CHARSET="us-ascii" if ascii_only else "utf-8"), out)
        return result, output.stat().st_size

    def enscript(self, pages: int) -> tuple[Result, int]:
        source = self.folder / f"R{pages}.latin1"
        if not source.exists():
            source.write_bytes(self.report(pages).read_bytes().decode("cp850").encode("latin-1", "replace"))
        output = self.folder / "peer2.pdf"
        begin = time.perf_counter()
        subprocess.run(["sh", "-c", f"enscript -q -B -M A4 -f Courier10 -X 88591 -o - {source.name} | "
                        f"gs -q -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile={output.name} -"],
                       cwd=self.folder, check=True, stderr=subprocess.DEVNULL)
        return Result(time.perf_counter() - begin, 0, 0), output.stat().st_size

    def page_contents(self, pages: int) -> pathlib.Path:
        """Of our own PDF, each behind its length, as deflate-bench takes them."""
        path = self.folder / f"R{pages}.contents"
        self.print_report(pages, keep=True)
        pdf = (self.folder / f"R{pages}.pdf").read_bytes()
        with path.open("wb") as out:
            for found in re.finditer(rb"<</Filter/FlateDecode/Length (\d+)>>stream\n", pdf):
                content = zlib.decompress(pdf[found.end():found.end() + int(found[1])])
                out.write(struct.pack("=I", len(content)) + content)
        return path

    def compressing_alone(self, contents: pathlib.Path) -> float:
        return float(subprocess.run([self.build / "deflate-bench", contents], check=True, capture_output=True).stdout)

    def throughput(self, pages: int, rounds: int) -> None:
        contents = self.page_contents(pages)
        ours, filters, plain, plain_filters, enscripts, alone = [], [], [], [], [], []
        for _ in range(rounds):
            ours.append(self.print_report(pages))
            alone.append(self.compressing_alone(contents))
            filters.append(self.text_filter(pages))
            plain.append(self.print_report(pages, ascii_only=True))
            plain_filters.append(self.text_filter(pages, ascii_only=True))
            enscripts.append(self.enscript(pages))
        own_time = statistics.median(result.seconds for result, _ in ours)
        own_size = ours[0][1]
        print(f"{pages} pages of 60 full lines: {own_time:.3f} s, {own_size / 1e6:.2f} MB")
        limit = statistics.median(alone)
        print(f"  against libdeflate alone on the same page contents: {own_time / limit:.2f} times its time ({limit:.3f} s)")
        plain_time = statistics.median(result.seconds for result, _ in plain)
        for name, results, time_beside in (("CUPS text filter", filters, own_time),
                                           ("CUPS text filter in its ASCII mode, on ASCII", plain_filters, plain_time),
                                           ("enscript and Ghostscript", enscripts, own_time)):
            seconds = statistics.median(result.seconds for result, _ in results)
            size = results[0][1]
            print(f"  against {name}: {seconds / time_beside:.1f} times as fast ({seconds:.2f} s), "
                  f"{own_size / size:.2f} of its size ({size / 1e6:.1f} MB)")

    def memory(self, pages: int) -> None:
        result, _ = self.print_report(pages)
        file_mib = self.report(pages).stat().st_size / 2**20
        peak_mib = result.peak_kib / 1024
        print(f"peak memory of {pages} pages: the print file's {file_mib:.1f} MiB and {peak_mib - file_mib:.1f} MiB")

    def cost_per_page(self, few: int, many: int, rounds: int) -> None:
        """Start and end of a job, as one page has them, are not counted."""
        def cost(pages: int, repeat: int) -> float:
            times = [(self.print_report(pages)[0].cpu - self.print_report(1)[0].cpu) / (pages - 1)
                     for _ in range(repeat)]
            return statistics.median(times) * 1e6
        few_cost, many_cost = cost(few, rounds * 20), cost(many, max(3, rounds // 2))
        print(f"cost per page: {few_cost:.1f} µs in {few} pages, {many_cost:.1f} µs in {many} pages, "
              f"ratio {many_cost / few_cost:.3f}")

    def letterhead(self, pages: int, rounds: int) -> None:
        """Pages with a full-page letterhead of one bit a pixel at 300 dpi beside the same pages without."""
        folder = self.folder / "letterhead"
        (folder / "LASER").mkdir(parents=True)
        (folder / "HPLASER.INI").write_text("[Grafik]\nGrafik1=0,0,1,INCH,True,5.5\n")
        (folder / "LASER/KRVWin.M1").write_bytes(line_art(2480, 3508))
        plain = self.report(pages).read_bytes()
        (folder / "PLAIN.OUT").write_bytes(plain)
        (folder / "HEAD.OUT").write_bytes(b"".join(b"^GR1" + page + b"\f" for page in plain.split(b"\f")[:pages]))
        results: dict[str, list[Result]] = {"PLAIN": [], "HEAD": []}
        for _ in range(rounds):
            for name, measured in results.items():
                (folder / f"{name}.pdf").unlink(missing_ok=True)
                measured.append(run([self.program, f"{name}.OUT", "KEINEGRAFIK", PRINTER], folder, self.env))
        seconds = {name: statistics.median(result.seconds for result in measured) for name, measured in results.items()}
        size = {name: (folder / f"{name}.pdf").stat().st_size for name in results}
        (folder / "ONE.OUT").write_bytes(b"^GR1\f")
        run([self.program, "ONE.OUT", "KEINEGRAFIK", PRINTER], folder, self.env)
        one = (folder / "ONE.pdf").stat().st_size
        print(f"{pages} pages with a full-page letterhead: {seconds['HEAD'] / seconds['PLAIN']:.2f} times the time of those "
              f"without ({seconds['HEAD']:.3f} s, {seconds['PLAIN']:.3f} s); the file grows by {size['HEAD'] - size['PLAIN']} "
              f"bytes, one page with the picture has {one}")

    def startup(self, rounds: int) -> None:
        def measure(source: pathlib.Path) -> list[float]:
            """Of an empty program, up to the completion file, of the whole job; a first job has asked for the fonts."""
            folder = self.folder / f"startup-{source.stem}"
            folder.mkdir()
            shutil.copy(source, folder / "A.OUT")
            job = [self.program, "A.OUT", "KEINEGRAFIK", PRINTER]
            run(job, folder, self.env)
            command = [self.build / "startup-bench", str(rounds), self.build / "empty-program", *job]
            output = subprocess.run(command, cwd=folder, env=self.env, check=True, capture_output=True, text=True).stdout
            return [float(text) for text in output.split()]

        empty, handshake, _ = measure(self.report(1))
        print(f"start to completion file: {handshake / empty:.2f} times an empty program "
              f"({handshake:.0f} µs, {empty:.0f} µs)")
        empty, _, whole = measure(ROOT / "samples/RECHNUNG.OUT")
        print(f"invoice of two pages, start to finished PDF: {whole / empty:.2f} times an empty program "
              f"({whole / 1000:.1f} ms, {empty / 1000:.2f} ms)")

    def barcodes(self) -> None:
        output = subprocess.run([self.build / "barcode-bench"], check=True, capture_output=True, text=True).stdout
        for line in output.splitlines():
            name, own, peer = line.split("\t")
            print(f"{name} symbols encoded: {float(own) / float(peer):.1f} times as many in the same time as libzint "
                  f"({float(own) / 1e6:.2f} and {float(peer) / 1e6:.2f} millions per second)")


def main() -> None:
    parser = argparse.ArgumentParser(description="Measures KRVWinPr beside its peers.")
    parser.add_argument("build", type=pathlib.Path)
    parser.add_argument("--rounds", type=int, default=7)
    parser.add_argument("--only", choices=("throughput", "startup", "memory", "pages", "letterhead", "barcodes",
                                           "pictures"))
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(options.build.resolve(), pathlib.Path(folder))
        if options.only in (None, "throughput"):
            bench.throughput(1000, options.rounds)
        if options.only in (None, "startup"):
            bench.startup(options.rounds * 40)
        if options.only in (None, "memory"):
            bench.memory(30000)
        if options.only in (None, "pages"):
            bench.cost_per_page(100, 30000, options.rounds)
        if options.only in (None, "letterhead"):
            bench.letterhead(1000, options.rounds)
        if options.only in (None, "barcodes"):
            bench.barcodes()
        if options.only in (None, "pictures"):
            pictures.measure(bench.build, bench.folder, options.rounds, run)


if __name__ == "__main__":
    main()
