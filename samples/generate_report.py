#!/usr/bin/env python3
"""Writes a report of any number of pages to standard output, as the host prints its lists:

    generate_report.py PAGES [--lines N] [--width N] [--macros] > LISTE.OUT

The same arguments give the same bytes. --macros adds headings with attributes and a tray to every page."""

import argparse
import random
import sys

WORDS = ("Konto Buchung Beleg Betrag Datum Kunde Lieferant Artikel Menge Preis Rabatt Skonto Umsatz Lager Bestand Zugang "
         "Abgang Inventur Müller Söhne Straße Größe Prüfung Übertrag Summe Saldo Soll Haben Mahnung Rechnung").split()


def line(width: int, source: random.Random) -> str:
    parts = [f"{source.randrange(10**6):06d}"]
    length = len(parts[0])
    while length < width:
        word = source.choice(WORDS) if source.random() < 0.6 else f"{source.randrange(10**7) / 100:.2f}"
        parts.append(word)
        length += len(word) + 1
    return " ".join(parts)[:width]


def main() -> None:
    parser = argparse.ArgumentParser(description="Writes a report of any number of pages to standard output.")
    parser.add_argument("pages", type=int)
    parser.add_argument("--lines", type=int, default=60, help="lines of a page (60)")
    parser.add_argument("--width", type=int, default=79, help="characters of a line (79)")
    parser.add_argument("--macros", action="store_true", help="headings with attributes, and a tray, on every page")
    options = parser.parse_args()
    source = random.Random(20261121)
    for number in range(1, options.pages + 1):
        lines = [line(options.width, source) for _ in range(options.lines)]
        if options.macros:
            lines[0] = f"^TR1^FE^UEUmsatzliste^UA^FA  ^12Blatt ^KE{number}^KA^10"
        sys.stdout.buffer.write(("\r\n".join(lines) + "\r\n\f").encode("cp850"))


if __name__ == "__main__":
    main()
