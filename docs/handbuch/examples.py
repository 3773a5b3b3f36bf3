"""Examples of the handbook, done with the real program: print files are printed, commands run, and what the chapter says
of them is compared with what came of it."""

import os
import re
import shutil
import subprocess
from pathlib import Path

from blocks import Block
from sheet import Sheet
import samples

PRINTER = "Korvano PDF"
PRINTER_KEY = rf"HKCU\Software\Velmora\KRVWinPr\3.0\Drucker\{PRINTER}"
STAMP = re.compile(r"\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d")


def as_host_bytes(text) -> bytes:
    """A print file in the host's code page. Control pictures (U+2400 to U+241F) stand for their control characters; the line
    end behind a form feed or a carriage return at a line's end is the handbook's, not the file's."""
    text = re.sub("([␌␍])\n", r"\1", text).replace("\n", "\r\n")
    return re.sub("[\u2400-\u241f]", lambda found: chr(ord(found[0]) - 0x2400), text).encode("cp850")


class Workshop:
    """Runs the examples, each in its chapter's folder of that name."""

    def __init__(self, build, place, stamp):
        """build: the built program's folder; place: an empty folder; stamp: date and time, in the place of any other."""
        self.build, self.place, self.stamp = Path(build).resolve(), Path(place), stamp
        self.sheets: list[Sheet] = []
        self.output = ""  # of the last command
        self.said = ""  # by the last job
        self.environment = {
            "PATH": f"{self.build}:{os.environ['PATH']}", "HOME": str(self.place), "LANG": "de_DE.UTF-8",
            "XDG_CONFIG_HOME": str(self.place / "config"), "CUPS_SERVER": str(self.place / "kein-cups.sock"),
            "KRVWINPR_CODEPAGE": "850"}

    def folder(self, block: Block) -> Path:
        path = self.place / Path(block.chapter).stem / block.options.get("ordner", "beispiele")
        path.mkdir(parents=True, exist_ok=True)
        return path

    def write(self, block: Block):
        path = self.folder(block) / block.name
        path.parent.mkdir(parents=True, exist_ok=True)
        try:
            path.write_bytes(as_host_bytes(block.text))
        except UnicodeEncodeError as error:
            raise block.mistake(f"Dieses Zeichen hat der Zeichensatz 850 nicht: {error.object[error.start]}") from error

    def fetch(self, block: Block):
        """A line for each file: NAME = what it is a copy of, or muster:NAME for a picture that samples.py draws."""
        for line in block.text.splitlines():
            name, source = (part.strip() for part in line.split("="))
            path = self.folder(block) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            if source.startswith("muster:"):
                path.write_bytes(samples.picture(source.removeprefix("muster:"), path.suffix))
            elif (found := Path(__file__).resolve().parents[2] / source).is_dir():
                shutil.copytree(found, path, dirs_exist_ok=True)
            else:
                shutil.copyfile(found, path)

    def print(self, block: Block) -> Sheet | None:
        """The page that the chapter shows, or None where it shows none."""
        folder, pages = self.folder(block), int(block.options.get("seiten", 0 if "meldung" in block.options else 1))
        self.write(block)
        self.settle(block)
        pdf = folder / (Path(block.name).stem + ".pdf")
        pdf.unlink(missing_ok=True)
        self.said = self.run(block, [str(self.build / "KRVWinPr"), *arguments(block)])
        self.compare_messages(block, self.said)
        if not (folder / "KRVWINPR.OK").exists():
            raise block.mistake("KRVWINPR.OK fehlt.")
        sheet = Sheet(pdf, int(block.options.get("seite", 1))) if pdf.exists() else None
        if (found := sheet.pages() if sheet else 0) != max(pages, sheet.number if sheet and "seite" in block.options else 0):
            raise block.mistake(f"{block.name} hat {found} gedruckte Seiten, nicht {pages}.")
        if sheet:
            sheet.source = block
            self.sheets.append(sheet)
            for line in filter(None, block.options.get("erwartet", "").split("|")):
                if line not in sheet.text():
                    raise block.mistake(f"»{line}« steht nicht auf der Seite:\n{sheet.text()}")
        return sheet

    def settle(self, block: Block):
        settings = self.place / "config/KRVWinPr/settings.ini"
        settings.parent.mkdir(parents=True, exist_ok=True)
        values = filter(None, block.options.get("einstellung", "").split(";"))
        settings.write_text("".join(line + "\n" for line in (f"[{PRINTER_KEY}]", *values)))

    def command(self, block: Block):
        folder = self.folder(block)
        self.output = self.run(block, ["sh", "-ec", block.text])
        if "meldung" in block.options or not self.output_follows:
            self.compare_messages(block, self.output)
        for name in filter(None, block.options.get("ergibt", "").split(",")):
            if not (folder / name.strip()).exists():
                raise block.mistake(f"{name} ist nicht entstanden, sondern: {', '.join(sorted(os.listdir(folder)))}")

    output_follows = False  # whether the chapter shows what the next command says

    def run(self, block: Block, command) -> str:
        (self.folder(block) / "KRVWINPR.OK").unlink(missing_ok=True)
        done = subprocess.run(command, cwd=self.folder(block), env=self.environment, stdin=subprocess.DEVNULL, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60, check=False)
        if done.returncode != 0:
            raise block.mistake(f"endet mit {done.returncode}: {done.stdout}")
        return self.neutral(done.stdout)

    def neutral(self, text) -> str:
        """Without what is different each time, or on each machine."""
        return STAMP.sub(self.stamp, text.replace(str(self.place), "/home/korvano"))

    def compare_messages(self, block: Block, said):
        expected = block.options.get("meldung", "")
        if expected not in " ".join(said.split()) or bool(expected) != bool(said.strip()):
            raise block.mistake(f"Die Meldungen sind nicht »{expected}«, sondern: {said}")

    def compare_output(self, block: Block):
        """Each line that the chapter shows, in this order; … stands for anything."""
        said = self.content(block, block.options["datei"]) if "datei" in block.options else self.output.splitlines()
        rest = iter(said)
        for line in block.text.splitlines():
            pattern = re.compile(".*".join(re.escape(STAMP.sub(self.stamp, part)) for part in line.split("…")))
            if not any(pattern.fullmatch(other) for other in rest):
                raise block.mistake(f"»{line}« kommt nicht (an dieser Stelle) vor:\n" + "\n".join(said))

    def content(self, block: Block, name) -> list[str]:
        path = self.folder(block) / name
        if not path.exists():
            raise block.mistake(f"{name} gibt es nicht.")
        return self.neutral(path.read_bytes().decode("utf-8")).splitlines()


def arguments(block: Block) -> list[str]:
    return [block.name, block.options.get("grafik", "KEINEGRAFIK"), PRINTER, *block.options.get("schalter", "").split()]
