#!/usr/bin/python3
"""Makes the handbook: docs/handbuch/NN-name.md become KRVWinPr-Handbuch.html and KRVWinPr-Handbuch.pdf.

Every example is done with the real program; where one does not do what its chapter says, this fails and names the line.
docs/handbuch/README.md says what can be in a chapter. Needs the packages of handbook_packages in scripts/packages.sh."""

import argparse
import datetime
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
TOP = HERE.parents[1]
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

from blocks import Mistake, chapters
from chapter import Chapter
from document import assemble, write_pdf
from examples import Workshop


def source_date() -> datetime.datetime:
    seconds = os.environ.get("SOURCE_DATE_EPOCH") or subprocess.run(
        ["git", "log", "-1", "--format=%ct"], cwd=TOP, stdout=subprocess.PIPE, text=True).stdout
    if not seconds:
        sys.exit("SOURCE_DATE_EPOCH is not set, and there is no commit to take the date from.")
    return datetime.datetime.fromtimestamp(int(seconds), datetime.timezone.utc)


def version() -> str:
    return re.search(r"project\([^)]*VERSION ([\d.]+)", (TOP / "CMakeLists.txt").read_text(encoding="utf-8"))[1]


def tried(paths, workshop, shown) -> list[Chapter]:
    """The chapters with their examples done; all mistakes at once."""
    mistakes, done = [], []
    for path in paths:
        try:
            chapter = Chapter(path).read(version())
            chapter.try_blocks(workshop, shown)
            done.append(chapter)
        except Mistake as mistake:
            mistakes.append(str(mistake))
    if mistakes:
        sys.exit("\n".join(mistakes))
    return done


def pictures_of_windows(names, build) -> dict[str, bytes]:
    if not names:
        return {}
    import pictures
    with tempfile.TemporaryDirectory() as folder:
        pictures.make(sorted(names), Path(build).resolve(), Path(folder))
        return {name: (Path(folder) / f"{name}.png").read_bytes() for name in names}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--program", default=TOP / "build/release", type=Path, help="folder of the built program")
    parser.add_argument("--out", default=TOP / "build/handbuch", type=Path, help="where the handbook goes")
    parser.add_argument("--examples-only", action="store_true", help="do the examples, make no handbook")
    parser.add_argument("--keep", type=Path, help="an empty folder in which the examples are done and stay")
    parser.add_argument("--without-windows", action="store_true", help="leave out the pictures of windows")
    parser.add_argument("--html-only", action="store_true", help="make no PDF")
    parser.add_argument("chapters", nargs="*", type=Path, help="only these chapters (references may lead nowhere)")
    options = parser.parse_args()
    os.environ["SOURCE_DATE_EPOCH"] = str(int(source_date().timestamp()))
    with tempfile.TemporaryDirectory(prefix="krvwinpr-handbuch-") as place:
        if options.keep:
            options.keep.mkdir(parents=True, exist_ok=True)
        workshop = Workshop(options.program, (options.keep or Path(place)).resolve(), source_date().strftime("%d.%m.%Y %H:%M:%S"))
        made = tried(options.chapters or chapters(HERE), workshop, not options.examples_only)
    print(f"{len(workshop.sheets)} Beispiele gedruckt")
    if options.examples_only:
        return
    wanted = set().union(*(chapter.windows() for chapter in made))
    windows = {} if options.without_windows else pictures_of_windows(wanted, options.program)
    bodies, number = [], 1
    for chapter in made:
        bodies.append(chapter.to_html(number, windows))
        number += sum(heading.level == 1 for heading in chapter.headings)
    page = assemble(made, bodies, version(), source_date().strftime("%Y-%m-%d"), whole=not options.chapters)
    options.out.mkdir(parents=True, exist_ok=True)
    (options.out / "KRVWinPr-Handbuch.html").write_text(page, encoding="utf-8")
    if not options.html_only:
        write_pdf(page, options.out / "KRVWinPr-Handbuch.pdf")


if __name__ == "__main__":
    try:
        main()
    except Mistake as mistake:
        sys.exit(str(mistake))
