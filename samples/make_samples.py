#!/usr/bin/env python3
"""Writes the sample print files beside this script: RECHNUNG.OUT (an invoice of two pages) and TESTSEIT.OUT (the
attribute test page). A print file is text in the DOS code page 850 with caret macros; lines end with CR LF, pages
with a form feed."""

import pathlib

FORM_FEED = "\f"


def indent(blanks: int) -> str:
    """The indentation macro: its parameter is one byte, the number of blanks."""
    return "^LR" + chr(blanks)


def barcode(y: float, x: float, data: str) -> str:
    """The barcode macro; inches from the top left corner of the printable area."""
    return f"^BC{y},{x},{data}\\"


def page(lines: list[str]) -> str:
    return "\r\n".join(lines) + FORM_FEED


def money(cents: int) -> str:
    euros, rest = divmod(cents, 100)
    return f"{euros:,}".replace(",", ".") + f",{rest:02d}"


COLUMNS = [6, 12, 40, 8, 12, 12]


def rule(left: str, cross: str, right: str, line: str = "─") -> str:
    return left + cross.join(line * width for width in COLUMNS) + right


def sum_rule(left: str, cross: str, right: str) -> str:
    """A rule above or below the sums, which stand in the last column alone."""
    return left + "─" * (sum(COLUMNS[:-1]) + len(COLUMNS) - 2) + cross + "─" * COLUMNS[-1] + right


def sum_line(name: str, cents: int) -> str:
    return "│" + (name + " ").rjust(sum(COLUMNS[:-1]) + len(COLUMNS) - 2) + "│" + (money(cents) + " ").rjust(COLUMNS[-1]) + "│"


def row(cells: list[str], right_from: int = 3) -> str:
    parts = []
    for number, (cell, width) in enumerate(zip(cells, COLUMNS)):
        parts.append(cell.rjust(width - 1) + " " if number >= right_from else " " + cell.ljust(width - 1))
    return "│" + "│".join(parts) + "│"


ITEMS = [
    ("4711-01", "Stehordner A4, Rücken 80 mm, grün", 120, 189),
    ("4711-02", "Stehordner A4, Rücken 50 mm, blau", 60, 175),
    ("2300-10", "Kopierpapier 80 g/m², 500 Blatt", 40, 449),
    ("2300-17", "Endlospapier 12\" × 240 mm, 2000 Blatt", 5, 3890),
    ("0815-03", "Büroklammern 26 mm, verzinkt", 25, 95),
    ("0815-07", "Heftstreifen, weiß, 100 Stück", 12, 240),
    ("5200-44", "Farbband für Nadeldrucker, schwarz", 10, 695),
    ("5200-50", "Tonerkassette, schwarz, 6.000 Seiten", 4, 8950),
    ("6001-12", "Etiketten 70 × 36 mm, 2.400 Stück", 8, 1590),
    ("6001-15", "Versandtaschen C4, haftklebend", 10, 2190),
    ("7007-01", "Schreibtischlampe, dimmbar, 9 W", 3, 5990),
    ("7007-09", "Verlängerungskabel 5 m, 3 × 1,5 mm²", 6, 1195),
]

VAT_PERCENT = 19


def table_head() -> list[str]:
    return [
        "^12" + rule("┌", "┬", "┐"),
        "^FE" + row(["Pos.", "Artikel", "Bezeichnung", "Menge", "Einzel EUR", "Gesamt EUR"]) + "^FA",
        rule("├", "┼", "┤"),
    ]


def table_end() -> str:
    """Closes the columns but for the last one, which goes on with the sums."""
    closed = rule("├", "┴", "┤")
    last = closed.rindex("┴")
    return closed[:last] + "┼" + closed[last + 1:]


def table_rows(first: int, last: int) -> tuple[list[str], int]:
    lines, total = [], 0
    for number in range(first, last + 1):
        article, name, amount, price = ITEMS[number - 1]
        lines.append(row([str(number), article, name, str(amount), money(price), money(amount * price)]))
        total += amount * price
    return lines, total


def letterhead(page_number: int) -> list[str]:
    return [
        "^TR%d" % page_number + "^10^CB^BE^FEMüller & Söhne KG^FA^BA^CS",
        "",
        "^CBBürobedarf · Drucksachen · Lieferservice^CS",
        "^CB" + "═" * 70 + "^CS",
        "^17Hafenstraße 12 · 24103 Kiel · Telefon 0431 / 555 01 23 · Geschäftsführer: Jürgen Müller · HRA 4711^10",
        "",
    ]


def invoice_first_page(half: int) -> tuple[list[str], int]:
    rows, total = table_rows(1, half)
    lines = letterhead(1) + [
        "",
        "^20^UEMüller & Söhne KG, Hafenstraße 12, 24103 Kiel^UA^10",
        "",
        barcode(1.85, 5.65, "2026-10456") + "Autohaus Groß & Weiß GmbH",
        "z. Hd. Frau Käthe Öztürk",
        "Überseeallee 7",
        "20457 Hamburg",
        "",
        "",
        "^BE^FER e c h n u n g^FA^BA",
        "",
        "^12Rechnungsnummer:  ^FE2026-10456^FA               Kundennummer:  ^FE10815^FA",
        "Rechnungsdatum:   21.11.2026               Lieferdatum:   19.11.2026^10",
        "",
        "Sehr geehrte Frau Öztürk,",
        "",
        "vielen Dank für Ihren Auftrag. Wir lieferten Ihnen ^KEfrei Haus^KA:",
        "",
    ]
    lines += table_head() + rows + [
        table_end(),
        sum_line("Übertrag", total),
        sum_rule("└", "┴", "┘") + "^10",
        "",
        "^15Fortsetzung auf Blatt 2^10",
    ]
    return lines, total


