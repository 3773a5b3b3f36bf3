"""Jobs for compare_output.py: the samples, every mode and kind of picture once, and any number of random print files
with what lies beside them. The same seed gives the same jobs.

The printer's name is not known here: arguments and settings have {printer} for it, {PRINTER} in the other case."""

import random
import subprocess
import tempfile
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
SAMPLES = ROOT / "samples"
PRODUCT = r"HKCU\Software\Velmora\KRVWinPr"
CODE_PAGE_KEY = r"HKLM\SYSTEM\CurrentControlSet\Control\Nls\CodePage"
WORDS = "Rechnung Müller Größe 1.234,56 Übertrag Straße ─│┐ Saldo a - 4711 §".split()
CODES = [letter + switch for letter in "FUKHTBEOS" for switch in "EA"] * 2 \
    + "10 12 15 17 20 CS CR CG CH CB CM CC LS".split()
BROKEN = ["^", "", "F", "G", "^^", "fe", "XY", "L", "\r\n", "F\f", "\f", "1", "11", "é", "FE^", "\0\0", "T\x1b", "GX1"]
PLACES = ["0", "0.5", "2.25", "4", "6.1", "10.9", "0.1"]
ODD_PLACES = ["-1", "9", "15", "1e3", "abc", "", "1e300", " 3 ", "9999999"]
NUMBERS = ["0", "1", "2", "3", "100", "222", "500", "1440", "5,5", "-200", "REG_DWORD:300", "REG_DWORD:0x10", '" 150 "']
ODD_NUMBERS = ["", "abc", "1e10", "99999999999", "1.234,5", "2.5", "REG_DWORD:4294967295", "REG_BINARY:00", "32768"]


@dataclass
class Job:
    name: str  # of the print file without its ending; no other job has it
    arguments: list
    files: dict = field(default_factory=dict)  # bytes by path
    settings: list = field(default_factory=list)  # key, name, value
    environment: dict = field(default_factory=dict)
    queue: str = ""  # kind of the queue that it is printed to, "" for the built-in printer
    windows: bool = True  # also a job for the Windows program
    number: int = 0


