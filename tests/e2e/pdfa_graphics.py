"""Clauses of ISO 19005-2:2011 about what pages show: colours, pictures, text."""

import struct

from pdfa_document import clause, values_in
from pdfa_fonts import unicode_map
from pdfa_syntax import Name

OPERATORS = set("b B b* B* BDC BI BMC BT BX c cm CS cs d d0 d1 Do DP EI EMC ET EX f F f* G g gs h i ID j J K k l m M MP n "
                "q Q re RG rg ri s S SC sc SCN scn sh T* Tc Td TD Tf Tj TJ TL Tm Tr Ts Tw Tz v w W W* y ' \"".split())
INTENTS = (b"RelativeColorimetric", b"AbsoluteColorimetric", b"Perceptual", b"Saturation")


@clause("6.2.2", "Content streams")
def contents(file):
    for sheet in file.sheets:
        for name in {name for name, _ in sheet.steps} - OPERATORS:
            yield f"the operator {name}"
        for kind, operator in (("Font", "Tf"), ("XObject", "Do"), ("ExtGState", "gs"), ("ColorSpace", "cs")):
            known = {key.encode("latin-1") for key in file.value(sheet.own.get(kind, {}))}
            for name in sheet.used(operator) - known - {b"DeviceRGB", b"DeviceGray", b"DeviceCMYK", b"Pattern"}:
                yield f"{name} is not in the page's own resources"


@clause("6.2.3", "Output intent")
def output_intent(file):
    profile = file.intent_profile()
    if len(profile) < 128 or struct.unpack_from(">I", profile)[0] != len(profile) or profile[36:40] != b"acsp" \
            or profile[8] not in (2, 4) or profile[12:16] not in (b"mntr", b"prtr") \
            or profile[16:20] not in (b"RGB ", b"CMYK", b"GRAY"):
        yield "no GTS_PDFA1 with the profile of a printer or monitor"
    for intent in file.catalog.get("OutputIntents", []):
        if "OutputConditionIdentifier" not in intent or "DestOutputProfileRef" in intent:
            yield "its entries"
    stream = file.value(file.value((file.catalog.get("OutputIntents") or [{}])[0]).get("DestOutputProfile"))
    if stream and stream.entries.get("N") != 3:
        yield "the number of its channels"


def color_spaces(file):
    """Each colour space used, with those that it builds on."""
    for image in file.images:
        space = file.value(image.get("ColorSpace", Name(b"DeviceGray")))
        yield from (item for item in values_in(space) if isinstance(item, Name))
    spaces = {"g": "Gray", "G": "Gray", "rg": "RGB", "RG": "RGB", "k": "CMYK", "K": "CMYK"}
    for sheet in file.sheets:
        yield from (Name(b"Device" + spaces[name].encode()) for name, _ in sheet.steps if name in spaces)
        yield from (Name(operands[0]) for name, operands in sheet.steps if name in ("cs", "CS"))


@clause("6.2.4", "Colour spaces")
def colors(file):
    target = file.intent_profile()[16:20]
    for space in set(color_spaces(file)):
        if not {b"DeviceRGB": target == b"RGB ", b"DeviceGray": bool(target), b"Indexed": True}.get(bytes(space)):
            yield f"{space} without a profile for it"


@clause("6.2.5", "Extended graphics state")
def graphics_states(file):
    for value in file.everything:
        if isinstance(value, dict) and (value.get("Type") == b"ExtGState" or "ExtGState" in value):
            yield "one is there"


@clause("6.2.6", "Rendering intents")
def intents(file):
    used = [image["Intent"] for image in file.images if "Intent" in image]
    for intent in used + [name for sheet in file.sheets for name in sheet.used("ri")]:
        if intent not in INTENTS:
            yield f"{intent}"


@clause("6.2.8", "Images")
def images(file):
    for image in file.images:
        if image.get("Interpolate") or "Alternates" in image or "OPI" in image \
                or image.get("BitsPerComponent") not in (1, 2, 4, 8, 16):
            yield "interpolated, with alternates, or of odd depth"


@clause("6.2.9", "XObjects")
def external_objects(file):
    for stream in file.streams.values():
        if stream.entries.get("Type") == b"XObject" and stream.entries.get("Subtype") != b"Image":
            yield "one that is no picture"


@clause("6.2.10", "Transparency")
def transparency(file):
    if any("SMask" in image or "SMaskInData" in image for image in file.images) \
            or any("Group" in sheet.entries for sheet in file.sheets):
        yield "a soft mask or a group"


@clause("6.2.11.2", "Font types")
def font_types(file):
    for font, _ in file.fonts:
        first, last, widths = font.get("FirstChar"), font.get("LastChar"), file.value(font.get("Widths"))
        if font.get("Type") != b"Font" or font.get("Subtype") != b"TrueType" or not font.get("BaseFont") \
                or not widths or len(widths) != last - first + 1:
            yield f"{font.get('BaseFont')}: its entries"
        if font.get("BaseFont") != file.descriptor(font).get("FontName"):
            yield f"{font.get('BaseFont')}: two names"


@clause("6.2.11.4", "Font embedding")
def embedding(file):
    for font, codes in file.fonts:
        program = file.program(font)
        if not program:
            yield f"{font['BaseFont']} is not in the file"
        elif any(glyph >= program.glyphs for code in codes for glyph in program.glyphs_of(code)):
            yield f"{font['BaseFont']} lacks glyphs"


@clause("6.2.11.5", "Font metrics")
def metrics(file):
    for font, codes in file.fonts:
        program, widths = file.program(font), file.value(font["Widths"])
        for code in codes if program else ():
            index = code - font["FirstChar"]
            stated = widths[index] if 0 <= index < len(widths) else 0
            if any(abs(stated - program.width(glyph)) > 1 for glyph in program.glyphs_of(code)):
                yield f"{font['BaseFont']}, code {code}: {stated}"


@clause("6.2.11.6", "Character encodings")
def encodings(file):
    for font, _ in file.fonts:
        flags, program = file.descriptor(font).get("Flags", 0), file.program(font)
        if flags & 36 != 4 or "Encoding" in font:
            yield f"{font['BaseFont']} is not symbolic, or has an encoding"
        if program and len(program.maps) != 1 and (3, 0) not in program.maps:
            yield f"{font['BaseFont']}: which of its character maps?"


@clause("6.2.11.7", "Unicode character maps")
def unicode_maps(file):
    for font, codes in file.fonts:
        stream = file.value(font.get("ToUnicode"))
        known = unicode_map(stream.content()) if stream else {}
        for code in codes:
            if not known.get(code) or set(known[code]) & set("\0\uFEFF\uFFFE"):
                yield f"{font['BaseFont']}, code {code}"


@clause("6.2.11.8", "Use of .notdef glyph")
def missing_glyphs(file):
    for font, codes in file.fonts:
        program = file.program(font)
        for code in codes if program else ():
            if 0 in program.glyphs_of(code):
                yield f"{font['BaseFont']}, code {code}"
