"""What a TrueType font program in a PDF file (OpenType tables) and a map to Unicode say of the codes of a font."""

import re
import struct

PAIR = re.compile(rb"<([0-9A-Fa-f]{2})>\s*<([0-9A-Fa-f]+)>")


class Program:
    def __init__(self, data: bytes):
        count, = struct.unpack_from(">H", data, 4)
        self.tables = {tag: data[start:start + length] for tag, _, start, length in
                       (struct.unpack_from(">4sIII", data, 12 + 16 * number) for number in range(count))}
        self.units, = struct.unpack_from(">H", self.tables[b"head"], 18)
        self.glyphs, = struct.unpack_from(">H", self.tables[b"maxp"], 4)
        count, = struct.unpack_from(">H", self.tables[b"hhea"], 34)
        self.advances = struct.unpack_from(">" + "Hh" * count, self.tables[b"hmtx"])[::2]
        cmap = self.tables[b"cmap"]
        self.maps = {entry[:2]: self.map(cmap[entry[2]:]) for entry in
                     (struct.unpack_from(">HHI", cmap, 4 + 8 * number)
                      for number in range(struct.unpack_from(">H", cmap, 2)[0]))}

    @staticmethod
    def map(table) -> dict:
        kind, = struct.unpack_from(">H", table)
        if kind == 6:
            first, count = struct.unpack_from(">HH", table, 6)
            return dict(enumerate(struct.unpack_from(f">{count}H", table, 10), first))
        if kind != 4:
            raise ValueError(f"a character map of format {kind}")
        segments = struct.unpack_from(">H", table, 6)[0] // 2
        ends = struct.unpack_from(f">{segments}H", table, 14)
        columns = struct.unpack_from(f">{3 * segments}H", table, 16 + 2 * segments)
        found = {}
        for number, end in enumerate(ends):
            start, delta, offset = columns[number::segments]
            for code in range(start, min(end, 0xFFFE) + 1):
                glyph = code
                if offset:
                    at = 16 + 6 * segments + 2 * number + offset + 2 * (code - start)
                    glyph, = struct.unpack_from(">H", table, at)
                found[code] = (glyph + delta) & 0xFFFF if glyph or not offset else 0
        return found

    def glyphs_of(self, code) -> set[int]:
        """Where readers end up that look for a symbolic font's codes (ISO 32000-1, 9.6.6.4); 0 for nowhere."""
        return {table.get(base + code, 0) for (platform, _), table in self.maps.items()
                for base in ([0xF000] if platform == 3 else [0])}

    def width(self, glyph) -> float:
        """In thousandths of the em."""
        return 1000 * self.advances[min(glyph, len(self.advances) - 1)] / self.units


def unicode_map(content: bytes) -> dict[int, str]:
    return {int(code, 16): bytes.fromhex(text.decode()).decode("utf-16-be", "surrogatepass")
            for block in re.findall(rb"beginbfchar(.*?)endbfchar", content, re.DOTALL)
            for code, text in PAIR.findall(block)}
