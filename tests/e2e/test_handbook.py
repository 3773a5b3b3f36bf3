"""The handbook: made of the program as it is, with every example done, and nothing left out of it that users may meet.

Needs the packages of handbook_packages in scripts/packages.sh."""

import html.parser
import pathlib
import re
import subprocess
import tempfile
import unittest

from barcode_readers import zbar, zxing
from support import PROGRAM, output_of

ROOT = pathlib.Path(__file__).resolve().parents[2]
TOOL = ROOT / "docs/handbuch/build.py"
BARCODE = re.compile(rb"\^BC[\d.]*,[\d.]*,([0-9A-Z $%+./-]+)\\")  # that can be printed

# Where the sources name what users may write or read, and how it is written there.
NAMES = (
    ("report/type_state.cpp", r'(?:Pitch|ColorCode)\{"(\w\w)"', "^"),
    ("report/page_reader.cpp", r'code == "(\w\w)"', "^"),
    ("report/graphic_macro.cpp", r'= "(G\w)";', "^"),
    ("report/hplaser_ini.cpp", r'read\("\w+", "(\w+)"\)|readKey\(section, "(\w+)"', ""),
    ("startup/arguments/command_line.cpp", r'\{"(/\w+)"', ""),
    ("startup/MMain.cpp", r'record\("(\w+)"', ""),
    ("messenger/Main.cpp", r'command == "(/\w+)"', ""),
    ("settings/printer_settings.h", r'(?:\{|Name = )"(\w+)"', ""),
    ("settings/printer_settings.cpp", r'productKey, "(\w+)"', ""),
    ("settings/waiting_time.cpp", r'productKey, "(\w+)"', ""),
    ("settings/window_place.cpp", r'(?:Row\{|maximized = )"(\w+)"', ""),
    ("preview/vorschau_settings.cpp", r'(?:form|zoomName) = "(\w+)"', ""),
    ("messenger/messenger_settings.cpp", r'valueOf\(store, "(\w+)"\)|keyOf\("(\w+)"\)', ""),
    ("platform/host_drives.cpp", r'3\.0\\(\w+)\)"', ""),
    ("platform/linux/linux_system.cpp", r'"(KRVWINPR_\w+|OEMCP)"', ""),
    ("platform/linux/messenger/folder_hold.h", r'"([\w.]+)"', ""),
    ("report/kept_jobs.h", r'folderOfKeptJobs = "([\w ]+)"', ""),
    ("runtime/error.h", r"err\w+ = (\d+),", ""),
    ("barcode/clsLinearBarCodes.h", r"invalid\w+ = (\d+);", ""),
    ("graphics/clsGrafik.h", r"err\w+ = (\d+);", ""),
)
EFFECTS = ("report/type_state.cpp", r'effects = "(\w+)"')  # each letter with E and with A


