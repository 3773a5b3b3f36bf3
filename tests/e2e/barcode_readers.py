"""What programs for reading barcodes find in pictures."""

import re
import subprocess

# Only these are looked for. Neither reader takes an Interleaved 2 of 5 of fewer than six digits.
ZBAR_KINDS = ("code39", "code93", "code128", "codabar", "i25")
ZBAR = ["zbarimg", "--quiet", "--nodbus", "--xml", "-Sdisable", *(f"-S{kind}.enable" for kind in ZBAR_KINDS)]
ZBAR_TURNS = {"UP": 0, "LEFT": 90, "DOWN": 180, "RIGHT": 270}  # counter-clockwise
# It fails an assertion of its own where it finds a symbol again in a smaller copy of the picture.
ZXING = ["ZXingReader", "-noscale", "-format", "Code39,Code93,Code128,Codabar,ITF"]


def output_of(command, pictures) -> str:
    return subprocess.run([*command, *pictures], stdout=subprocess.PIPE, timeout=120).stdout.decode("latin-1")


def zbar(*pictures) -> list[list[tuple[str, int, str]]]:
    """The symbols in each picture: kind, degrees by which it is turned, data."""
    symbol = re.compile(r"<symbol type='(.*?)'.*?orientation='(\w+)'.*?<!\[CDATA\[(.*?)\]\]>", re.DOTALL)
    sources = dict(re.findall(r"<source href='(.*?)'>(.*?)</source>", output_of(ZBAR, pictures), re.DOTALL))
    found = [symbol.findall(sources.get(str(picture), "")) for picture in pictures]
    return [[(kind, ZBAR_TURNS[turn], data) for kind, turn, data in symbols] for symbols in found]


def zxing(*pictures) -> list[list[tuple[str, str]]]:
    """The symbols in each picture: kind, data."""
    symbol = re.compile(r"^Bytes: *(.*)\n(?:.*\n)*?Format: *(.*)$", re.MULTILINE)
    sources = {}
    for record in output_of(ZXING, pictures).split("File:")[1:]:  # one for each symbol
        source, text = record.strip().split("\n", 1)
        sources[source] = sources.get(source, "") + text + "\n"
    found = [symbol.findall(sources.get(str(picture), "")) for picture in pictures]
    return [[(kind, bytes.fromhex(data).decode("latin-1")) for data, kind in symbols] for symbols in found]
