"""Reading picture files, beside netpbm: whole processes that turn the same file into a PNM file nobody reads.

netpbm goes through a file row by row; krv-picture has the whole picture in memory first, as a job has."""

import pathlib
import random
import statistics
import subprocess

# Pixels across and down, by bits: enough for reading to count more than starting a process.
SIZES = {1: (12000, 8000), 8: (4000, 3000), 24: (4000, 3000)}
TO_BMP, TO_PCX = ["ppmtobmp", "-bpp={bits}"], ["ppmtopcx", "-{bits}bit"]
FILES = (("BMP", 1, TO_BMP), ("BMP", 8, TO_BMP), ("BMP", 24, TO_BMP), ("PCX", 1, ["ppmtopcx"]), ("PCX", 8, TO_PCX),
         ("PCX", 24, TO_PCX))


def source(bits: int) -> bytes:
    """A PPM picture: black text-like runs on white, surfaces in 200 colours, or surfaces with noise."""
    width, height = SIZES[bits]
    chance = random.Random(bits)
    colors = [chance.randbytes(3) for _ in range(200)] if bits > 1 else [bytes(3), *[b"\xFF" * 3] * 4]
    rows = []
    for _ in range(100):
        row = b"".join(chance.choice(colors) * chance.randint(1, 60) for _ in range(width // 20))
        row = (row * 2)[:3 * width]
        if bits == 24:
            row = bytes(value & 0xF8 | noise & 7 for value, noise in zip(row, chance.randbytes(len(row))))
        rows.append(row)
    return b"P6\n%d %d\n255\n" % (width, height) + b"".join(rows[row // 3 % 100] for row in range(height))


def measure(build: pathlib.Path, folder: pathlib.Path, rounds: int, run) -> None:
    pictures = {bits: source(bits) for bits in (1, 8, 24)}
    for kind, bits, writer in FILES:
        path = folder / f"{bits}.{kind.lower()}"
        with path.open("wb") as out:
            subprocess.run([part.format(bits=bits) for part in writer], input=pictures[bits], stdout=out,
                           stderr=subprocess.DEVNULL, check=True)
        own, peer = [], []
        for _ in range(rounds):
            own.append(run([build / "krv-picture", "pnm", path], folder))
            peer.append(run(["bmptopnm" if kind == "BMP" else "pcxtoppm", path], folder))
        width, height = SIZES[bits]
        own_rate, peer_rate = (width * height / 1e6 / statistics.median(result.seconds for result in results)
                               for results in (own, peer))
        print(f"{bits}-bit {kind} file read: {own_rate / peer_rate:.1f} times as fast as netpbm "
              f"({own_rate:.0f} and {peer_rate:.0f} megapixels per second)")
