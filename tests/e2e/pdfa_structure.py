"""Clauses of ISO 19005-2:2011 about the structure of a file, its metadata, and what it shall not hold."""

import re
import xml.etree.ElementTree as xml
from datetime import datetime

from pdfa_document import RDF, clause
from pdfa_syntax import EOL, Name, String

FILTERS = (b"ASCIIHexDecode", b"ASCII85Decode", b"FlateDecode", b"RunLengthDecode", b"CCITTFaxDecode", b"JBIG2Decode",
           b"DCTDecode", b"JPXDecode")
XMP, DC = "{http://ns.adobe.com/xap/1.0/}", "{http://purl.org/dc/elements/1.1/}"
PDF, PDFAID = "{http://ns.adobe.com/pdf/1.3/}", "{http://www.aiim.org/pdfa/ns/id/}"
SCHEMAS = {DC + "title", XMP + "CreateDate", XMP + "ModifyDate", XMP + "CreatorTool", PDF + "Producer",
           PDFAID + "part", PDFAID + "conformance"}


@clause("6.1.2", "File header")
def header(file):
    if not re.match(rb"%PDF-1\.[0-7]" + EOL + rb"%[\x80-\xFF]{4}", file.data):
        yield "not '%PDF-1.n' and a comment of four bytes above 127"


@clause("6.1.3", "File trailer")
def trailer(file):
    identifier = file.trailer.get("ID")
    if not (isinstance(identifier, list) and len(identifier) == 2 and all(identifier)):
        yield "no ID"
    if "Encrypt" in file.trailer:
        yield "Encrypt"
    if not re.fullmatch(rb"(\r\n|\n|\r)?", file.data[file.data.rindex(b"%%EOF") + 5:]):
        yield "data behind the end"


@clause("6.1.4", "Cross-reference table")
def cross_reference(file):
    if file.data.startswith(b"xref", file.start) and not re.compile(
            rb"xref" + EOL + rb"\d+ \d+" + EOL).match(file.data, file.start):
        yield "more than an end of line between 'xref' and the numbers"
    for number, (start, _) in file.places.items():
        if not file.data[start:start + 1].isdigit():
            yield f"object {number} does not begin at {start}"


@clause("6.1.5", "Document information dictionary")
def information(file):
    info, description = file.value(file.trailer.get("Info", {})), file.description()

    def text(key):
        value = info.get(key)
        return value and (value[2:].decode("utf-16-be") if value[:2] == b"\xFE\xFF" else value.decode("ascii"))

    def moment(key):
        found = re.fullmatch(r"D:(\d{14})Z", text(key) or "")
        return found and datetime.strptime(found[1], "%Y%m%d%H%M%S").strftime("%Y-%m-%dT%H:%M:%SZ")

    for tag, value in ((f"{DC}title/{RDF}Alt/{RDF}li", text("Title")), (XMP + "CreatorTool", text("Creator")),
                       (PDF + "Producer", text("Producer")), (XMP + "CreateDate", moment("CreationDate")),
                       (XMP + "ModifyDate", moment("ModDate"))):
        if description is None or description.findtext(tag) != value or not value:
            yield f"{value!r} is not what the metadata say in {tag}"


@clause("6.1.6", "String objects")
def strings(file):
    for value in file.everything:
        if isinstance(value, String) and value.source.startswith(b"<"):
            digits = re.sub(rb"[\0\t\n\f\r ]", b"", value.source[1:-1])
            if len(digits) % 2 or not re.fullmatch(rb"[0-9A-Fa-f]*", digits):
                yield f"{value.source}"


@clause("6.1.7", "Stream objects")
def streams(file):
    for number, stream in file.streams.items():
        if stream.ahead not in (b"\r\n", b"\n") or not re.fullmatch(EOL + b"endstream", stream.behind):
            yield f"object {number}: its length, or the ends of lines about its data"
        for key in ("F", "FFilter", "FDecodeParms"):
            if key in stream.entries:
                yield f"object {number} has {key}"
        for name in stream.filters():
            if name not in FILTERS:
                yield f"object {number} has the filter {name}"