def picture_files() -> dict[str, bytes]:
    """Pictures of every kind: the fuzzers', the samples' and those of the tests."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([ROOT / "tests/unit/support/make_pictures.sh", folder], check=True, stdout=subprocess.DEVNULL)
        made = [path for path in Path(folder).iterdir() if path.suffix in (".png", ".jpg", ".gif", ".tif")]
        corpus = [path for kind in ("bmp", "pcx", "foreign") for path in (ROOT / "fuzz/corpus" / kind).iterdir()]
        samples = [path for path in (SAMPLES / "BRIEF").rglob("*.[PM]*") if path.stat().st_size]
        return {path.name: path.read_bytes() for path in sorted(made + corpus + samples)}


def fixed_jobs(pictures: dict[str, bytes]) -> list[Job]:
    letter = {str(path.relative_to(SAMPLES / "BRIEF")): path.read_bytes() for path in (SAMPLES / "BRIEF").rglob("*")
              if path.is_file()}
    jobs = []
    for queue in ("", "plain", "trays"):
        for switches in (["/DEBUG"], ["/DEBUG2", "/TWOPASS"], ["/WAIT", "/DEBUG"], ["/TWOPASS"]):
            for sample, background in (("RECHNUNG", "KEINEGRAFIK"), ("TESTSEIT", ""), ("BRIEF/BRIEF", "HINTERGR.PCX")):
                name = f"S{len(jobs):05d}"
                files = dict(letter) if "BRIEF" in sample else {}
                files[name + ".OUT"] = (SAMPLES / (sample + ".OUT")).read_bytes()
                jobs.append(Job(name, [name + ".OUT", background, "{printer}", *switches], files, queue=queue,
                                windows=not queue))
    for name, data in pictures.items():
        jobs.append(Job("", ["/INVERT", name, "/DEBUG"], {name: data}))
        jobs.append(Job("", ["/PRINTGRAPHIC", "{printer}", "/DEBUG"], {"GRAFIK.PCX": data}, windows=False))
    for arguments in ([], ["/DEBUG2"], ["/DRUCKERAUSWAHL", "/DEBUG"], ["/vorschau", "A.OUT", "/DEBUG"], ["/INVERT"],
                      ["/INVERT", "FEHLT.PCX", "/DEBUG"], ["/PRINTGRAPHIC"], ["FEHLT.OUT", "/DEBUG"],
                      ["FEHLT.OUT", "/WAIT"]):
        jobs.append(Job("", arguments))
    return jobs


def generated_jobs(count: int, seed: int, pictures: dict[str, bytes]) -> list[Job]:
    return [PrintFile(number, random.Random(f"{seed}/{number}"), pictures).job() for number in range(count)]


class PrintFile:
    """A random print file. What ends a job early is rare enough that most jobs print what they hold."""

    def __init__(self, number: int, source: random.Random, pictures: dict[str, bytes]):
        self.name = f"J{number:05d}"
        self.source, self.pick = source, source.choice
        self.pictures = pictures
        self.faulty = self.chance(0.25)
        self.queue = source.choice(["plain", "trays"]) if self.chance(0.1) else ""

    def odd(self, probability: float) -> bool:
        return self.faulty and self.chance(probability)

    def chance(self, probability: float) -> bool:
        return self.source.random() < probability

    def job(self) -> Job:
        files = {}
        if self.chance(0.05):
            self.faulty = True
            return Job(self.name, ["/INVERT", "BILD.X", "/DEBUG"], {"BILD.X": self.picture()})
        job = Job(self.name, [], files, self.settings(), queue=self.queue)
        if self.chance(0.03):
            job.environment["KRVWINPR_CODEPAGE"] = self.pick(["437", "850", "852", "1252", "x"])
        ending = self.pick([".OUT"] * 8 + [".txt", "", ".A.B"])
        path = self.pick([""] * 9 + ["Sub/"]) + self.name + ending
        files[path] = self.text().encode("cp850", "replace")
        job.arguments = [path.replace("/", "\\") if self.chance(0.9) else path.lower(), self.background(files)]
        if self.chance(0.5):
            files[self.pick(["HPLASER.INI", "hplaser.ini"])] = self.profile(files)
        if self.chance(0.04):
            files.update({self.name + ".pdf": b"alt", "KRVWINPR.OK": b"alt", "KRVWinPr.LOG": b"alt\r\n"})
        if self.queue or self.chance(0.7):
            job.arguments.append(self.pick(["{printer}"] * 5 + ["{PRINTER}", "unbekannt", "Gibt es nicht", ""]))
        for switch in ("/DEBUG2", "/DEBUG", "/TWOPASS"):
            if self.chance(0.35):
                job.arguments.insert(self.source.randint(0, len(job.arguments)), switch)
        if self.chance(0.05):
            job.arguments.append("/WAIT")
        if self.chance(0.02):
            job.arguments.insert(self.source.randint(1, len(job.arguments)), self.pick(["/debug", "/wait", "mehr", ""]))
        return job

    # --- text ---------------------------------------------------------------------------------------------------------

    def text(self) -> str:
        if self.chance(0.02):
            return self.pick(["", "\f", "\f\f\f", "\r\n", "^", "x", "\x1a", "^LR\f", "^TR", "\r\n\f\r\n"])
        if self.chance(0.01):
            return self.source.randbytes(3000).decode("cp850")
        pages = [self.page() for _ in range(self.pick([1, 1, 2, 3, 5]))]
        if self.chance(0.02):
            pages *= 20
        separators = ["\f"] * 12 + ["\f\f", "\r\f", "\f\r\n", "^\f", "^F\f", "^LR\f", "\x1b\f", "\f\x1a"]
        text = "".join(page + self.pick(separators) for page in pages)
        return text[:self.source.randrange(len(text))] if self.chance(0.15) else text

    def page(self) -> str:
        lines = self.source.randint(70, 100) if self.chance(0.06) else self.source.randint(0, 30)
        ends = ["\r\n"] * 30 + ["\n", "\r", "\n\r", "\r\r\n", "\r\n\r\n"]
        return "".join(self.line() + self.pick(ends) for _ in range(lines))

    def line(self) -> str:
        return "".join(self.macro() if self.chance(0.45) else self.run() for _ in range(self.pick([0, 1, 1, 2, 4, 8])))

    def run(self) -> str:
        if self.chance(0.04):
            return self.source.randbytes(self.source.randint(1, 30)).decode("cp850")
        if self.chance(0.04):
            return bytes(self.source.randrange(128, 256) for _ in range(40)).decode("cp850")
        words = self.source.choices(WORDS, k=40 if self.chance(0.03) else self.source.randint(1, 6))
        return " ".join(words) + " " * self.source.randrange(3)

    def macro(self) -> str:
        kind = self.source.choices(("code", "indent", "tray", "graphic", "barcode", "broken"), (60, 6, 3, 8, 4, 6))[0]
        if kind == "code":
            return "^" + self.pick(CODES)
        if kind == "indent":
            return "^LR" + bytes([self.source.randrange(256 if self.chance(0.1) else 21)]).decode("cp850")
        if kind == "tray":
            return self.pick(["^TR", "^TR", "^PL"]) + self.pick("1231234 x0")
        if kind == "graphic":
            return "^G" + self.pick("RAZY") + self.pick(["", "1", "1", "2", "3", "4", "9", "0"])
        return self.barcode() if kind == "barcode" else "^" + self.pick(BROKEN)

    def place(self) -> str:
        return self.pick(ODD_PLACES if self.odd(0.3) else PLACES)

    def barcode(self) -> str:
        signs = "0123456789ABCXYZ -.$/+%"
        data = "".join(self.source.choices(signs, k=self.source.randint(1, 14)))
        if self.odd(0.3):
            data = self.pick(["", "klein", "A*B", "Ü", "1,2,3", "A\r\nB", "X" * 90, "\f1"])
        return f"^BC{self.place()},{self.place()},{data}" + ("" if self.chance(0.02) else "\\")

    # --- what lies beside it ------------------------------------------------------------------------------------------

    def picture(self) -> bytes:
        data = self.pictures[self.pick(list(self.pictures))]
        if not self.faulty or self.chance(0.6):
            return data
        if self.chance(0.5):
            return data[:self.source.randrange(len(data))]
        changed = bytearray(data)
        for _ in range(3):
            changed[self.source.randrange(min(len(data), 200))] = self.source.randrange(256)
        return bytes(changed)

    def background(self, files: dict[str, bytes]) -> str:
        if self.chance(0.75):
            return self.pick(["", "KEINEGRAFIK", "KEINEGRAFIK", "KeineGrafik"])
        if not self.faulty or self.chance(0.8):
            files["GRUND.BMP"] = self.picture()
        return self.pick(["GRUND.BMP", "grund.bmp"])

    def profile(self, files: dict[str, bytes]) -> bytes:
        lines = ["; Positionen"] if self.chance(0.3) else []
        for section, offset in (("Grafik", 0), ("grafik_a" if self.chance(0.2) else "Grafik_A", 10)):
            lines.append(f"[{section}]")
            for key in range(1, self.pick([2, 3, 4, 10])):
                lines.append(f"Grafik{key}={self.place()},{self.place()},{self.graphic(files, key, offset)}")
                if self.chance(0.3):
                    lines.append(f"GrafikSize{key}={self.pick(NUMBERS[:8])},{self.pick(NUMBERS[:8])},{key}")
        if self.chance(0.4):
            lines += ["[Modus]", "AutoScaleDPI=" + self.pick(["TRUE", "true", "FALSE", "1", "", "Vorgabe"])]
        if self.chance(0.5):
            lines += ["[Font]", "BarcodeHeight=" + self.pick(PLACES[:4] + ["0,3", ".25", "x", "-1", ""])]
        text = "\r\n".join(lines).replace("=", self.pick(["=", "=", " = "])) + "\r\n"
        return text.encode(self.pick(["utf-8", "utf-8", "cp1252", "utf-8-sig", "utf-16"]))

    def graphic(self, files: dict[str, bytes], key: int, offset: int) -> str:
        """A macro number or a file, then what else there is; the picture is there as a rule."""
        which, path = self.pick([(str(key), f"LASER/KRVWin.M{key + offset}"), (f"BILD{key}.BMP", f"BILD{key}.BMP")])
        if not self.faulty or self.chance(0.8):
            files[path] = self.picture()
        if self.chance(0.15):
            files[f"LASER/KRVWinIn.M{key + offset}"] = b""
        if self.odd(0.15):
            which = self.pick(["", "abc", "255", "-1", "2.5", "x" * 300, "a,b"])
        scale = self.pick(["0", "-2", "x", "", "1e30"] if self.odd(0.2) else ["1", "5.5", "3", "11"])
        rest = f",{self.pick(['CM', 'INCH', 'cm', 'mm'])},{self.pick(['True', 'False', 'wahr', '1', '0'])},{scale}"
        return which + (rest if self.chance(0.6) else self.pick(["", "", ",CM", ",,", ",INCH,True"]))

    def settings(self) -> list:
        if self.chance(0.6):
            return []
        key = PRODUCT + self.pick([r"\3.0", r"\3.0", r"\2.0"]) + r"\Drucker\{printer}"
        names = "LinkerRand ObererRand Zeilenabstand ScaleFaktor ColorMode IgnorePaperSize".split()
        result = [(key, name, self.pick(ODD_NUMBERS if self.odd(0.3) else NUMBERS))
                  for name in names if self.chance(0.4)]
        if self.queue == "trays" or self.chance(0.15):
            result += [(key, f"Schacht{tray}", self.pick(["1", "2", "3", "4", "-1", "REG_DWORD:2", "258", "x"]))
                       for tray in (1, 2, 3, 4) if self.chance(0.6)]
        if self.chance(0.05):
            result.append((CODE_PAGE_KEY, "OEMCP", self.pick(["437", "852", "x"])))
        return result
