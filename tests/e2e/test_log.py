"""The debug log line by line, and what the program says where it does not print."""

import unittest

from support import OK_TEXT, PRINTER, PRINTER_KEY, PROGRAM, JobTest

TEXT = "^TR2Eins ^FEfett^FA^XY\r\n^BC1,5,2,ab,12\\^GR3^GR\f^TR7Zwei"

START = """
======= NEUER START ========
> 35D754B208AEBD1628021
> App.StartMode: 0  // 0=EXE, 1=ActiveX-EXE
> Debuglevel: {level}
> Registrydaten gesetzt
> RunPath: {folder}
> EXEPath: {program}
> EXEVersion: 3.0.0
> LOGPixelsX: 96
> LOGPixelsY: 96
> TwoPass: {two_pass}
> Reportbeginn
>   DoReport (sDateiname='{file}', sGrafikname='{graphic}', sDruckerTreiber='{printer}', blnWait='{wait}')
"""
HANDSHAKE = """
>   {file} gelesen
>   KRVWINPR.OK ausgegeben
"""
LATER_HANDSHAKE = """
>   {file} gelesen
>   KRVWINPR.OK übersprungen wegen /WAIT-Parameter
"""
SET_UP = """
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
>     Grafik
>     Grafik_A
>   Grafikdaten aus HPLASER.INI verarbeitet
>   Barcodeeinstellungen aus {folder}\\HPLASER.INI lesen
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
DETAILED_PAGES = """
>     Tray wird vom Wert aus der Registrierung gesetzt, es soll 3 gesetzt werden
>     Benutze Tray: 2  Paperbin:3
>     bearbeite Seite: 1
>     DoPage bearbeitet Seite
>       ^TR
>       ^FE
>       ^FA
>       ^XY
>       ^BC
>       Barcodeausgabe: (Y,X) 1,5 Text: '2ab12'
>       Barcodeparameter: XFactor 3, Ratio 3, Multiplier 2
>       ^GR
>       Grafik 3 ausgeben
>       ^GR
>       alle Grafiken ausgeben
>     DoPage hat Seite bearbeitet
>     Tray wird vom Wert aus der Registrierung gesetzt, es soll 3 gesetzt werden
>     Benutze Tray: 2  Paperbin:3
>     bearbeite Seite: 2
>     DoPage bearbeitet Seite
>       ^TR
>     DoPage hat Seite bearbeitet
"""
TWO_PASS_PAGE = """
>     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet
>     Schlüssel war: '{key}'
>     Benutze Tray:   Paperbin:0
>     bearbeite Seite: 1
>     DoPage bearbeitet Seite
>       DoPage Phase 1, nur Grafiken ausgeben
>       DoPage Phase 2, nur Text ausgeben
>     DoPage hat Seite bearbeitet
"""
PAGE = """
>     Trayregistrierungswert nicht erkannt, Standardtray wird verwendet
>     Schlüssel war: '{key}'
>     Benutze Tray:   Paperbin:0
>     bearbeite Seite: 1
>     DoPage bearbeitet Seite
>     DoPage hat Seite bearbeitet
"""
PRINTED = """
>   Druckende
"""
WAITED = """
>   Warte auf leeren Druckerspooler
>     Überprüfe: Korvano PDF
>     Anzahl Jobs: 0
>     Ende durch Jobs.Count = 0
>     WaitForSpoolerFinished Ende
>   KRVWINPR.OK wegen /WAIT-Parameter am Ende ausgegeben
"""
WAITED_FOR_NOTHING = """
>   Warte auf leeren Druckerspooler
>     Allgemeiner Fehler in DoReport 91 Objektvariable oder With-Blockvariable nicht festgelegt
>     DRUCKWARTESCHLANGE ist nicht gestartet!!!\x20
"""
NO_FILE = """
>     Allgemeiner Fehler in DoReport 53 Datei nicht gefunden
>     DRUCKWARTESCHLANGE ist nicht gestartet!!!\x20
"""
END = """
> Reportende
> Programm regulär beendet!
"""


class DebugLog(JobTest):
    def setUp(self):
        super().setUp()
        self.job.printer_settings("LinkerRand=-20", "Zeilenabstand=REG_DWORD:250", "ScaleFaktor=4,4", "ColorMode=1",
                                  "Schacht2=3")
        self.job.write("A.OUT", TEXT)
        self.job.write("EINE.OUT", "Seite")

    def assert_log(self, *parts, **values):
        """The lines of one start: an empty one above and below, those of the parts between."""
        defaults = dict(level=0, two_pass="Nein", file="EINE.OUT", graphic="", printer="", wait="Falsch",
                        folder=self.job.folder, program=f"{PROGRAM.parent}\\{PROGRAM.name}", key=PRINTER_KEY)
        lines = [line.format(**defaults | values) for part in parts for line in part.strip("\n").split("\n")]
        self.assertEqual(self.job.log(), ["", *lines, ""])

    def test_every_line_of_a_detailed_log(self):
        run = self.job.run("A.OUT", "/DEBUG2")
        self.assertEqual(run.errors, "KRVWinPr: Strichcodes kann diese Fassung noch nicht drucken; sie fehlen auf "
                                     "der Seite.\n")
        self.assert_log(START, HANDSHAKE, SET_UP, DETAILED_PAGES, PRINTED, END, level=2, file="A.OUT")

    def test_every_start_appends(self):
        self.job.write("KRVWinPr.LOG", b"alt\r\n")
        self.job.run("EINE.OUT", "/DEBUG", "KEINEGRAFIK", "/TWOPASS")
        log = self.job.read("KRVWinPr.LOG")
        self.assertTrue(log.startswith(b"alt\r\n"))
        self.job.write("KRVWinPr.LOG", log[5:])
        self.assert_log(START, HANDSHAKE, SET_UP, TWO_PASS_PAGE, PRINTED, END, two_pass="Ja", graphic="KEINEGRAFIK")

    def test_without_the_switch_nothing_is_logged(self):
        for arguments in (["A.OUT"], ["FEHLT.OUT"], ["A.OUT", "/debug"]):
            self.job.run(*arguments)
            self.assertNotIn("KRVWinPr.LOG", self.job.names())

    def test_stamps_and_numbers_follow_the_locale(self):
        self.job.write("EINE.OUT", "Seite^BC1.5,.25,1\\")
        self.job.run("EINE.OUT", "/DEBUG", LANG="en_US.UTF-8")
        log = self.job.read("KRVWinPr.LOG").decode()
        self.assertRegex(log, r"\r\n\d\d?/\d\d?/\d{4} \d\d?:\d\d:\d\d [AP]M> Reportbeginn\r\n")
        self.assertIn("blnWait='False')", log)
        self.assertIn("cm: 0.4233333;0.4233333;", log)
        self.assertIn("(Y,X) 1.5,0.25 Text", log)

    def test_waiting_for_a_named_printer(self):
        self.job.run("/WAIT", "EINE.OUT", "", "korvano pdf", "/DEBUG")
        self.assert_log(START, LATER_HANDSHAKE, SET_UP, PAGE, PRINTED, WAITED, END, wait="Wahr", printer="korvano pdf")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)

    def test_waiting_for_the_default_printer_fails_but_the_host_goes_on(self):
        run = self.job.run("EINE.OUT", "/WAIT", "/DEBUG")
        self.assert_log(START, LATER_HANDSHAKE, SET_UP, PAGE, PRINTED, WAITED_FOR_NOTHING, END, wait="Wahr")
        self.assertEqual(self.job.read("KRVWINPR.OK"), OK_TEXT)
        self.assertEqual(self.job.lines("EINE.pdf"), [["Seite"]])
        errors = run.errors.splitlines()
        self.assertEqual(len(errors), 3, errors)
        self.assertIn("'EINE.OUT' abgebrochen, Fehler 91", errors[0])
        self.assertIn("diese anzeigen? [Antwort: Ja]", errors[1])
        self.assertIn(str(self.job.folder / "KRVWinPr.LOG"), errors[2])

    def test_a_missing_file_is_logged(self):
        self.job.run("FEHLT.OUT", "/DEBUG")
        self.assert_log(START, NO_FILE, END, file="FEHLT.OUT")


class Messages(JobTest):
    def check(self, names, pattern, *arguments):
        run = self.job.run(*arguments)
        self.assertRegex(run.errors, pattern)
        self.assertEqual(run.errors.count("\n"), 1, run.errors)
        self.assertEqual(self.job.names(), names)

    def test_without_arguments_the_usage_is_shown(self):
        usage = r"KRVWinPr V\. 3\.0\.0 .* Parameter: KRVWinPr .*<Datei>.*\[/WAIT\] \[/TWOPASS\]\n$"
        for arguments in ([], ["/WAIT", "/TWOPASS"]):
            self.check([], usage, *arguments)

    def test_what_is_still_to_come_says_so(self):
        self.job.write("A.OUT", "Seite")
        for arguments in (["/DRUCKERAUSWAHL"], ["/druckerauswahl"], ["/VORSCHAU", "A.OUT"], ["/Invert", "A.OUT"],
                          ["/PRINTGRAPHIC", PRINTER, "A.OUT"]):
            with self.subTest(arguments):
                self.check(["A.OUT"], r"^KRVWinPr: .+ ist in Version 3\.0\.0 .* noch nicht enthalten\.\n$", *arguments)

    def test_switches_count_in_upper_case_only(self):
        self.check([], "^KRVWinPr: Druckauftrag '/wait' abgebrochen, Fehler 53: .*/wait", "/wait")
        self.job.write("A.OUT", "Seite")
        self.job.run("A.OUT", "/wait")  # a picture, which is not there
        self.assertNotIn("A.pdf", self.job.names())


if __name__ == "__main__":
    unittest.main()