@clause("6.1.8", "Name objects")
def names(file):
    for font, _ in file.fonts:
        for name in (font.get("BaseFont", b""), file.descriptor(font).get("FontName", b"")):
            try:
                re.sub(rb"#([0-9A-Fa-f]{2})", lambda match: bytes([int(match[1], 16)]), name).decode()
            except UnicodeDecodeError:
                yield f"{name}"


@clause("6.1.9", "Indirect objects")
def indirect_objects(file):
    for number, (start, end) in file.places.items():
        text = file.data[start - 2:end + 2]
        if not re.match(rb".?[\n\r]\d+[\0\t\n\f\r ]\d+[\0\t\n\f\r ]obj" + EOL, text, re.DOTALL) \
                or not re.search(rb"[\n\r]endobj" + EOL + b".?$", text, re.DOTALL):
            yield f"object {number}"


@clause("6.1.10", "Inline image dictionaries")
def inline_images(file):
    for sheet in file.sheets:
        for entries in sheet.inline:
            if entries.get("F", entries.get("Filter")) in (b"LZW", b"LZWDecode", b"Crypt"):
                yield "LZW or Crypt"


@clause("6.1.13", "Implementation limits")
def limits(file):
    for value in file.everything:
        if isinstance(value, int) and not -2**31 <= value < 2**31 \
                or isinstance(value, float) and (abs(value) > 3.403e38 or 0 < abs(value) < 1.175e-38) \
                or isinstance(value, Name) and len(value) > 127 or isinstance(value, String) and len(value) > 32767:
            yield f"{str(value)[:50]} goes too far"
    if len(file.objects) > 8388607:
        yield "too many objects"
    for sheet in file.sheets:
        depth = deepest = 0
        for name, _ in sheet.steps:
            depth += (name == "q") - (name == "Q")
            deepest = max(deepest, depth)
        if deepest > 28 or depth:
            yield f"q and Q: {deepest} deep, {depth} open"
        if not sheet.box or not all(3 <= size <= 14400 for size in (sheet.box[2] - sheet.box[0], sheet.box[3] - sheet.box[1])):
            yield f"a page of {sheet.box}"


NEVER = {("6.1.12", "Permissions"): ("catalog", ["Perms"]), ("6.3", "Annotations"): ("page", ["Annots"]),
         ("6.4", "Interactive forms"): ("catalog", ["AcroForm"]),
         ("6.5", "Actions"): ("both", ["OpenAction", "AA", "Names"]),
         ("6.8", "Embedded files"): ("catalog", ["AF", "Collection"]),
         ("6.9", "Optional content"): ("catalog", ["OCProperties"]),
         ("6.10", "Alternate presentations and transitions"): ("page", ["PresSteps", "Trans"]),
         ("6.11", "Document requirements"): ("catalog", ["Requirements"])}


def never(where, keys):
    def check(file):
        dictionaries = [file.catalog] if where != "page" else []
        dictionaries += [sheet.entries for sheet in file.sheets] if where != "catalog" else []
        for key in keys:
            if any(key in dictionary for dictionary in dictionaries):
                yield key
    return check


for (number, title), (where, keys) in NEVER.items():
    clause(number, title)(never(where, keys))


@clause("6.6.2.1", "Metadata stream")
def metadata(file):
    stream = file.value(file.catalog.get("Metadata"))
    packet = re.match(rb"<\?xpacket (.*?)\?>", file.metadata())
    if not stream or not packet or re.search(rb"bytes|encoding", packet[1]):
        yield "no packet, or one that says its size or encoding"
    elif stream.filters() or (stream.entries.get("Type"), stream.entries.get("Subtype")) != (b"Metadata", b"XML"):
        yield "compressed, or not called metadata"
    else:
        file.metadata().decode("utf-8")


@clause("6.6.2.3", "Extension schemas")
def schemas(file):
    for element in file.description() if file.metadata() else ():
        if element.tag not in SCHEMAS:
            yield f"{element.tag}"


@clause("6.6.4", "Version identification")
def version(file):
    description = file.description() if file.metadata() else xml.Element("none")
    if (description.findtext(PDFAID + "part"), description.findtext(PDFAID + "conformance")) != ("2", "U"):
        yield "not 2, U"
