"""The PDFs of the built-in printer are PDF/A-2u: the samples, and files with everything in them. For each clause that the
checker goes through there is a file that breaks it."""

import copy
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from page_picture import RED, bmp
from pdfa_checker import CLAUSES, Archive, findings
from pdfa_syntax import Name, Reference, Stream, String, rebuilt
from support import PRINTER, SAMPLES, SLOW, JobTest, output_of

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))
from print_file_generator import generated_jobs, picture_files  # noqa: E402

READERS = (["pdfinfo"], ["pdffonts"], ["pdfimages", "-list"], ["pdftotext", "-layout"], ["pdftoppm", "-r", "20", "-gray"],
           ["qpdf", "--check"])
FACES = ["^FE", "^FA^KE", "^FE", "^FA^KA", "^BE", "^BA^OE", "^OA^UE", "^UA^SE", "^SA"]
EVERY_BYTE = b" ".join(b"[%c]" % byte for byte in range(256) if byte not in b"\n\f\r^")


class ArchiveTest(JobTest):
    def assert_archive(self, path, readers=READERS):
        self.assertEqual(findings(path.read_bytes()), {}, path)
        for command in readers:
            result = subprocess.run([*command, path, *(["-"] if "text" in command[0] else [])], stdout=subprocess.PIPE,
                                    stderr=subprocess.PIPE, timeout=120)
            self.assertEqual((result.returncode, result.stderr), (0, b""), command)

    def print(self, name, data, *arguments, **environment) -> pathlib.Path:
        self.job.write(name, data)
        self.job.run(name, *arguments, **environment)
        return self.job.folder / f"{pathlib.Path(name).stem}.pdf"


class Samples(ArchiveTest):
    def test_samples_and_long_reports(self):
        self.job.sample_letter()
        report = subprocess.run([sys.executable, SAMPLES / "generate_report.py", "300", "--macros"],
                                stdout=subprocess.PIPE, check=True).stdout
        for name, arguments in (("RECHNUNG.OUT", ()), ("RECHNUNG.OUT", ("/TWOPASS",)), ("TESTSEIT.OUT", ()),
                                ("BRIEF/BRIEF.OUT", ("HINTERGR.PCX", PRINTER)), ("LISTE.OUT", ())):
            data = report if name == "LISTE.OUT" else (SAMPLES / name).read_bytes()
            self.assert_archive(self.print(name.split("/")[-1], data, *arguments))
        self.assert_archive(self.job.folder / "RECHNUNG (2).pdf")

    def test_the_titles_that_files_can_have(self):
        for name in ("a&b <c>.OUT", "Müller \u4E00 \U0001F600.OUT", "(x).OUT", "\uFFFE.OUT", "Latin \udcfc.OUT"):
            path = self.print(name, "x")
            self.assert_archive(path, READERS[:1])
        self.assertEqual(len({Archive(path.read_bytes()).trailer["ID"][0] for path in self.job.folder.glob("*.pdf")}), 5)


class Everything(ArchiveTest):
    def test_every_character_in_every_face_and_what_fonts_lack(self):
        lines = b"\r\n".join(face.encode() + b"^10" + EVERY_BYTE[start:start + 300]
                             for face in FACES for start in range(0, len(EVERY_BYTE), 300))
        for number, code_page in enumerate(("437", "850", "852", "866", "874")):  # the font has none of the last one's
            path = self.print(f"A{number}.OUT", lines + b"^CR^LS1^SE" + EVERY_BYTE[:200], KRVWINPR_CODEPAGE=code_page)
            self.assert_archive(path)
        self.assertIn("[\uFFFD]", "".join(output_of("pdftotext", path, "-").split()))

    def test_generated_files_and_every_kind_of_picture(self):
        pictures = picture_files()
        for name, data in pictures.items():
            self.job.write("GRAFIK.PCX", data)
            self.job.run("/PRINTGRAPHIC", PRINTER)
        made = list(self.job.folder.glob("*.pdf"))
        self.assertGreater(len(made), 60)
        for path in made:
            self.assert_archive(path, READERS[2:3] + READERS[5:])
        jobs = [job for job in generated_jobs(30 if SLOW else 150, 17, pictures) if "{printer}" in job.arguments]
        for job in jobs:
            self.new_job()
            for name, data in job.files.items():
                self.job.write(name, data)
            file, background, *_ = (argument for argument in job.arguments if not argument.startswith("/"))
            passes = {"/TWOPASS"}.intersection(job.arguments)
            self.job.start(file, background, PRINTER, *passes, **job.environment).finish(60)
            for path in self.job.folder.rglob("*.pdf"):
                if path.read_bytes() != b"alt":
                    self.assert_archive(path, READERS[5:])

    def test_the_profile_is_srgb_to_others_too(self):
        path = self.print("A.OUT", "x")
        folder = self.job.folder
        (folder / "own.icc").write_bytes(Archive(path.read_bytes()).intent_profile())
        subprocess.run(["convert", "-size", "64x64", "-seed", "1", "plasma:red-blue", "-depth", "8", folder / "a.ppm"],
                       check=True)
        subprocess.run(["convert", folder / "a.ppm", "-profile", folder / "own.icc", "-profile",
                        "/usr/share/color/icc/ghostscript/srgb.icc", "-depth", "8", folder / "b.ppm"], check=True)
        before, after = ((folder / name).read_bytes() for name in ("a.ppm", "b.ppm"))
        self.assertEqual(len(before), len(after))
        self.assertLessEqual(max(abs(a - b) for a, b in zip(before, after)), 2)


