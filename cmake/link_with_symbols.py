#!/usr/bin/env python3
"""Links a program or module with a table of the names of its own routines, for the procedure traces of error reports:

    link_with_symbols.py NM OBJCOPY [DEBUG_FILE] -- COMPILER ARGUMENT...

The file is linked once without names, its routines are listed, and it is linked again with the table in its read-only data,
behind the code, which stays where it was; that is checked. So the names are there however the file is stripped or signed, in
some 40 bytes a routine. Layout of the table: src/platform/crash/symbols.h. DEBUG_FILE, if given, takes what finds lines
(scripts/trace_lines.py), and the file itself is stripped.
"""
import hashlib
import os
import re
import struct
import subprocess
import sys
import tempfile

FOREIGN = ("std::", "__gnu", "__cxx", "_", "operator", "vtable", "typeinfo", "guard", "testing::")
SYMBOL = re.compile(r"^([0-9a-f]+) (\w) (.*)$")


def run(*command):
    subprocess.run(command, check=True)


def without_balanced(text, opening, closing):
    """The text without what stands in such brackets."""
    kept, depth = [], 0
    for character in text:
        depth += character == opening
        if depth == 0:
            kept.append(character)
        depth -= character == closing and depth > 0
    return "".join(kept)


def routine_name(symbol):
    """"report.MPrint.DoReport" for the name as nm shows it; nothing for what is not the program's own."""
    text = symbol.replace("(anonymous namespace)::", "").replace("operator()", "operator").replace("[abi:cxx11]", "")
    text = re.sub(r" \[clone .*?\]", "", text)
    text = re.sub(r"operator(<<|<=>|<=|>>|>=|->|<|>)", "operator", text)
    text = re.sub(r"\{lambda\(.*?\)#\d+\}", "lambda", re.sub(r"\{lambda\(\)#\d+\}", "lambda", text))
    text = without_balanced(without_balanced(text, "<", ">"), "(", ")")
    text = re.sub(r" (const|noexcept|volatile|&&?)(?= |$|::)", "", text).strip()
    name = text.split(" ")[-1]
    name = re.sub(r"::lambda::operator$", "::lambda", name).replace("lambda::operator", "lambda")
    if "::" not in name:
        return name if name in ("main", "wWinMain") or symbol.startswith("(anonymous namespace)::") else ""
    return "" if name.startswith(FOREIGN) else name.replace("::", ".")


def image_base(file):
    """Where the file's addresses begin: 0 for ELF files, what the optional header says for PE files."""
    with open(file, "rb") as content:
        head = content.read(4096)
    if head[:2] != b"MZ":
        return 0
    optional = struct.unpack_from("<I", head, 0x3C)[0] + 24
    is_64 = struct.unpack_from("<H", head, optional)[0] == 0x20B
    return struct.unpack_from("<Q" if is_64 else "<I", head, optional + (24 if is_64 else 28))[0]


def routines(nm, file):
    """(offset in the file as it is loaded, name), ascending; routines of others have no name, neighbours of one name are one."""
    listing = subprocess.run([nm, "-C", "-n", "--defined-only", file], check=True, capture_output=True, text=True).stdout
    symbols = [match.groups() for match in map(SYMBOL.match, listing.splitlines()) if match]
    base = image_base(file)
    named = {}
    for address, kind, name in symbols:
        if kind in "tTwW":
            offset = int(address, 16) - base
            named[offset] = named.get(offset) or routine_name(name)
    found = []
    for offset, name in sorted(named.items()):
        if offset >= 0 and (not found or found[-1][1] != name):
            found.append((offset, name))
    return found


def table(found, identity):
    """The table as 32-bit words: count, identity of the code, where each routine begins, where its name does, the names."""
    names, places = b"\0", {"": 0}
    for _, name in found:
        if name not in places:
            places[name] = len(names)
            names += name.encode() + b"\0"
    names += b"\0" * (-len(names) % 4)
    data = struct.pack("<I16s", len(found), identity.encode())
    data += struct.pack(f"<{len(found)}I", *(offset for offset, _ in found))
    data += struct.pack(f"<{len(found)}I", *(places[name] for _, name in found)) + names
    return struct.unpack(f"<{len(data) // 4}I", data)


def identity_of(objcopy, file, folder):
    """16 hexadecimal digits of the code, the same for the same code."""
    code = os.path.join(folder, "code")
    run(objcopy, "-O", "binary", "--only-section=.text", file, code)
    with open(code, "rb") as content:
        return hashlib.sha256(content.read()).hexdigest()[:16]


def link(command, words, identity, folder):
    """Links with a table of these words; its symbol's name says the identity to whoever has the debug file."""
    source, item = os.path.join(folder, "table.cpp"), os.path.join(folder, "table.o")
    with open(source, "w") as file:
        file.write("#include <cstdint>\n"
                   'extern "C" __attribute__((visibility("default"))) const std::uint32_t krvwinpr_symbols[];\n'
                   'extern "C" const std::uint32_t krvwinpr_symbols[] = {' + ",".join(map(str, words)) + "};\n"
                   f'extern "C" const std::uint32_t krvwinpr_code_{identity}[] __attribute__((alias("krvwinpr_symbols")));\n')
    run(command[0], "-fPIC", "-O0", "-c", source, "-o", item)
    run(*command, item)


def main():
    split = sys.argv.index("--")
    nm, objcopy, *debug_file = sys.argv[1:split]
    command = sys.argv[split + 1:]
    output = command[command.index("-o") + 1]
    stripped = "-s" in command
    whole = [argument for argument in command if argument != "-s"]
    with tempfile.TemporaryDirectory() as folder:
        link(whole, table([], "0" * 16), "0" * 16, folder)
        found = routines(nm, output)
        identity = identity_of(objcopy, output, folder)
        words = table(found, identity)
        link(whole, words, identity, folder)
        if routines(nm, output) != found:
            sys.exit(f"{output}: the table of names has moved the code that it is of")
        if debug_file:
            run(objcopy, "--only-keep-debug", output, debug_file[0])
        if debug_file or stripped:
            link([*whole, "-s"], words, identity, folder)


main()
