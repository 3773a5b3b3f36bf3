"""A chapter made into HTML: its blocks are done and shown, its headings counted."""

import html
import re
from base64 import b64encode
from dataclasses import dataclass, field
from pathlib import Path

import markdown

from blocks import Block, Mistake, split
from examples import Workshop, arguments
from sheet import png

EXTENSIONS = ["tables", "attr_list", "def_list", "sane_lists", "admonition"]
MACRO = re.compile(r"(\^BC[^\\\n]*\\?|\^[A-Z0-9]{2}(?:(?<=\^[LTP][RL]).)?|[\u2400-\u241f])")
HEADING = re.compile(r'<h([1-4])(?: id="([^"]+)")?>(.*?)</h\1>')
PICTURE = re.compile(r'(?:<p>)?<img alt="([^"]*)" src="([^"]+)" ?/?>(?:</p>)?')


@dataclass
class Heading:
    level: int
    anchor: str
    title: str  # HTML
    number: str


@dataclass
class Chapter:
    path: Path
    blocks: list[Block] = field(default_factory=list)
    headings: list[Heading] = field(default_factory=list)

    def read(self):
        self.source = self.path.read_text(encoding="utf-8")

        def take(block):
            self.blocks.append(block)
            return f"@@{len(self.blocks) - 1}@@"
        self.lines = split(self.path.name, self.source, take)
        return self

    def windows(self) -> set[str]:
        """The pictures of windows that it shows."""
        return set(re.findall(r"!\[[^\]]*\]\(bild:([\w-]+)\)", self.source))

    def try_blocks(self, workshop: Workshop, shown: bool):
        """shown: whether pages become pictures."""
        self.shown = []
        for block, following in zip(self.blocks, [*self.blocks[1:], None]):
            workshop.output_follows = following is not None and following.kind == "ausgabe"
            self.shown.append(show(block, workshop, shown))

    def to_html(self, number: int, windows: dict[str, bytes]) -> str:
        page = markdown.markdown("\n".join(self.lines), extensions=EXTENSIONS)
        page = PICTURE.sub(lambda found: self.picture(found[1], found[2], windows), page)
        page = self.numbered(page, number)
        return re.sub(r"(?:<p>)?@@(\d+)@@(?:</p>)?", lambda found: self.shown[int(found[1])], page)

    def picture(self, text, source, windows) -> str:
        if source.startswith("bild:"):
            name = source.removeprefix("bild:")
            if name not in windows:
                return f'<p class="fehlt">[Bild: {text}]</p>'
            return figure(windows[name], text, "fenster", half=True)
        raise Mistake(self.path.name, 1, f"Das Bild {source} beginnt nicht mit »bild:«.")

    def numbered(self, page, number) -> str:
        counts = [number, 0]

        def count(found) -> str:
            level, anchor, title = int(found[1]), found[2], found[3]
            if level > 2:
                return f"<h{level + 1}{f' id={chr(34)}{anchor}{chr(34)}' if anchor else ''}>{title}</h{level + 1}>"
            if not anchor:
                raise Mistake(self.path.name, 1, f"Die Überschrift »{title}« hat keinen Anker {{#name}}.")
            if level == 2:
                counts[1] += 1
            shown = ".".join(map(str, counts[:level]))
            self.headings.append(Heading(level, anchor, title, shown))
            return (f'<h{level + 1} id="{anchor}"><a class="nummer" href="#{anchor}">{shown}</a> {title}</h{level + 1}>')
        return HEADING.sub(count, page)


def show(block: Block, workshop: Workshop, pictured: bool) -> str:
    match block.kind:
        case "druckdatei":
            sheet = workshop.print(block)
            return print_file(block, sheet if pictured else None)
        case "dateien":
            workshop.fetch(block)
            return ""
        case "befehl":
            workshop.command(block)
        case "ausgabe":
            workshop.compare_output(block)
        case "inhalt":
            block.text = "\n".join(workshop.content(block, block.name)) + "\n"
        case _ if block.name:
            workshop.write(block)
    return "" if "verborgen" in block.options else code(block)


def code(block: Block, text=None, title=None) -> str:
    title = block.name if title is None else title
    caption = f'<figcaption>{html.escape(title, quote=False)}</figcaption>' if title else ""
    return (f'<figure class="code {block.kind or "text"}">{caption}'
            f'<pre><code>{text or html.escape(block.text, quote=False)}</code></pre></figure>')


def print_file(block: Block, sheet) -> str:
    text = MACRO.sub(lambda found: f"<b>{found[0]}</b>", html.escape(block.text, quote=False))
    extra = [word for word in arguments(block)[1:2] + arguments(block)[3:] if word != "KEINEGRAFIK"]
    shown = "" if "verborgen" in block.options else code(block, text, " ".join([block.name, *extra]))
    if sheet is None or not block.options.keys() & {"bild", "ausschnitt"}:
        return shown
    if block.options.get("bild") == "seite":
        picture, width = sheet.whole(), float(block.options.get("breite", 8))
    elif "ausschnitt" in block.options:
        picture = sheet.part(*(float(edge) for edge in block.options["ausschnitt"].split(",")))
        width = float(block.options.get("breite", picture.width / 200 * 2.54))
    else:
        picture = sheet.printed()
        width = float(block.options.get("breite", picture.width / 200 * 2.54))
    text = f"So wird {html.escape(block.name)} gedruckt" + (f" (Seite {sheet.number})" if sheet.number > 1 else "")
    return shown + figure(png(picture), text, "blatt", width=f"{width:.2f}cm")


def figure(picture: bytes, text, kind, width="", half=False) -> str:
    if half:  # pictures of windows have two pixels for one
        width = f"{int.from_bytes(picture[16:20], 'big') // 2}px"
    return (f'<figure class="{kind}"><img alt="{text}" style="width:{width}" '
            f'src="data:image/png;base64,{b64encode(picture).decode()}"></figure>')
