"""Pages as a screen shows them, beside pages of a PDF that are rendered as large."""

import subprocess
from collections import Counter
from typing import NamedTuple

PAPER = 230  # of each colour at least, the unprintable margin included


class Picture(NamedTuple):
    width: int
    height: int
    rgb: bytes

    @classmethod
    def of(cls, command, environment=None) -> "Picture":
        """What a program writes as PPM."""
        image = subprocess.run(command, stdout=subprocess.PIPE, env=environment, check=True).stdout
        _, size, _, rgb = image.split(b"\n", 3)
        return cls(*map(int, size.split()), rgb)

    def cut(self, left, top, width, height) -> "Picture":
        rows = (3 * (y * self.width + left) for y in range(top, top + height))
        return Picture(width, height, b"".join(self.rgb[start:start + 3 * width] for start in rows))

    def is_paper(self, x, y) -> bool:
        return min(self.rgb[3 * (y * self.width + x):][:3]) > PAPER

    def rows(self, channel, darker_than) -> list[int]:
        """A bit for each pixel that has less of the colour."""
        bits = self.rgb[channel::3].translate(bytes(b"01"[level < darker_than] for level in range(256)))
        return [int(bits[y * self.width:(y + 1) * self.width], 2) for y in range(self.height)]

    def areas(self) -> Counter:
        """How many pixels of each colour have it all around, so that no edge was smoothed there."""
        pixels = list(zip(*[iter(self.rgb)] * 3))
        above, row, below = (pixels[line * self.width:] for line in range(3))
        return Counter(pixel for pixel, left, right, over, under in zip(row[1:], row, row[2:], above[1:], below[1:])
                       if pixel == left == right == over == under)


def page_of(pdf, page, dpi) -> Picture:
    # Rendered larger, as pdftoppm moves edges to whole pixels.
    command = f"pdftoppm -r {4 * dpi} -f {page} -l {page} '{pdf}' | convert ppm:- -scale 25% -depth 8 ppm:-"
    return Picture.of(["sh", "-c", command])


def sheet_in(screen: Picture, canvas, size: Picture) -> Picture:
    """The sheet of that size; canvas: left and top edge, width and height of the room in whose middle it lies."""
    left, top, width, height = canvas
    x = left + (width - size.width) // 2 - 4  # before it is the shadow
    y = top + (height - size.height) // 2 - 4
    x = next(x for x in range(x, x + 8) if screen.is_paper(x, top + height // 2))
    return screen.cut(x, next(y for y in range(y, y + 8) if screen.is_paper(x + 1, y)), size.width, size.height)


def sheet_found(screen: Picture, size: Picture) -> Picture:
    """The sheet of that size in the middle of a window that has the whole screen."""
    middle = screen.height // 2
    left = next(x for x in range(4, screen.width) if screen.is_paper(x, middle))
    top = next(y for y in range(middle, 0, -1) if not screen.is_paper(left + 2, y)) + 1
    return screen.cut(left, top, size.width, size.height)


def differences(sheet: Picture, page: Picture, reach=1) -> list[str]:
    """What is dark on one of them has to be at least greyish on the other, not more than so many pixels away, in each
    colour; and large areas have the same colours."""
    found = []
    for channel, color in enumerate(("red", "green", "blue")):
        for what, one, other in (("only on the sheet", sheet, page), ("only in the PDF", page, sheet)):
            near = other.rows(channel, 215)
            for _ in range(reach):
                near = [row | row << 1 | row >> 1 for row in near]
                near = [a | b | c for a, b, c in zip([0, *near], near, [*near[1:], 0])]
            for y, (dark, light) in enumerate(zip(one.rows(channel, 80), near)):
                if stray := dark & ~light:
                    found.append(f"{what}, {color}: row {y}, column {one.width - stray.bit_length()}")
                    break
    shown, printed = sheet.areas(), page.areas()
    for color in {*shown, *printed}:
        counts = shown[color], printed[color]
        letters = reach > 1 and color == (0, 0, 0)  # whose lines on whole pixels are areas of their own
        if min(color) < 240 and not letters and max(counts) > 200 and min(counts) < max(counts) / 2:
            found.append(f"{counts[0]} pixels of {color}, {counts[1]} in the PDF")
    return found
