#!/usr/bin/env python3
"""Makes the sample letter in the folder BRIEF beside this script: what a host's working folder holds when it prints a
letter with pictures. Needs ImageMagick and netpbm for drawing; the print itself does not.

    KRVWinPr BRIEF.OUT HINTERGR.PCX "Korvano PDF"      (in the folder BRIEF)

LASER/KRVWin.M1 is the letterhead (one bit, 300 dpi, PCX), M2 the logo (256 colours, BMP), M13 the signature, of the second
set (one bit, PCX), stored white on black and turned round by its marker file KRVWinIn.M13. HPLASER.INI says where they
go, HINTERGR.PCX is the paper behind everything."""

import pathlib
import subprocess
import tempfile

FOLDER = pathlib.Path(__file__).parent / "BRIEF"
FONTS = "/usr/share/fonts/truetype/liberation/"

PROFILE = """; Positionen: Y, X, Makro, Einheit, absolut, Faktor
[Font]
BarcodeHeight=0,3

[Grafik]
Grafik1=1.2,2,1,CM,True,5.5
Grafik2=1.2,15.2,2,CM,True,5.5

[Grafik_A]
Grafik1=0,0,3,INCH,False,5.5
"""

LETTER = [
    "^LR\x07^GR",
    "", "", "", "", "", "", "", "",
    "Gärtnerei Röschen",
    "Frau Änne Übelacker",
    "Öhringer Straße 12",
    "",
    "74613 Öhringen",
    "", "",
    "^FEIhr Angebot vom 12. November^FA",
    "", "",
    "Sehr geehrte Frau Übelacker,",
    "",
    "vielen Dank für Ihr Angebot über 400 Töpfe Heidekraut. Wir nehmen",
    "es gern an und bitten um Lieferung bis zum 1. Dezember.",
    "",
    "Der Lieferschein trägt bitte unsere Bestellnummer:",
    "", "",
    "^BC4.35,0.7,BESTELLUNG 2611-0042\\",
    "", "",
    "Mit freundlichen Grüßen",
    " ^GY1", "", "", "", "", "",
    "Käthe Müßig",
]


def draw(*options: str) -> bytes:
    """What ImageMagick draws, as a PNM."""
    return subprocess.run(["convert", *options, "ppm:-"], check=True, stdout=subprocess.PIPE).stdout


def write(name: str, picture: bytes, *command: str) -> None:
    FOLDER.joinpath(name).write_bytes(subprocess.run(command, input=picture, check=True, stdout=subprocess.PIPE).stdout)


def write_line_art(name: str, picture: bytes) -> None:
    """One bit a pixel, 0 black and 1 white."""
    with tempfile.NamedTemporaryFile() as palette:
        palette.write(b"P6 2 1 255\n\0\0\0\xFF\xFF\xFF")
        palette.flush()
        write(name, picture, "ppmtopcx", f"-palette={palette.name}")


def letterhead() -> None:
    write_line_art("LASER/KRVWin.M1", draw("-size", "1500x260", "xc:white", "-fill", "black", "-antialias",
         "-font", FONTS + "LiberationSerif-Bold.ttf", "-pointsize", "120", "-annotate", "+0+110", "Müßig & Söhne",
         "-font", FONTS + "LiberationSans-Regular.ttf", "-pointsize", "46", "-annotate", "+4+180", "Büroausstattung seit 1923",
         "-draw", "rectangle 0,215 1499,221", "-draw", "rectangle 0,230 1499,232",
         "-threshold", "50%"))


def logo() -> None:
    write("LASER/KRVWin.M2", draw("-size", "360x260", "xc:white", "-fill", "#0A7A4B", "-draw", "roundrectangle 10,10 350,250 40,40",
         "-fill", "#F2C230", "-draw", "circle 120,130 120,60", "-fill", "white", "-font", FONTS + "LiberationSans-Bold.ttf",
         "-pointsize", "150", "-annotate", "+170+182", "M", "-colors", "64"), "ppmtobmp", "-bpp=8")


def signature() -> None:
    strokes = "M 20,120 C 60,10 90,10 70,130 C 60,170 120,40 150,60 C 180,80 110,150 160,120 C 200,90 210,60 230,90 " \
              "C 250,140 280,60 300,90 C 330,130 350,40 380,80 C 420,150 460,60 520,70 C 560,80 420,150 60,165"
    write_line_art("LASER/KRVWin.M13", draw("-size", "600x180", "xc:black", "-fill", "none", "-stroke", "white", "-strokewidth", "5",
         "-draw", f"path '{strokes}'", "-threshold", "50%"))
    (FOLDER / "LASER/KRVWinIn.M13").write_bytes(b"")


def paper() -> None:
    write("HINTERGR.PCX", draw("-size", "827x1169", "xc:#FFFDF5", "+antialias", "-fill", "#EFE6CC", "-draw", "rectangle 0,0 36,1168",
         "-fill", "#F7F0DC", "-draw", "circle 640,880 640,640"), "ppmtopcx")


FOLDER.joinpath("LASER").mkdir(parents=True, exist_ok=True)
FOLDER.joinpath("HPLASER.INI").write_text(PROFILE, encoding="cp850", newline="\r\n")
FOLDER.joinpath("BRIEF.OUT").write_text("\r\n".join(LETTER) + "\f", encoding="cp850", newline="")
letterhead()
logo()
signature()
paper()
