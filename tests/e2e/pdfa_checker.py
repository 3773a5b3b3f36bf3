#!/usr/bin/env python3
"""Whether a PDF file is PDF/A-2u: the clauses of ISO 19005-2:2011 as far as they concern what our files hold, one function
for each. What a clause allows and our files never have (annotations, forms, transparency ...) is a finding, too.

    pdfa_checker.py FILE..."""

import struct
import sys
import xml.etree.ElementTree as xml

import pdfa_graphics  # noqa: F401
import pdfa_structure  # noqa: F401
from pdfa_document import CLAUSES, Archive
from pdfa_syntax import Damaged

__all__ = ["CLAUSES", "Archive", "findings"]


def findings(data: bytes) -> dict[str, list[str]]:
    """What is against which clause."""
    try:
        file = Archive(data)
    except (Damaged, ValueError, KeyError, IndexError, TypeError) as error:
        return {"6.1.4": [f"cannot be read: {error!r}"]}
    found = {}
    for number, (_, check) in CLAUSES.items():
        try:
            messages = list(check(file))
        except (Damaged, ValueError, KeyError, TypeError, AttributeError, xml.ParseError, struct.error) as error:
            messages = [f"cannot be checked: {error!r}"]
        if messages:
            found[number] = messages
    return found


if __name__ == "__main__":
    for path in sys.argv[1:]:
        with open(path, "rb") as stream:
            for number, messages in findings(stream.read()).items():
                print(f"{path}: {CLAUSES[number][0]}: {messages[0]} ({len(messages)})")
