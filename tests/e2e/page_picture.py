"""Pages as pictures, and simple pictures to print."""

import struct
import subprocess

BLACK, GREY = bytes(3), b"\x80" * 3
RED, GREEN, BLUE = b"\xFF\0\0", b"\0\xFF\0", b"\0\0\xFF"
CYAN, MAGENTA, YELLOW = b"\0\xFF\xFF", b"\xFF\0\xFF", b"\xFF\xFF\0"


class PagePicture:
    """A page of a PDF in greys, without smoothing; no two of the colours above have the same grey."""

    def __init__(self, pdf, page=1, dpi=300):
        command = ["pdftoppm", "-gray", "-r", dpi, "-aa", "no", "-aaVector", "no", "-f", page, "-l", page, pdf]
        image = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, check=True).stdout
        _, size, _, self.pixels = image.split(b"\n", 3)
        self.width, self.height = map(int, size.split())
        self.points = 72 / dpi

    def box(self, color: bytes) -> tuple[float, float, float, float] | None:
        """Left, top, right and bottom edge of everything of one colour, in points from the sheet's top left corner."""
        level = round(0.3 * color[0] + 0.59 * color[1] + 0.11 * color[2])
        found = self.pixels.translate(bytes(abs(grey - level) <= 1 for grey in range(256)))
        rows = {y: row for y in range(self.height) if 1 in (row := found[y * self.width:(y + 1) * self.width])}
        if not rows:
            return None
        left, right = min(row.find(1) for row in rows.values()), max(row.rfind(1) for row in rows.values()) + 1
        return tuple(edge * self.points for edge in (left, min(rows), right, max(rows) + 1))


def bmp(width, height, color: bytes) -> bytes:
    """A picture of one colour (red, green, blue), 24 bits."""
    row = color[::-1] * width
    pixels = (row + bytes(-len(row) % 4)) * height
    return struct.pack("<2sI4xIIiiHH24x", b"BM", 54 + len(pixels), 54, 40, width, height, 1, 24) + pixels