class NoArchive(ArchiveTest):
    def test_a_font_that_may_not_be_embedded_leaves_the_mark_out_and_is_told_in_the_log(self):
        font = pathlib.Path(output_of("fc-match", "-f", "%{file}", "Liberation Mono:style=Regular"))
        data = bytearray(font.read_bytes())
        at = data.index(b"OS/2") + 8
        place = int.from_bytes(data[at:at + 4], "big") + 8
        for permission, allowed in ((0x0002, False), (0x0100, False), (0x0008, True)):
            self.new_job()
            data[place:place + 2] = permission.to_bytes(2, "big")
            fonts = self.job.folder.parent / "fonts"
            fonts.mkdir()
            (fonts / "own.ttf").write_bytes(data)
            (fonts / "fonts.conf").write_text(f"<fontconfig><dir>{fonts}</dir></fontconfig>")
            path = self.print("A.OUT", "Hallo", "/DEBUG", FONTCONFIG_FILE=str(fonts / "fonts.conf"))
            told = [line for line in self.job.log() if "PDF/A" in line]
            if allowed:
                self.assertEqual(told, [])
                self.assert_archive(path)
                continue
            self.assertRegex("".join(told), "^>   .*kein PDF/A: .*LiberationMono.* nicht, ihn in Dateien einzubetten")
            self.assertEqual(set(findings(path.read_bytes())), {"6.6.4"})
            self.assertEqual(self.job.lines("A.pdf"), [["Hallo"]])


def entries(**changes):
    """Sets entries of the catalog."""
    return lambda file: file.catalog.update(changes)


def of_page(**changes):
    return lambda file: file.sheets[0].entries.update(changes)


def of_image(**changes):
    return lambda file: file.images[0].update(changes)


def of_font(**changes):
    return lambda file: file.fonts[0][0].update(changes)


def of_descriptor(**changes):
    return lambda file: file.descriptor(file.fonts[0][0]).update(changes)


def put(stream, data):
    stream.data, stream.entries["Length"] = data, len(data)
    stream.entries.pop("Filter", None)


def of_contents(more):
    def change(file):
        stream = file.value(file.sheets[0].entries["Contents"])
        put(stream, stream.content() + more)
    return change


def of_metadata(old, new):
    def change(file):
        stream = file.value(file.catalog["Metadata"])
        put(stream, re.sub(old, new, stream.data))
    return change


def of_program(tag, at, new):
    """Changes a table of the font program."""
    def change(file):
        stream = file.value(file.descriptor(file.fonts[0][0])["FontFile2"])
        data = bytearray(stream.content())
        entry = data.index(tag)
        start = int.from_bytes(data[entry + 8:entry + 12], "big") + at
        data[start:start + len(new)] = new
        put(stream, bytes(data))
    return change


def of_map(old, new):
    def change(file):
        stream = file.value(file.fonts[0][0]["ToUnicode"])
        put(stream, re.sub(old, new, stream.content()))
    return change


def of_profile(at, new):
    def change(file):
        stream = file.value(file.catalog["OutputIntents"][0]["DestOutputProfile"])
        profile = stream.content()
        put(stream, profile[:at] + new + profile[at + len(new):])
    return change


def one_more(length):
    return b"/Length %d" % (int(length[1]) + 1)


def odd_string(file):
    value = String(b"\xAB\xC0")
    value.source = b"<ABC>"
    file.value(file.trailer["Info"])["Subject"] = value


def text_of(number, old, new):
    """Changes the text of one object where it is written."""
    return dict(number=number, old=old, new=new)


