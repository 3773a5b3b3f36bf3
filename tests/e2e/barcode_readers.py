"""What programs for reading barcodes find in pictures."""

import base64
import re
import subprocess
import xml.etree.ElementTree as ElementTree
from typing import NamedTuple

# Only these are looked for. Neither reader takes an Interleaved 2 of 5 of fewer than six digits.
ZBAR_KINDS = ("code39", "code93", "code128", "codabar", "i25")
ZBAR = ["zbarimg", "--quiet", "--nodbus", "--xml", "-Sdisable", *(f"-S{kind}.enable" for kind in ZBAR_KINDS)]
# It fails an assertion of its own where it finds a symbol again in a smaller copy of the picture.
ZXING = ["ZXingReader", "-noscale", "-format", "Code39,Code93,Code128,Codabar,ITF"]
XML_SPACE = "{http://zbar.sourceforge.net/2008/barcode}"
RETURN = "\ue00d"


class Found(NamedTuple):
    kind: str
    data: bytes
    degrees: int | None = None  # by which the symbol is turned counter-clockwise


def zbar(*pictures) -> list[list[Found]]:
    """The symbols in each picture."""
    result = subprocess.run([*ZBAR, *map(str, pictures)], stdout=subprocess.PIPE, timeout=120)
    found = {str(picture): [] for picture in pictures}
    # A carriage return in the data would become a line feed.
    root = ElementTree.fromstring(result.stdout.decode("latin-1").replace("\r", RETURN))
    for source in root.iter(XML_SPACE + "source"):
        for symbol in source.iter(XML_SPACE + "symbol"):
            data = symbol.find(XML_SPACE + "data")
            encoded = data.get("format") == "base64"
            content = base64.b64decode(data.text) if encoded else data.text.replace(RETURN, "\r").encode("latin-1")
            found[source.get("href")].append(
                Found(symbol.get("type"), content,
                      {"UP": 0, "LEFT": 90, "DOWN": 180, "RIGHT": 270}[symbol.get("orientation")]))
    return list(found.values())


def zxing(*pictures) -> list[list[Found]]:
    """The symbols in each picture."""
    text = subprocess.run([*ZXING, *map(str, pictures)], stdout=subprocess.PIPE, check=True,
                          timeout=120).stdout.decode("latin-1")
    found = {str(picture): [] for picture in pictures}
    for record in text.split("File: ")[1:]:
        name = record.split("\n")[0].strip()
        fields = dict(re.findall(r"^(Bytes|Format): *(.*)$", record, re.MULTILINE))
        if "Bytes" in fields:
            found[name].append(Found(fields["Format"], bytes.fromhex(fields["Bytes"])))
    return list(found.values())


# ISO/IEC 16388, table of the full ASCII: the characters behind each shift character, from "A" on.
SHIFTED = {
    "$": bytes(range(1, 27)),
    "%": bytes([*range(27, 32), *b";<=>?[\\]^_{|}~\x7f\0@`"]) + b"\x7f" * 3,
    "/": b"!\"#$%&'()*+,-./0123456789:",
    "+": b"abcdefghijklmnopqrstuvwxyz",
}


def full_ascii(encoded: bytes) -> bytes:
    """What the characters of a Code 39 mean where it is full ASCII."""
    return b"".join(SHIFTED[pair[0]][ord(pair[1]) - ord("A"):][:1] if len(pair) > 1 else pair.encode()
                    for pair in re.findall(r"[$%/+][A-Z]|.", encoded.decode("ascii"), re.DOTALL))
