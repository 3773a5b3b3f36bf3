"""A chapter made into HTML: its blocks are done and shown, its headings counted."""

import html
import re
from base64 import b64encode
from dataclasses import dataclass, field
from pathlib import Path

import markdown

from blocks import Block, Mistake, split
from examples import Workshop, arguments
from sheet import CENTIMETRE, png

EXTENSIONS = ["tables", "attr_list", "def_list", "sane_lists", "admonition"]
MACRO = re.compile(r"\^BC[^\\\n]*\\?|\^(?:LR|TR|PL).?|\^[GA-Z][A-Z1-9]|\^[12][0257]")
CONTROLS = {9: "TAB", 12: "FF", 13: "CR", 27: "ESC"}
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

    def read(self, version):
        self.source = self.path.read_text(encoding="utf-8").replace("@VERSION@", version)

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
        """number: of its first heading."""
        page = markdown.markdown("\n".join(self.lines), extensions=EXTENSIONS)
        page = re.sub(r"<code>([^<\s]{1,20})</code>", r'<code class="kurz">\1</code>', page)
        page = re.sub(r"<p>((?:(?!</p>).)*:)</p>(?=\s*<p>@@)", r'<p class="davor">\1</p>', page, flags=re.DOTALL)
        page = PICTURE.sub(lambda found: self.picture(found[1], found[2], windows), page)
        page = self.numbered(page, number)
        page = re.sub(r"(?:<p>)?@@(\d+)@@(?:</p>)?", lambda found: self.shown[int(found[1])], page)
        return re.sub("[\u2400-\u241f]", lambda found: control(ord(found[0]) - 0x2400), page)

    def picture(self, text, source, windows) -> str:
        if source.startswith("bild:"):
            name = source.removeprefix("bild:")
            if name not in windows:
                return f'<p class="fehlt">[Bild: {text}]</p>'
            # These have two pixels for one.
            return figure(windows[name], text, "fenster", f"{int.from_bytes(windows[name][16:20], 'big') / 2:g}px")
        raise Mistake(self.path.name, 1, f"Das Bild {source} beginnt nicht mit »bild:«.")

    def numbered(self, page, number) -> str:
        counts = [number - 1, 0]

        def count(found) -> str:
            level, anchor, title = int(found[1]), found[2], found[3]
            if level > 2 and not anchor:
                return f"<h{level + 1}>{title}</h{level + 1}>"
            if level > 2:
                self.headings.append(Heading(level, anchor, title, ""))
                return f'<h{level + 1} id="{anchor}">{title}</h{level + 1}>'
            if not anchor:
                raise Mistake(self.path.name, 1, f"Die Überschrift »{title}« hat keinen Anker {{#name}}.")
            counts[level - 1] += 1
            counts[level:] = [0] * (2 - level)
            shown = ".".join(map(str, counts[:level]))
            self.headings.append(Heading(level, anchor, title, shown))
            return (f'<h{level + 1} id="{anchor}"><a class="nummer" href="#{anchor}">{shown}</a> {title}</h{level + 1}>')
        return HEADING.sub(count, page)


def show(block: Block, workshop: Workshop, pictured: bool) -> str:
    match block.kind:
        case "druckdatei":
            sheet = workshop.print(block)
            return print_file(block, sheet if pictured else None) + message(workshop.said)
        case "dateien":
            workshop.fetch(block)
            return ""
        case "befehl":
            workshop.command(block)
        case "ausgabe":
            workshop.compare_output(block)
        case _ if block.name:
            workshop.write(block)
    return "" if "verborgen" in block.options else code(block)


def control(code) -> str:
    return f'<kbd>{CONTROLS.get(code, code)}</kbd>'


def code(block: Block, text=None, title=None) -> str:
    title = block.name if title is None else title
    caption = f'<figcaption>{html.escape(title, quote=False)}</figcaption>' if title else ""
    return (f'<figure class="code {block.kind or "text"}">{caption}'
            f'<pre><code>{text or html.escape(block.text, quote=False)}</code></pre></figure>')


def message(said) -> str:
    return code(Block("ausgabe", "", 0, text=said)) if said else ""


def print_file(block: Block, sheet) -> str:
    text = MACRO.sub(lambda found: f"<b>{found[0]}</b>", html.escape(block.text, quote=False))
    extra = [word for word in arguments(block)[1:2] + arguments(block)[3:] if word != "KEINEGRAFIK"]
    shown = "" if "verborgen" in block.options else code(block, text, " ".join([block.name, *extra]))
    if sheet is None or not block.options.keys() & {"bild", "ausschnitt"}:
        return shown
    whole = block.options.get("bild") == "seite"
    if whole:
        picture, width = sheet.whole(), "7"
    else:
        picture = sheet.part(*map(float, block.options["ausschnitt"].split(","))) if "ausschnitt" in block.options else sheet.printed()
        width = f"{picture.width / CENTIMETRE:.2f}"
    text = f"So wird {html.escape(block.name)} gedruckt" + (f" (Seite {sheet.number})" if sheet.number > 1 else "")
    picture = figure(png(picture), text, "blatt", block.options.get("breite", width) + "cm")
    return f'<div class="beispiel{" daneben" if whole else ""}">{shown}{picture}</div>'


def figure(picture: bytes, text, kind, width) -> str:
    return (f'<figure class="{kind}"><img alt="{text}" style="width:{width}" '
            f'src="data:image/png;base64,{b64encode(picture).decode()}"></figure>')
