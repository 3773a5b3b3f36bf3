"""The debug log line by line."""

import os
import unittest

from page_picture import RED, bmp
from support import OK_TEXT, PRINTER_KEY, PROGRAM, VERSION, JobTest

TEXT = "^TR2Eins ^FEfett^FA^XY\r\n^BC1.5,2,AB,12\\^GR3^GR\f^TR7Zwei"

# What stands in braces differs from job to job; the pages stand between BEGIN and END.
BEGIN = """
======= NEUER START ========
> 35D754B208AEBD1628021
> App.StartMode: 0  // 0=EXE, 1=ActiveX-EXE
> Debuglevel: {level}
> Registrydaten gesetzt
> RunPath: {folder}
> EXEPath: {program}
> EXEVersion: {version}
> LOGPixelsX: 96
> LOGPixelsY: 96
> TwoPass: {two_pass}
> Reportbeginn
>   DoReport (sDateiname='{file}', sGrafikname='{graphic}', sDruckerTreiber='{printer}', blnWait='{wait}')
>   {file} gelesen
>   KRVWINPR.OK {handshake}
>   verwendeter Druckertreiber: Korvano PDF
>   Ränder (links;oben; rechts;unten) cm: 0,4233333;0,4233333;0,4233333;0,4233333
>   TwipsPerPixel (X,Y): 2,4, 2,4
>   Pixel pro mm (X,Y): 600, 600
>   Bedruckbarer Bereich (Breite x Höhe): 11424 x 16358
>   Bedruckbarer Bereich (Breite x Höhe) in cm: 19,04, 27,26333
>   Physische Größe in cm (X,Y): 20,99733, 29,70107
>   Registry verarbeiten
>     letzten Treiber speichern
>     Versionupgradecheck
>     bestehende Werte lesen Korvano PDF
>   Registry verarbeitet
>   Grafikdaten aus {folder}\\HPLASER.INI verarbeiten
>     AutoScaleDPI: Falsch, gelesener Wert:  Vorgabe
>     Grafik
>     Grafikpositionen lesen{graphics}
>     Grafikpositionen gelesen
>     Grafik_A
>     Grafikpositionen lesen
>     Grafikpositionen gelesen
>   Grafikdaten aus HPLASER.INI verarbeitet
>   Barcodeeinstellungen aus {folder}\\HPLASER.INI lesen
>     GetBarcodeHeight: 0,15, gelesener Wert:  Vorgabe
>   Barcodehöhe: 0,15
>   Zeilenabstand: 250
>   Kopfabstand: 500
>   Linker Rand: -20
>   ScaleFaktor: 4,4
>   ColorMode (0=Def,1=Mono,2=Color): 1
>   Printer.ColorMode (0=Def,1=Mono,2=Color): 2
>   Printer.ColorMode setzen: 1
>   Printer.ColorMode (0=Def,1=Mono,2=Color): 1
>   Druckerzeichensatz: Courier New
>   Zeichensatz: 255
>   Druckbeginn
"""
GRAPHICS = """
>       Grafikdaten: Grafik 1,2,3
>       Makro: 3 Beginn
>         Makro: KRVWin.M3
>         Dateiname: {folder}\\LASER\\KRVWin.M3
>         Auflösung (X, Y, Depth): 0, 0, 24
>         Bild invertieren
>         Bild laden
>       Makro: 3 Ende
>       Grafikdatengröße: Grafik 100,200.5,3
>       bisherige Grafikgröße (HxW): 1270  2540
>       neue Grafikgröße gesetzt"""
PAGE = """
{tray}
>     bearbeite Seite: {page}{background}
>     DoPage bearbeitet Seite{body}
>     DoPage hat Seite bearbeitet
"""
NO_TRAY = """
>     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet
>     Schlüssel war: '{key}'
>     Benutze Tray:   Paperbin:0"""
TRAY = """
>     Tray wird vom Wert aus der Registrierung gesetzt, es soll 3 gesetzt werden
>     Benutze Tray: 2  Paperbin:3"""
GRAPHIC_BODY = """
>       ^GZ
>       GZ Grafikmakro 1 Inch relativ, (x;y; width;height Twips): -40;1000; 45,56818;22,72727     Scalefaktor:4,4
>       ^GR
>       alle Grafiken ausgeben
>         Teilgrafik ausdrucken
>           objPrinterUtil clsDrucker
>           lngLinkerRand -20
>           lngKopfabstand 500
>           sngScaleFactor 4,4
>       GR Grafikmakro 1-9 Inch relativ, (x;y; width;height Twips): 2860;1940; 45,56818;22,72727     Scalefaktor:4,4"""
DETAILED_BODY = """
>       ^TR
>       ^FE
>       ^FA
>       ^XY
>       ^BC
>       Barcodeausgabe: (Y,X) 1,5,2 Text: 'AB12'
>       Barcodeparameter: XFactor 3, Ratio 1,5, Multiplier 2
>       ^GR
>       Grafik 3 ausgeben
>       ^GR
>       alle Grafiken ausgeben"""
TWO_PASS_BODY = """
>       DoPage Phase 1, nur Grafiken ausgeben
>       ^KE
>       DoPage Phase 2, nur Text ausgeben
>       ^KE"""
WAITED = """
>   Warte auf leeren Druckerspooler
>     Überprüfe: Korvano PDF
>     Anzahl Jobs: 0
>     Ende durch Jobs.Count = 0
>     WaitForSpoolerFinished Ende
>   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben"""
END = """
>   Druckende{waited}
> Reportende
> Programm regulär beendet!
"""


