"""PDF files as the clauses of the checker see them."""

import xml.etree.ElementTree as xml

from pdfa_fonts import Program
from pdfa_syntax import File, Lexer, Name, Operator, Stream

RDF = "{http://www.w3.org/1999/02/22-rdf-syntax-ns#}"
CLAUSES = {}


def clause(number, title):
    def register(function):
        CLAUSES[number] = f"{number} {title}", function
        return function
    return register


def values_in(value):
    yield value
    inside = value.entries if isinstance(value, Stream) else value
    for item in inside.values() if isinstance(inside, dict) else inside if isinstance(inside, list) else ():
        yield from values_in(item)


class Page:
    """Operators with their operands, and what they use of the resources."""

    def __init__(self, file, page, inherited):
        self.entries, self.box = page, file.value(page.get("MediaBox", inherited.get("MediaBox")))
        self.own = file.value(page.get("Resources", {}))
        lexer = Lexer(file.value(page["Contents"]).content())
        self.steps, operands, self.inline = [], [], []
        while (token := lexer.take(contents=True)) is not None:
            if not isinstance(token, Operator):
                operands.append(token)
                continue
            if token == b"BI":
                parts = list(lexer.until(b"ID"))
                self.inline.append(dict(zip(map(str, parts[::2]), parts[1::2])))
                lexer.at = lexer.data.index(b"EI", lexer.at)
            self.steps.append((token.decode("latin-1"), operands))
            operands = []

    def used(self, operator) -> set:
        return {bytes(operands[0]) for name, operands in self.steps if name == operator}

    def codes(self) -> dict[bytes, set]:
        """What is shown in each font."""
        shown, font = {}, None
        for name, operands in self.steps:
            if name == "Tf":
                font = bytes(operands[0])
            elif name in ("Tj", "TJ", "'", '"'):
                parts = operands[-1] if name == "TJ" else operands[-1:]
                shown.setdefault(font, set()).update(*(part for part in parts if isinstance(part, bytes)))
        return shown


class Archive(File):
    def __init__(self, data):
        super().__init__(data)
        self.catalog = self.value(self.trailer["Root"])
        self.sheets = [Page(self, page, inherited) for page, inherited in self.pages()]
        self.everything = [item for value in [*self.objects.values(), self.trailer] for item in values_in(value)]
        self.everything += [item for sheet in self.sheets for _, operands in sheet.steps for each in operands
                            for item in values_in(each)]
        self.streams = {number: value for number, value in self.objects.items() if isinstance(value, Stream)}
        self.images = [value.entries for value in self.streams.values() if value.entries.get("Subtype") == b"Image"]
        self.fonts = self.used_fonts()

    def used_fonts(self) -> list:
        """The fonts that text is shown in, and the codes shown."""
        codes = {}
        for sheet in self.sheets:
            for name, shown in sheet.codes().items():
                reference = self.value(sheet.own.get("Font", {})).get(str(Name(name)))
                codes.setdefault(reference, set()).update(shown)
        return [(self.value(reference), sorted(shown)) for reference, shown in codes.items() if reference]

    def descriptor(self, font) -> dict:
        return self.value(font.get("FontDescriptor")) or {}

    def program(self, font) -> Program | None:
        stream = self.value(self.descriptor(font).get("FontFile2"))
        return Program(stream.content()) if stream else None

    def intent_profile(self) -> bytes:
        for intent in self.catalog.get("OutputIntents", []):
            if self.value(intent).get("S") == b"GTS_PDFA1":
                return self.value(self.value(intent)["DestOutputProfile"]).content()
        return b""

    def metadata(self) -> bytes:
        stream = self.value(self.catalog.get("Metadata"))
        return stream.data if stream else b""

    def description(self):
        return xml.fromstring(self.metadata()).find(f"{RDF}RDF/{RDF}Description")
