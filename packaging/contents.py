#!/usr/bin/python3
"""Lists what is in the files of a release: contents.py VERSION BUILD64 BUILD32 FILE... > INHALT.txt

For each file what it holds; what of other projects is in the Windows programs (by the maps of their links), in the installer and in
the handbook (by its fonts); what the Debian packages need; what all of it was made with. Versions are those of the Debian packages of
this machine, licences those of licences.txt, which is compared with the packages' own texts.
"""
import fnmatch
import functools
import pathlib
import re
import subprocess
import sys
import zipfile

ARCHIVE = re.compile(r"^(/\S+\.a)\(\S+\)$", re.MULTILINE)
OBJECT = re.compile(r"^LOAD (/usr/\S+\.o)$", re.MULTILINE)
TOOLS = ("g++", "g++-mingw-w64-x86-64-posix", "g++-mingw-w64-i686-win32", "binutils", "binutils-mingw-w64-x86-64", "cmake", "nasm",
         "nsis", "debhelper", "dpkg-dev", "weasyprint", "python3-markdown")


def output_of(*command):
    return subprocess.run([str(part) for part in command], check=True, capture_output=True, text=True).stdout


@functools.cache
def licences():
    lines = (pathlib.Path(__file__).parent / "licences.txt").read_text().splitlines()
    return [tuple(part.strip() for part in line.split("|")) for line in lines if line and not line.startswith("#")]


@functools.cache
def licence_of(package):
    for pattern, licence, phrase in licences():
        if fnmatch.fnmatch(package, pattern):
            text = pathlib.Path(f"/usr/share/doc/{package}/copyright").read_text(errors="replace")
            if phrase.lower() not in text.lower():
                sys.exit(f"contents.py: the copyright file of {package} no longer says '{phrase}'; look at licences.txt")
            return licence
    sys.exit(f"contents.py: which licence {package} has is not in licences.txt")


def version_of(package):
    return output_of("dpkg-query", "-W", "-f", "${Version}", package)


def package_of(path):
    return output_of("dpkg-query", "-S", pathlib.Path(path).resolve()).split(":")[0]


def listed(packages):
    return [f"  {package} {version_of(package)}\n      {licence_of(package)}" for package in sorted(packages)]


def linked_into(builds):
    """The packages whose parts are in the programs of these builds."""
    found = set()
    for build in builds:
        maps = sorted((pathlib.Path(build) / "debug").glob("*.map"))
        if not maps:
            sys.exit(f"contents.py: {build}/debug has no maps of links; it is no build to be released")
        for text in map(pathlib.Path.read_text, maps):
            found |= {package_of(path) for path in {*ARCHIVE.findall(text), *OBJECT.findall(text)} if path.startswith("/usr/")}
    return found


def plain(name):
    return re.sub(r"[^a-z0-9]", "", name.lower())


def fonts_in(pdf):
    """The packages of the fonts that a PDF has in it, by their families' names, with or without a style behind them."""
    files = {}
    for line in output_of("fc-list", "--format", "%{family[0]}\t%{style[0]}\t%{file}\n").splitlines():
        family, style, file = line.split("\t")
        files[plain(family + style)] = file
        if style in ("Regular", "Book"):
            files[plain(family)] = file
    names = {line.split()[0].split("+")[-1] for line in output_of("pdffonts", pdf).splitlines()[2:]}
    lacking = sorted(name for name in names if plain(name) not in files)
    if lacking:
        sys.exit(f"contents.py: {pdf} has fonts that are not installed here: {', '.join(lacking)}")
    return {package_of(files[plain(name)]) for name in names}


def field(package, name):
    return output_of("dpkg-deb", "-f", package, name).strip()


def needed_by(packages):
    """What the Debian packages depend on, one package each, but for themselves."""
    own = {field(package, "Package") for package in packages}
    found = set()
    for package in packages:
        for name in ("Pre-Depends", "Depends"):
            for entry in filter(None, field(package, name).split(",")):
                found.add(re.split(r"[ (|:]", entry.strip())[0])
    return found - own


def inside(file):
    """A line for each thing in a release file."""
    if file.suffix == ".deb":
        lines = output_of("dpkg-deb", "-c", file).splitlines()
        return [f"      {parts[2]:>9}  {parts[5][1:]}" for parts in (line.split(None, 5) for line in lines) if parts[0][0] != "d"]
    if file.suffix == ".zip":
        with zipfile.ZipFile(file) as content:
            return [f"      {entry.file_size:>9}  {entry.filename}" for entry in content.infolist()]
    if file.name.endswith("-Setup.exe"):
        return ["      was in beiden zip-Dateien ist, und das Handbuch"]
    return []


def main():
    version, build64, build32, *names = sys.argv[1:]
    files = sorted(map(pathlib.Path, names))
    packages = [file for file in files if file.suffix == ".deb"]
    lines = [f"KRVWinPr {version}: was in den Dateien dieser Ausgabe ist", "",
             "KRVWinPr selbst steht unter der MIT-Lizenz (LICENSE in der Quelle, LIZENZ.txt bei Windows). SHA256SUMS hat die",
             "Prüfsummen aller Dateien: sha256sum -c SHA256SUMS", "", "Dateien (Größen in Byte)", ""]
    for file in files:
        lines += [f"  {file.name}  {file.stat().st_size}", *inside(file)]
    lines += ["", "Teile anderer Projekte in den Windows-Programmen", "", *listed(linked_into([build64, build32])),
              "", "Teile anderer Projekte im Installationsprogramm für Windows", "", *listed({"nsis"})]
    fonts = {package for file in files if file.suffix == ".pdf" for package in fonts_in(file)}
    if fonts:
        lines += ["", "Schriften im Handbuch", "", *listed(fonts)]
    lines += ["", "Was die Debian-Pakete brauchen (nicht in ihnen enthalten; Versionen, mit denen sie gebaut sind)", "",
              *listed(needed_by(packages)), "", "Womit alles gemacht ist", ""]
    lines += [f"  {tool} {version_of(tool)}" for tool in TOOLS]
    print("\n".join(lines))


main()
