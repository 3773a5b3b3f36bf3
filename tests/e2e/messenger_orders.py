"""Orders as KRVWINPR.COM leaves them in a host's folder, and the answers of the messenger (docs/MESSENGER.md)."""

import os
import pathlib
import re
import time
import zlib


def mark_of(number: int, tail: str) -> str:
    """The "Kennung" of the orders that are made here."""
    return f"{zlib.crc32(f'{number} {tail}'.encode()):08X}"


def order_text(number: int, tail: str, directory="C:\\", code_page="cp850", mark=None) -> bytes:
    lines = ["KRVWINPR-AUFTRAG 1", f"Kennung={mark or mark_of(number, tail)}", f"Ordner={directory}", f"Befehl={tail}"]
    data = "".join(line + "\r\n" for line in lines).encode(code_page)
    return data + f"Ende={sum(data) % 65536:04X}\r\n".encode()


def order(folder, number: int, tail: str, data=None, age=0, **options) -> pathlib.Path:
    """Leaves an order as the host's program does, so many seconds ago: written under another name, then renamed."""
    path = pathlib.Path(folder, f"KRV{number:05}.AUF")
    path.with_suffix(".TMP").write_bytes(order_text(number, tail, **options) if data is None else data)
    os.utime(path.with_suffix(".TMP"), (time.time() - age,) * 2)
    os.rename(path.with_suffix(".TMP"), path)
    return path


def answer(folder, number: int) -> tuple[str, str, str]:
    """Letter, mark and text of the answer to an order; empty where there is none yet."""
    try:
        data = pathlib.Path(folder, f"KRV{number:05}.ERG").read_bytes().decode("cp850")
    except FileNotFoundError:
        return "", "", ""
    found = re.fullmatch(r"([ASONE]) ([0-9A-F]{8})\r\n(.*)", data, re.DOTALL)
    return found.groups() if found else ("", "", data)


def wait_for_answer(folder, number: int, letters="ONE", seconds=20.0) -> tuple[str, str, str]:
    """The answer as soon as it has one of these letters; the last one after that time."""
    end = time.monotonic() + seconds
    while answer(folder, number)[0] not in tuple(letters) and time.monotonic() < end:
        time.sleep(0.002)
    return answer(folder, number)