class DebugLog(JobTest):
    def setUp(self):
        super().setUp()
        self.job.write_settings("LinkerRand=-20", "Zeilenabstand=REG_DWORD:250", "ScaleFaktor=4,4", "ColorMode=1",
                                "Schacht2=3")
        self.job.write("EINE.OUT", "^KESeite")

    def assert_log(self, *pages, **values):
        """The lines of one start, an empty one above and below; each page is what differs from a plain one."""
        plain = dict(tray=NO_TRAY, background="", body="")
        parts = [BEGIN, *(PAGE.format(**plain | dict(page=number) | page) for number, page in enumerate(pages, 1)), END]
        defaults = dict(version=VERSION, level=0, two_pass="Nein", file="EINE.OUT", graphic="", printer="", wait="Falsch",
                        graphics="", handshake="ausgegeben", folder=self.job.folder,
                        program=f"{PROGRAM.parent}\\{PROGRAM.name}", key=PRINTER_KEY, waited="")
        lines = [line for part in parts for line in part.strip("\n").format(**defaults | values).split("\n")]
        self.assertEqual(self.job.log(), ["", *lines, ""])

    def test_every_line_of_a_detailed_log(self):
        self.job.write("A.OUT", TEXT)
        self.assertEqual(self.job.run("A.OUT", "/DEBUG2").errors, "")
        self.assert_log(dict(tray=TRAY, body=DETAILED_BODY), dict(tray=TRAY, body="\n>       ^TR"), level=2,
                        file="A.OUT")

    def test_graphics(self):
        self.job.write("hplaser.ini", "[Grafik]\r\nGrafik1=1,2,3\r\nGrafikSize9=100,200.5,3\r\n")
        self.job.write("kopf.bmp", bmp(2, 2, RED))
        self.job.write("LASER/KRVWin.M3", bmp(96, 48, RED))
        self.job.write("LASER/KRVWinIn.M3", b"")
        self.job.write("A.OUT", "^GZ1^GR")
        self.job.run("A.OUT", "kopf.bmp", "/DEBUG2")
        self.assert_log(dict(background="\n>     Hintergrundbild laden: kopf.bmp", body=GRAPHIC_BODY), level=2,
                        file="A.OUT", graphic="kopf.bmp", graphics=GRAPHICS.format(folder=self.job.folder))

    def test_names_cannot_forge_lines(self):
        name = os.fsdecode(b"A\n> \xfc.OUT")
        self.job.write(name, "Seite")
        errors = self.job.run(name, "b\x1b[2J.bmp", "/DEBUG").errors
        self.job.write("HPLASER.INI", b"[Grafik]\nGrafik1=1,2,g\x81\x1b.bmp\n")
        errors += self.job.run(name, "/DEBUG").errors
        log = self.job.read("KRVWinPr.LOG").decode()
        self.assertNotRegex(log, "\n> |\x1b")
        for text in (r"sDateiname='A\x0A> \xFC.OUT', sGrafikname='b\x1B[2J.bmp'", r">   A\x0A> \xFC.OUT gelesen",
                     r"Grafik 1,2,g\x81\x1B.bmp", r"Dateiname: g\x81\x1B.bmp"):
            self.assertIn(text, log)
        for text in (r"'A\x0A> \xFC.OUT' nicht gedruckt, Fehler 53: Datei nicht gefunden: b\x1B[2J.bmp",
                     r"Grafikdatei b\x1B[2J.bmp auf.", r"Bilddatei g\x81\x1B.bmp nicht gefunden"):
            self.assertIn(text, errors)

    def test_unfinished_settings_are_read_only_where_the_program_is_developed(self):
        self.job.write("KRVWinPr.CFG", b"<Korvano-Printer-Settings><Printer/><x/></Korvano-Printer-Settings>")
        for asked in "0", "1":
            read = asked == os.environ["KRVWINPR_DEVELOPED"] == "1"
            errors = self.job.run("EINE.OUT", "/DEBUG", KRVWINPR_DEVELOPMENT=asked).errors
            self.assertEqual("Noch nicht implementiert!" in errors, read)
            self.assertEqual("> InitExportJobs, Unbekannter Node: x" in self.job.log(), read)

    def test_every_start_appends(self):
        self.job.write("KRVWinPr.LOG", b"alt\r\n")
        self.job.run("EINE.OUT", "/DEBUG2", "KEINEGRAFIK", "/TWOPASS")
        log = self.job.read("KRVWinPr.LOG")
        self.assertTrue(log.startswith(b"alt\r\n"))
        self.job.write("KRVWinPr.LOG", log[5:])
        self.assert_log(dict(body=TWO_PASS_BODY), level=2, two_pass="Ja", graphic="KEINEGRAFIK")

    def test_stamps_and_numbers_follow_the_locale(self):
        self.job.write("EINE.OUT", "Seite^BC1.5,.25,1\\")
        self.job.run("EINE.OUT", "/DEBUG", LANG="en_US.UTF-8")
        log = self.job.read("KRVWinPr.LOG").decode()
        self.assertRegex(log, r"\r\n\d\d?/\d\d?/\d{4} \d\d?:\d\d:\d\d [AP]M> Reportbeginn\r\n")
        for text in ("blnWait='False')", "cm: 0.4233333;0.4233333;", "(Y,X) 1.5,0.25 Text"):
            self.assertIn(text, log)

    def test_waiting_for_a_named_printer(self):
        self.job.run("/WAIT", "EINE.OUT", "", "korvano pdf", "/DEBUG")
        self.assert_log({}, wait="Wahr", printer="korvano pdf", waited=WAITED,
                        handshake="übersprungen wegen /WAIT-Parameter")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)


if __name__ == "__main__":
    unittest.main()
