"""The fenced blocks of a chapter: what they are, and where they stand."""

import re
import shlex
from dataclasses import dataclass, field
from pathlib import Path


class Mistake(Exception):
    """Something in a chapter that is not right; says where."""

    def __init__(self, chapter, line, text):
        super().__init__(f"{chapter}:{line}: {text}")


@dataclass
class Block:
    """```kind name option=value flag"""
    kind: str
    chapter: str
    line: int
    name: str = ""
    options: dict[str, str] = field(default_factory=dict)
    text: str = ""

    def mistake(self, text) -> Mistake:
        return Mistake(self.chapter, self.line, text)


FENCE = re.compile(r"^( *)(`{3,})(.*)$")
# What a block of each kind may have; any other kind shows code and may be a file of an example.
OPTIONS = {
    "druckdatei": {"ordner", "grafik", "schalter", "einstellung", "bild", "seite", "ausschnitt", "breite", "seiten", "meldung",
                   "erwartet", "verborgen"},
    "dateien": {"ordner"},
    "befehl": {"ordner", "ergibt", "meldung", "verborgen"},
    "ausgabe": {"ordner", "datei"},
}
CODE_OPTIONS = {"ordner", "verborgen"}


def first_line(words, chapter, line) -> Block:
    try:
        kind, *rest = shlex.split(words) or [""]
    except ValueError as error:
        raise Mistake(chapter, line, f"{words}: {error}") from error
    block = Block(kind, chapter, line)
    allowed = OPTIONS.get(kind, CODE_OPTIONS)
    for word in rest:
        key, _, value = word.partition("=")
        if key in allowed:
            block.options[key] = value
        elif not block.name and "=" not in word:
            block.name = word
        else:
            raise Mistake(chapter, line, f"»{word}« gibt es bei ```{kind} nicht.")
    return block


def split(chapter, text, take) -> list[str]:
    """A chapter's lines, each fenced block replaced by the line that `take` makes of it."""
    lines, block = [], None
    for number, line in enumerate(text.split("\n"), 1):
        fence = FENCE.match(line)
        if block is None and fence:
            indent, ticks, words = fence.groups()
            block = first_line(words, chapter, number)
            content = []
        elif block is None:
            lines.append(line)
        elif fence and fence[2] == ticks and not fence[3].strip():
            block.text = "".join(inner + "\n" for inner in content)
            lines += ["", indent + take(block), ""]
            block = None
        else:
            content.append(line.removeprefix(indent))
    if block is not None:
        raise block.mistake("Dieser Block hat kein Ende.")
    return lines


def chapters(folder) -> list[Path]:
    return sorted(folder.glob("[0-9][0-9]-*.md"))