def build(*arguments) -> subprocess.CompletedProcess:
    return subprocess.run([TOOL, "--program", PROGRAM.parent, *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, timeout=170)


class Page(html.parser.HTMLParser):
    def __init__(self, text):
        super().__init__()
        self.anchors, self.links, self.sources, self.words = [], [], [], []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.anchors += [values["id"]] if "id" in values else []
        self.links += [values["href"]] if "href" in values else []
        self.sources += [values["src"]] if "src" in values else []

    def handle_data(self, data):
        self.words.append(data)


def words_of(page: Page) -> set[str]:
    return set(re.findall(r"[\^/]?[\w.-]+", " ".join(page.words)))


class Handbook(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="krvwinpr-")
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        built = build("--out", cls.folder, "--keep", cls.folder / "examples")
        if built.returncode != 0:
            raise AssertionError(built.stdout)
        cls.text = (cls.folder / "KRVWinPr-Handbuch.html").read_text(encoding="utf-8")
        cls.page = Page(cls.text)
        cls.pdf = cls.folder / "KRVWinPr-Handbuch.pdf"

    def test_two_builds_give_the_same_bytes(self):
        self.assertEqual(build("--out", self.folder / "again").returncode, 0)
        again = (self.folder / "again/KRVWinPr-Handbuch.html").read_text(encoding="utf-8")
        parts = zip(re.split("(<img[^>]*>)", self.text), re.split("(<img[^>]*>)", again), strict=True)
        self.assertEqual([(one[:300], other[:300]) for one, other in parts if one != other], [])
        self.assertTrue(self.pdf.read_bytes() == (self.folder / "again" / self.pdf.name).read_bytes(), "the PDF")

    def test_is_whole_in_itself(self):
        local = [link[1:] for link in self.page.links if not link.startswith("https://")]
        self.assertGreater(len(local), 100)
        self.assertLessEqual(set(local), set(self.page.anchors))
        self.assertEqual(len(set(self.page.anchors)), len(self.page.anchors))
        self.assertEqual({source[:22] for source in self.page.sources}, {"data:image/png;base64,"})
        self.assertNotRegex(self.text, r"<script|url\(|@import|<link")

    def test_pdf_is_sound_and_can_be_found_one_s_way_in(self):
        check = subprocess.run(["qpdf", "--check", self.pdf], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertIn("No syntax or stream encoding errors found", check.stdout)
        self.assertEqual(check.returncode, 0, check.stdout)
        told = subprocess.run(["pdftotext", "-layout", self.pdf, "-"], capture_output=True, text=True)
        self.assertEqual(told.stderr, "")
        self.assertIn("A4", output_of("pdfinfo", self.pdf))
        fonts = output_of("pdffonts", self.pdf).splitlines()[2:]
        self.assertEqual({font.split("+")[1].split("-")[0].split()[0] for font in fonts}, {"Lato", "DejaVu"})
        self.assertEqual({font.split()[-5] for font in fonts}, {"yes"}, "not embedded")
        # Each heading is in the table of contents with the page that it is on.
        pages = [" ".join(page.split()) for page in told.stdout.split("\f")]
        listed = output_of("pdftotext", "-raw", "-f", 2, "-l", 3, self.pdf, "-")
        listed = " ".join(re.sub(r"\s\d+\s+\f", " ", listed).split())
        entries = re.findall(r"(\d+(?:\.\d+)?) (\S.*?) (?:\. ){3,}(\d+)", listed)
        self.assertEqual(len(entries), self.text.count('class="nummer"'))
        for number, title, on in entries:
            self.assertIn(f"{number} {title}", pages[int(on) - 1])

    def test_barcodes_of_examples_are_read_back(self):
        wanted = {}
        for pdf in sorted(self.folder.glob("examples/*/**/*.pdf")):
            source = pdf.with_suffix(".OUT")
            if source.exists() and (data := BARCODE.findall(source.read_bytes())):
                output_of("pdftoppm", "-r", 300, "-gray", "-singlefile", pdf, pdf.with_suffix(""))
                wanted[pdf.with_suffix(".pgm")] = sorted(text.decode() for text in data)
        self.assertGreater(len(wanted), 4)
        for picture, by_zbar, by_zxing in zip(wanted, zbar(*wanted), zxing(*wanted), strict=True):
            with self.subTest(picture=picture):
                self.assertEqual(sorted(data for *_, data in by_zbar), wanted[picture])
                self.assertEqual(sorted(data for _, data in by_zxing), wanted[picture])

    def test_names_all_that_users_may_meet(self):
        words = words_of(self.page)
        numbers = words_of(Page(self.text.split('id="fehlernummern"', 1)[1].split("<h2", 1)[0]))
        for file, pattern, before in NAMES:
            names = ["".join(found) for found in re.findall(pattern, (ROOT / "src" / file).read_text(encoding="utf-8"))]
            self.assertTrue(names, file)
            for name in names:
                with self.subTest(file=file, name=before + name):
                    known = numbers if (before + name).isdigit() else words
                    self.assertTrue(before + name in known or " " in name and name in self.text)
        effects = re.search(EFFECTS[1], (ROOT / "src" / EFFECTS[0]).read_text(encoding="utf-8"))[1]
        self.assertLessEqual({f"^{effect}{state}" for effect in effects for state in "EA"}, words)

    def test_finds_what_is_not_as_a_chapter_says(self):
        spoiled = {
            "^FE": 'erwartet="Seite"', "Seite": "seiten=2", "a": 'meldung="b"', "^BC1,1,a\\": "", "b": "bild=seite unfug=1"}
        for number, (text, options) in enumerate(spoiled.items(), 50):
            chapter = self.folder / f"{number}-falsch.md"
            chapter.write_text(f"# Falsch {{#falsch}}\n\n```druckdatei A.OUT {options}\n{text}\n```\n", encoding="utf-8")
            result = build("--examples-only", chapter)
            self.assertEqual((result.returncode, result.stdout[:15]), (1, f"{chapter.name}:3:"[:15]), result.stdout)
        chapter.write_text("# Falsch {#falsch}\n\n```befehl\necho da\n```\n\n```ausgabe\ndort\n```\n", encoding="utf-8")
        self.assertIn(f"{chapter.name}:7: »dort«", build("--examples-only", chapter).stdout)


if __name__ == "__main__":
    unittest.main()