# A clause, what is changed in the file's objects, what in the way they are written, and other clauses that this breaks.
SPOILED = [
    ("6.1.2", None, dict(head=b"%PDF-1.7\n%text\n")), ("6.1.2", None, dict(head=b"\n%PDF-1.7\n%\xE2\xE3\xCF\xD3\n")),
    ("6.1.3", lambda file: file.trailer.pop("ID"), {}),
    ("6.1.3", lambda file: file.trailer.update(Encrypt={}), {}), ("6.1.4", None, dict(table=b"xref \n")),
    ("6.1.4", None, dict(shift=1)),
    ("6.1.5", lambda file: file.value(file.trailer["Info"]).update(Title=String(b"Anders")), {}),
    ("6.1.5", lambda file: file.value(file.trailer["Info"]).update(ModDate=String(b"D:20260101000000Z")), {}),
    ("6.1.6", odd_string, {}), ("6.1.7", None, text_of("metadata", rb"stream\n", rb"stream\r")),
    ("6.1.7", None, text_of("metadata", rb"/Length (\d+)", one_more)),
    ("6.1.7", of_image(Filter=Name(b"LZWDecode")), {}),
    ("6.1.8", lambda file: (of_font(BaseFont=Name(b"A#FF"))(file), of_descriptor(FontName=Name(b"A#FF"))(file)), {}),
    ("6.1.9", None, text_of("page", rb" obj\n", rb" obj ")), ("6.1.9", None, text_of("page", rb"\nendobj", b" endobj")),
    ("6.1.10", of_contents(b"BI /W 1/H 1/BPC 1/CS/G/F/LZW ID x EI\n"), {}), ("6.1.12", entries(Perms={}), {}),
    ("6.1.13", of_contents(b"2147483648 0 m\n"), {}), ("6.1.13", of_contents(b"q " * 29 + b"Q " * 29), {}),
    ("6.1.13", of_page(MediaBox=[0, 0, 15000, 100]), {}), ("6.2.2", of_contents(b"BX 1 foo EX\n"), {}),
    ("6.2.2", lambda file: file.sheets[0].own.pop("XObject"), {}), ("6.2.3", of_profile(12, b"scnr"), {}),
    ("6.2.3", lambda file: file.catalog["OutputIntents"][0].pop("OutputConditionIdentifier"), {}),
    ("6.2.4", of_image(ColorSpace=Name(b"DeviceCMYK")), {}), ("6.2.4", of_contents(b"0 0 0 1 k\n"), {}),
    ("6.2.5", lambda file: file.sheets[0].own.update(ExtGState={"G": {"TR": Name(b"Identity")}}), {}),
    ("6.2.6", of_contents(b"/Any ri\n"), {}), ("6.2.8", of_image(Interpolate=True), {}),
    ("6.2.9", of_image(Subtype=Name(b"PS")), {}), ("6.2.10", of_image(SMask=Reference(1)), {}),
    ("6.2.11.2", of_font(Subtype=Name(b"Type1")), {}), ("6.2.11.2", of_descriptor(FontName=Name(b"Other")), {}),
    ("6.2.11.4", lambda file: file.descriptor(file.fonts[0][0]).pop("FontFile2"), {}),
    ("6.2.11.5", lambda file: file.value(file.fonts[0][0]["Widths"]).__setitem__(0, 698), {}),
    ("6.2.11.6", of_font(Encoding=Name(b"WinAnsiEncoding")), {}), ("6.2.11.6", of_descriptor(Flags=32), {}),
    ("6.2.11.6", of_program(b"cmap", 12, b"\0\3\0\1"), {}), ("6.2.11.7", of_map(rb"<\w{4}>", b"<FEFF>"), {}),
    ("6.2.11.7", lambda file: file.fonts[0][0].pop("ToUnicode"), {}),
    ("6.2.11.8", of_contents(b"/F0 9 Tf <FE> Tj\n"), {}, "6.2.11.5", "6.2.11.7"), ("6.3", of_page(Annots=[]), {}),
    ("6.4", entries(AcroForm={}), {}), ("6.5", entries(OpenAction=[]), {}), 
    ("6.6.2.1", lambda file: file.value(file.catalog["Metadata"]).entries.pop("Subtype"), {}),
    ("6.6.2.1", of_metadata(rb"<\?xpacket ", b'<?xpacket bytes="9" '), {}),
    ("6.6.2.3", of_metadata(rb"(</rdf:Description>)", rb"<pdf:Own>x</pdf:Own>\1"), {}),
    ("6.6.4", of_metadata(rb"<pdfaid:part>2", b"<pdfaid:part>1"), {}), ("6.8", entries(AF=[]), {}),
    ("6.9", entries(OCProperties={}), {}), ("6.10", of_page(PresSteps={}), {}), ("6.11", entries(Requirements=[]), {}),
]


class Spoiled(ArchiveTest):
    def test_each_clause_has_a_file_that_breaks_it(self):
        self.job.write("HPLASER.INI", "[Grafik]\r\nGrafik1=1,2,1,INCH,True,2\r\n")
        self.job.write("LASER/KRVWin.M1", bmp(9, 4, RED))
        good = Archive(self.print("A.OUT", "Hallo^GR", "KEINEGRAFIK", PRINTER).read_bytes())
        numbers = {"metadata": good.catalog["Metadata"].number,
                   "page": next(number for number, value in good.objects.items() if value is good.sheets[0].entries)}
        self.assertEqual(findings(rebuilt(good)), {})
        self.assertEqual({case[0] for case in SPOILED}, set(CLAUSES))
        for number, (clause, change, writing, *along) in enumerate(SPOILED):
            file = copy.deepcopy(good)
            if change:
                change(file)
            if "number" in writing:
                writing = writing | {"number": numbers[writing["number"]]}
            with self.subTest(number=number, clause=clause):
                self.assertEqual(set(findings(rebuilt(file, **writing))), {clause, *along})


if __name__ == "__main__":
    unittest.main()
