"""Reads PDF files (ISO 32000-1, 7) object by object, and writes them back in the plain layout, so that a test can change
one thing of a file."""

import re
import zlib
from typing import NamedTuple

WHITE = b"\0\t\n\f\r "
EOL = rb"(?:\r\n|\n|\r)"
TOKEN = re.compile(rb"[\0\t\n\f\r ]*(?:%[^\r\n]*[\0\t\n\f\r ]*)*(<<|>>|[\[\]{}()<]|/[^\0\t\n\f\r ()<>\[\]{}/%]*"
                   rb"|[^\0\t\n\f\r ()<>\[\]{}/%]+)")
NUMBER = re.compile(rb"[+-]?(\d+\.?\d*|\.\d+)$")
REFERENCE = re.compile(rb"[\0\t\n\f\r ]+(\d+)[\0\t\n\f\r ]+R(?![^\0\t\n\f\r ()<>\[\]{}/%])")
ESCAPE = re.compile(rb"\\(?:([0-7]{1,3})|(\r\n|[\r\n])|(.))", re.DOTALL)
ESCAPED = dict(zip(b"nrtbf", b"\n\r\t\b\f"))


class Damaged(Exception):
    """What cannot be read at all."""


class Name(bytes):
    """Without its slash, as it is written."""

    def __str__(self):
        return self.decode("latin-1")


class String(bytes):
    source = b""  # with its brackets


class Operator(bytes):
    pass


class Reference(NamedTuple):
    number: int
    generation: int = 0


class Stream:
    def __init__(self, entries, data, start=0, ahead=b"\n", behind=b"\nendstream"):
        self.entries, self.data = entries, data
        self.start = start
        self.ahead, self.behind = ahead, behind  # what is behind "stream", and behind as much as the length says

    def filters(self) -> list:
        value = self.entries.get("Filter", [])
        return value if isinstance(value, list) else [value]

    def content(self) -> bytes:
        data = self.data
        for name in self.filters():
            if name != b"FlateDecode" or "DecodeParms" in self.entries:
                raise Damaged(f"a stream by {name}")
            data = zlib.decompress(data)
        return data


class Lexer:
    def __init__(self, data: bytes, at=0):
        self.data, self.at = data, at

    def take(self, contents=False):
        """The next object; in page contents an operator too, and None at the end."""
        match = TOKEN.match(self.data, self.at)
        if not match:
            if contents:
                return None
            raise Damaged(f"no object at {self.at}")
        token, self.at = match[1], match.end()
        if token == b"<<":
            return self.dictionary()
        if token == b"[":
            return list(self.until(b"]"))
        if token in (b"(", b"<"):
            return self.string(token == b"<", match.start(1))
        if token.startswith(b"/"):
            return Name(token[1:])
        if NUMBER.match(token):
            reference = None if contents else REFERENCE.match(self.data, self.at)
            if reference and token.isdigit():
                self.at = reference.end()
                return Reference(int(token), int(reference[1]))
            return float(token) if b"." in token else int(token)
        words = {b"true": True, b"false": False, b"null": None}
        return words[token] if token in words and not contents else Operator(token)

    def until(self, end):
        while (match := TOKEN.match(self.data, self.at)) and match[1] != end:
            yield self.take()
        if not match:
            raise Damaged(f"nothing ends what began before {self.at}")
        self.at = match.end()

    def dictionary(self) -> dict:
        parts = list(self.until(b">>"))
        return dict(zip(map(str, parts[::2]), parts[1::2], strict=True))

    def string(self, hexadecimal, start):
        if hexadecimal:
            self.at = self.data.index(b">", self.at) + 1
            digits = re.sub(rb"[^0-9A-Fa-f]", b"", self.data[start:self.at])
            value = String(bytes.fromhex((digits + b"0" * (len(digits) % 2)).decode()))
        else:
            depth = 1
            while depth:
                byte = self.data[self.at]
                depth += {0x28: 1, 0x29: -1}.get(byte, 0)
                self.at += 2 if byte == 0x5C else 1
            value = String(ESCAPE.sub(lambda match: bytes([int(match[1], 8) & 255]) if match[1] else b"" if match[2]
                                      else bytes([ESCAPED.get(match[3][0], match[3][0])]),
                                      self.data[start + 1:self.at - 1]))
        value.source = self.data[start:self.at]
        return value


