"""A printed page as a picture."""

import io
import subprocess
from pathlib import Path

from PIL import Image, ImageChops

DPI = 200
CENTIMETRE = DPI / 2.54  # pixels
PAPER = (255, 255, 255)


class Sheet:
    def __init__(self, pdf: Path, number=1):
        self.pdf, self.number = pdf, number
        self.source = None  # the block that it was printed from

    def pages(self) -> int:
        for line in output_of("pdfinfo", self.pdf).decode().splitlines():
            if line.startswith("Pages:"):
                return int(line.split()[1])
        return 0

    def text(self) -> str:
        """Its lines with single blanks."""
        page = output_of("pdftotext", "-layout", "-f", self.number, "-l", self.number, self.pdf, "-").decode()
        return "\n".join(" ".join(line.split()) for line in page.splitlines())

    def whole(self) -> Image.Image:
        return Image.open(io.BytesIO(output_of("pdftoppm", "-r", DPI, "-f", self.number, "-l", self.number, self.pdf)))

    def printed(self) -> Image.Image:
        """What is on the page, with a little paper around."""
        page, edge = self.whole(), round(0.4 * CENTIMETRE)
        box = ImageChops.difference(page, Image.new("RGB", page.size, PAPER)).getbbox() or (0, 0, edge, edge)
        return page.crop((max(box[0] - edge, 0), max(box[1] - edge, 0), min(box[2] + edge, page.width), min(box[3] + edge, page.height)))

    def part(self, x, y, width, height) -> Image.Image:
        """Centimetres from the sheet's top left corner."""
        return self.whole().crop(tuple(round(edge * CENTIMETRE) for edge in (x, y, x + width, y + height)))


def output_of(*command) -> bytes:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, check=True).stdout


def png(picture: Image.Image) -> bytes:
    """Small: a page has few colours."""
    if picture.getcolors(1 << 24) is None or picture.mode != "P":
        picture = picture.convert("RGB").quantize(48, method=Image.Quantize.MAXCOVERAGE, dither=Image.Dither.NONE)
    target = io.BytesIO()
    picture.save(target, "PNG", optimize=True)
    return target.getvalue()
