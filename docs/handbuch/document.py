"""All chapters as one page, with table of contents and references; and as a PDF."""

import html
import logging
import re
from pathlib import Path

from blocks import Mistake
from chapter import Chapter

PARTS = ((0, "Anfangen"), (10, "Einrichten"), (30, "Benutzen"), (40, "Druckdateien schreiben"), (70, "Hilfe und Nachschlagen"))
REFERENCE = re.compile(r'<a href="#([^"]*)">(.*?)</a>')


def part_of(chapter: Chapter) -> str:
    return [name for first, name in PARTS if first <= int(chapter.path.name[:2])][-1]


def contents(chapters: list[Chapter]) -> str:
    lines, part = [], None
    for chapter in chapters:
        if part_of(chapter) != part:
            part = part_of(chapter)
            lines.append(f'<li class="teil">{part}</li>')
        for heading in (heading for heading in chapter.headings if heading.level <= 2):
            lines.append(f'<li class="stufe{heading.level}"><a href="#{heading.anchor}">'
                         f'<span>{heading.number}</span> {re.sub("<.*?>", "", heading.title)}</a></li>')
    return "<ul>" + "\n".join(lines) + "</ul>"


def with_references(page, chapters: list[Chapter], whole: bool) -> str:
    """[](#anchor) gets the heading's title; a reference that leads nowhere is a mistake."""
    titles = {heading.anchor: heading.title for chapter in chapters for heading in chapter.headings}
    anchors = re.findall(r' id="([^"]+)"', page)
    for anchor in anchors:
        if anchors.count(anchor) > 1:
            raise Mistake("Handbuch", 1, f"Den Anker #{anchor} gibt es zweimal.")

    def reference(found) -> str:
        anchor, text = found.groups()
        if anchor not in anchors and whole:
            raise Mistake("Handbuch", 1, f"Den Anker #{anchor} gibt es nicht.")
        return f'<a class="verweis" href="#{anchor}">{text or titles.get(anchor, anchor)}</a>'
    return REFERENCE.sub(reference, page)


def assemble(chapters: list[Chapter], bodies: list[str], version, date, whole=True) -> str:
    """whole: whether these are all chapters, so that every reference must lead somewhere."""
    body, part = [], None
    for chapter, text in zip(chapters, bodies):
        above = "" if part_of(chapter) == part else f'<p class="teil">{part_of(chapter)}</p>'
        part = part_of(chapter)
        body.append(f'<section class="kapitel">{above}{text}</section>')
    page = with_references("\n".join(body), chapters, whole)
    style = (Path(__file__).parent / "handbuch.css").read_text(encoding="utf-8")
    shown = ".".join(reversed(date.split("-")))
    return f"""<!DOCTYPE html>
<html lang="de">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<meta name="dcterms.created" content="{date}">
<title>KRVWinPr {html.escape(version)}: Handbuch</title>
<style>
{style}
</style>
</head>
<body>
<header id="anfang"><h1>KRVWinPr</h1><p class="untertitel">Handbuch</p><p class="stand">Version {version}, {shown}</p></header>
<nav id="inhalt" aria-label="Inhalt"><p class="ueberschrift">Inhalt</p>
{contents(chapters)}
</nav>
<main>
{page}
</main>
<a class="zurueck" href="#inhalt">Inhalt</a>
</body>
</html>
"""


def with_values(page: str) -> str:
    """With the colours and fonts of paper in the place of var(...), which the PDF's maker does not know everywhere."""
    values = dict(re.findall(r"(--\w+): ([^;]+);", page.split("@media (prefers-color-scheme", 1)[0]))
    values |= dict(re.findall(r"(--\w+): ([^;]+);", page.split("@media print {", 1)[1].split("}", 1)[0]))
    return re.sub(r"var\((--\w+)\)", lambda found: values[found[1]], page)


def write_pdf(page: str, path: Path):
    from weasyprint import HTML  # takes half a second, which trying examples does not need
    logging.getLogger("fontTools").setLevel(logging.ERROR)
    HTML(string=with_values(page)).write_pdf(path)