class File:
    def __init__(self, data: bytes):
        self.data = data
        self.objects, self.places = {}, {}  # by number; where those begin and end that are by themselves
        self.start = int(re.findall(rb"startxref\s+(\d+)\s+%%EOF", data)[-1])
        if data.startswith(b"xref", self.start):
            entries = self.table()
        else:
            entries = self.table_stream()
        for number, (kind, where, index) in entries.items():
            if kind == 1:
                self.objects[number] = self.read(number, where)
        packed = {where for kind, where, _ in entries.values() if kind == 2}
        contents = {number: self.unpacked(self.objects[number]) for number in packed}
        for number, (kind, where, index) in entries.items():
            if kind == 2:
                found, self.objects[number] = contents[where][index]
                if found != number:
                    raise Damaged(f"object {found} where {number} should be")

    def table(self):
        lexer = Lexer(self.data, self.start + 4)
        first, count = lexer.take(), lexer.take()
        rows = re.compile(rb"(\d{10}) (\d{5}) ([nf])(?: \n| \r|\r\n)")
        at = re.compile(rb"\s*").match(self.data, lexer.at).end()
        entries = {}
        for number in range(first, first + count):
            row = rows.match(self.data, at)
            if not row:
                raise Damaged(f"entry {number} of the table")
            entries[number] = (int(row[3] == b"n"), int(row[1]), 0)
            at = row.end()
        self.trailer = Lexer(self.data, self.data.index(b"trailer", at) + 7).take()
        return entries

    def table_stream(self):
        number = int(re.match(rb"\d+", self.data[self.start:self.start + 10])[0])
        stream = self.read(number, self.start)
        self.trailer = stream.entries
        widths, rows = self.trailer["W"], stream.content()
        entries = {}
        for number in range(self.trailer["Size"]):
            row = []
            for width in widths:
                row.append(int.from_bytes(rows[:width], "big"))
                rows = rows[width:]
            entries[number] = tuple(row)
        return entries

    def read(self, number, at):
        head = re.compile(rb"\s*(\d+)\s+\d+\s+obj").match(self.data, at)
        if not head or int(head[1]) != number:
            raise Damaged(f"no object {number} at {at}")
        lexer = Lexer(self.data, head.end())
        value = lexer.take()
        keyword = re.compile(rb"\s*stream(\r\n|\n|\r|)").match(self.data, lexer.at)
        if keyword:
            length = self.value(value["Length"])
            end = self.data.index(b"endstream", min(keyword.end() + length, len(self.data)) - 2) + 9
            value = Stream(value, self.data[keyword.end():keyword.end() + length], keyword.end(), keyword[1],
                           self.data[keyword.end() + length:end])
            lexer.at = end
        self.places[number] = (at, self.data.index(b"endobj", lexer.at) + 6)
        return value

    @staticmethod
    def unpacked(stream):
        content = stream.content()
        numbers = [int(text) for text in content[:stream.entries["First"]].split()]
        return [(number, Lexer(content, stream.entries["First"] + at).take())
                for number, at in zip(numbers[::2], numbers[1::2])]

    def value(self, value):
        return self.objects[value.number] if isinstance(value, Reference) else value

    def pages(self, node=None, inherited=None):
        """Each page's dictionary, and what it has from the nodes above it."""
        node = node or self.value(self.value(self.trailer["Root"])["Pages"])
        inherited = inherited or {}
        if node["Type"] == b"Page":
            yield node, inherited
            return
        inherited = inherited | {key: node[key] for key in ("MediaBox", "Resources") if key in node}
        for kid in self.value(node["Kids"]):
            yield from self.pages(self.value(kid), inherited)


def written(value) -> bytes:
    match value:
        case Stream():
            return written(value.entries) + b"stream" + value.ahead + value.data + value.behind
        case bool():
            return b"true" if value else b"false"
        case Reference():
            return b"%d %d R" % value
        case Name() | Operator():
            return (b"/" if isinstance(value, Name) else b"") + bytes(value)
        case bytes():
            return value.source if isinstance(value, String) and value.source else b"<" + value.hex().encode() + b">"
        case float():
            return f"{value:f}".encode()
        case dict():
            return b"<<" + b"".join(b"/" + key.encode("latin-1") + b" " + written(item)
                                    for key, item in value.items()) + b">>"
        case list():
            return b"[" + b" ".join(map(written, value)) + b"]"
        case None:
            return b"null"
    return str(value).encode()


def rebuilt(file: File, head=b"%PDF-1.7\n%\xE2\xE3\xCF\xD3\n", table=b"xref\n", shift=0, number=0, old=b"",
            new=b"") -> bytes:
    """The file with its objects as they are now, each by itself, and a table of them; its places moved by a shift; in the
    text of the object with that number an expression replaced."""
    layout = {b"XRef", b"ObjStm"}
    objects = {number: value for number, value in file.objects.items()
               if not (isinstance(value, Stream) and value.entries.get("Type") in layout)}
    text, places = head, {}
    for each, value in objects.items():
        places[each] = len(text) + shift
        data = b"%d 0 obj\n%s\nendobj\n" % (each, written(value))
        text += re.sub(old, new, data, count=1) if each == number else data
    size = max(places) + 1
    rows = b"".join(b"%010d %05d %c \n" % ((places[each], 0, b"n"[0]) if each in places else (0, 65535, b"f"[0]))
                    for each in range(size))
    trailer = {key: value for key, value in file.trailer.items() if key in ("Root", "Info", "ID", "Encrypt")}
    return text + table + b"0 %d\n" % size + rows + b"trailer\n" + written(trailer | {"Size": size}) \
        + b"\nstartxref\n%d\n%%%%EOF\n" % len(text)
