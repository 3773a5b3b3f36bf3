"""Simple pictures for examples, drawn here so that each chapter says which it means."""

import io

from PIL import Image, ImageDraw


def frame() -> Image.Image:
    """A frame with its diagonals: shows where a picture begins and ends, and which way up it stands."""
    picture = Image.new("RGB", (300, 200), "white")
    draw = ImageDraw.Draw(picture)
    draw.rectangle((0, 0, 299, 199), outline="#1a4f8a", width=8)
    draw.line((0, 0, 299, 199), fill="#1a4f8a", width=4)
    draw.line((0, 199, 299, 0), fill="#1a4f8a", width=4)
    draw.ellipse((20, 20, 60, 60), fill="#c0392b")
    return picture


def signet() -> Image.Image:
    """A firm's mark in black on white, for inverting."""
    picture = Image.new("1", (240, 240), 1)
    draw = ImageDraw.Draw(picture)
    draw.ellipse((10, 10, 229, 229), outline=0, width=16)
    draw.polygon([(120, 40), (190, 180), (50, 180)], fill=0)
    return picture


def stationery() -> Image.Image:
    """A sheet's background: a band at the top, a pale circle."""
    picture = Image.new("RGB", (420, 594), "white")
    draw = ImageDraw.Draw(picture)
    draw.rectangle((0, 0, 419, 40), fill="#1a4f8a")
    draw.ellipse((110, 230, 310, 430), fill="#e8eef5")
    draw.rectangle((0, 580, 419, 593), fill="#1a4f8a")
    return picture


PICTURES = {"rahmen": frame, "zeichen": signet, "briefpapier": stationery}


def picture(name, suffix) -> bytes:
    """As the file that a name with this suffix stands for; the host's own pictures are PCX files."""
    kind = {".bmp": "BMP", ".png": "PNG", ".gif": "GIF"}.get(suffix.lower(), "PCX")
    target = io.BytesIO()
    PICTURES[name]().save(target, kind)
    return target.getvalue()