def invoice_second_page(half: int, carried: int) -> list[str]:
    rows, rest = table_rows(half + 1, len(ITEMS))
    net = carried + rest
    vat = (net * VAT_PERCENT + 50) // 100
    return letterhead(2) + [
        "",
        "Rechnung 2026-10456 vom 21.11.2026                              Blatt 2",
        "",
    ] + table_head() + [row(["", "", "Übertrag", "", "", money(carried)])] + rows + [
        table_end(),
        sum_line("Nettobetrag", net),
        sum_line(f"zuzüglich {VAT_PERCENT} % USt.", vat),
        sum_rule("├", "┼", "┤"),
        "^FE" + sum_line("Rechnungsbetrag EUR", net + vat) + "^FA",
        sum_rule("└", "┴", "┘") + "^10",
        "",
        indent(5) + "Zahlbar bis zum ^FE05.12.2026^FA mit ^UE2 % Skonto^UA, sonst",
        "bis zum 21.12.2026 ohne Abzug.",
        indent(0),
        "^CRBitte geben Sie bei der Zahlung die Rechnungsnummer an.^CS",
        "",
        "Die Ware bleibt bis zur Bezahlung unser Eigentum^HE1^HA. Für Papier gilt:",
        "Ein Blatt H^TE2^TAO-festes Papier wiegt 4,99 g.",
        "",
        "^SEMit freundlichen Grüßen^SA",
        "",
        "^KEMüller & Söhne KG^KA",
        "",
        "",
        "^17^HE1^HA Eigentumsvorbehalt nach § 449 BGB. Gerichtsstand ist Kiel. "
        "Bankverbindung: Beispielbank, DE00 0000 0000 0000 0000 00^10",
    ]


def invoice() -> str:
    half = 7
    first, carried = invoice_first_page(half)
    return page(first) + page(invoice_second_page(half, carried))


def character_table(encode_byte) -> list[str]:
    return ["   ".join(f"{code}='{encode_byte(code)}'" for code in range(first, first + 8)) for first in range(128, 256, 8)]


def test_page() -> str:
    def heading(text: str) -> str:
        return f"^UE^FE^KE{text}^UA^FA^KA"

    colors = [("CS", "schwarz"), ("CR", "rot"), ("CG", "grün"), ("CH", "gelb"), ("CB", "blau"), ("CM", "magenta"),
              ("CC", "cyan")]
    return page([
        "^TR1^10" + heading("Schriftattribute"),
        "",
        "Normalschrift",
        "^BEBreitschrift^BA",
        "^FEFettschrift^FA",
        "^SESchattenschrift^SA, ^OEtiefer^SA, ^OAam tiefsten^SA",
        "^UEUnterstrichen^UA",
        "^KEKursiv^KA und ^FE^KEfett-kursiv^KA^FA",
        "Text ^HEhochgestellt^HA und ^TEtiefgestellt^TA",
        " ".join(f"^{code}{name}" for code, name in colors) + "^CS",
        "Überdruck: Null\rÜberdruck: ////",
        "",
        heading("Schriftgrößen"),
        "",
        "^10Schriftgröße: 10 CPI (Pica).   ^BEbreit^BA",
        "^12Schriftgröße: 12 CPI (Elite).  ^BEbreit^BA",
        "^15Schriftgröße: 15 CPI.          ^BEbreit^BA",
        "^17Schriftgröße: 17 CPI.          ^BEbreit^BA",
        "^20Schriftgröße: 20 CPI.          ^BEbreit^BA",
        "^10",
        heading("Randeinstellungen"),
        "",
        indent(0) + "Normaler Rand.",
        indent(10) + "10 Zeichen (Pica) eingerückt.",
        "Noch einmal, der Rand gilt weiter" + indent(20) + " und ändert sich erst",
        "mit der nächsten Zeile: 20 Zeichen.",
        indent(0) + "Wieder normaler Rand.",
        "",
        heading("Erweiterter Zeichensatz"),
        "",
        *character_table(lambda code: bytes([code]).decode("cp850")),
        "",
        "Steuerzeichen: ^15" + " ".join(chr(code) for code in range(1, 32) if chr(code) not in "\n\f\r\x1b") + " \x7f^10",
        "",
        "Unbekanntes Makro: ^XY, Dach am Zeilenende",
        "",
        "Ende der Testseite",
    ])


def main() -> None:
    folder = pathlib.Path(__file__).resolve().parent
    for name, text in (("RECHNUNG.OUT", invoice()), ("TESTSEIT.OUT", test_page())):
        (folder / name).write_bytes(text.encode("cp850"))


if __name__ == "__main__":
    main()
