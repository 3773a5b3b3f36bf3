#!/usr/bin/env python3
"""Adds the source lines to the procedure traces of error reports:

    scripts/trace_lines.py KRVWinPr.ERR FOLDER...

The folders hold what finds them: build/*/debug of the release builds (*.debug), or program and modules that were not
stripped. What does not belong to a report's program, by the identity of its code, is not used, and that is said.
"""
import os
import re
import subprocess
import sys

FRAME = re.compile(r"^ *\d+ .*\((?P<module>[^()+]+)\+(?P<place>0x[0-9a-f]+)\)\s*$")
MODULE = re.compile(r"^Datei: +(?P<module>.+) (?P<identity>[0-9a-f]{16})\s*$")


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def image_base(file):
    """What addr2line adds to a place: the base of a PE file's addresses."""
    found = re.search(r"^ImageBase\s+([0-9a-f]+)", output_of("objdump", "-p", file), re.MULTILINE)
    return int(found.group(1), 16) if found else 0


def files_by_identity(folders):
    found = {}
    for folder in folders:
        for name in sorted(os.listdir(folder)):
            file = os.path.join(folder, name)
            if os.path.isfile(file) and name.endswith((".debug", ".so", ".exe", "KRVWinPr")):
                for identity in re.findall(r" _?krvwinpr_code_([0-9a-f]{16})$", output_of("nm", file), re.MULTILINE):
                    found[identity] = file
    return found


def lines_of(file, place):
    return output_of("addr2line", "-Cfpie", file, hex(image_base(file) + place)).rstrip().splitlines()


def entries(text):
    """The reports with what each says of its modules."""
    for entry in re.split(r"(?m)^(?====== Fehlerbericht )", text):
        yield entry, {match["module"]: match["identity"] for match in map(MODULE.match, entry.splitlines()) if match}


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    files = files_by_identity(sys.argv[2:])
    with open(sys.argv[1], encoding="utf-8", errors="replace") as log:
        text = log.read()
    for entry, identities in entries(text):
        for line in entry.splitlines():
            print(line)
            frame = FRAME.match(line)
            if frame and frame["module"] in identities:
                file = files.get(identities[frame["module"]])
                found = lines_of(file, int(frame["place"], 16)) if file else ["(no debug file of this build)"]
                for one in found:
                    print("           " + one)


main()
