"""Pages as pictures, and simple pictures to print."""

import re
import struct
import subprocess

POINTS_PER_INCH = 72


class PagePicture:
    """A page of a PDF, rendered in colour without smoothing."""

    def __init__(self, pdf, page=1, dpi=300):
        command = ["pdftoppm", "-r", dpi, "-aa", "no", "-aaVector", "no", "-f", page, "-l", page, pdf]
        image = subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, check=True).stdout
        _, size, _, self.pixels = image.split(b"\n", 3)
        self.width, self.height = map(int, size.split())
        self.points = POINTS_PER_INCH / dpi

    def box(self, color: bytes) -> tuple[float, float, float, float] | None:
        """Left, top, right and bottom edge of everything of one colour, in points from the sheet's top left corner."""
        stride = 3 * self.width
        edges = []
        for row in range(self.height):
            line = self.pixels[row * stride:(row + 1) * stride]
            found = [match.start() // 3 for match in re.finditer(re.escape(color), line) if match.start() % 3 == 0]
            if found:
                edges.append((row, found[0], found[-1]))
        if not edges:
            return None
        return (min(left for _, left, _ in edges) * self.points, edges[0][0] * self.points,
                (max(right for _, _, right in edges) + 1) * self.points, (edges[-1][0] + 1) * self.points)


def bmp(width, height, color: bytes) -> bytes:
    """A picture of one colour (red, green, blue), 24 bits."""
    row = color[::-1] * width
    pixels = (row + bytes(-len(row) % 4)) * height
    return struct.pack("<2sIHHI IiiHHIIiiII", b"BM", 54 + len(pixels), 0, 0, 54, 40, width, height, 1, 24, 0, len(pixels),
                       0, 0, 0, 0) + pixels
