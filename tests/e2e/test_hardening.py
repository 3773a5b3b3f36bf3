"""What the program's files say of how they were hardened. The arguments of the environment: KRVWINPR_FILES names the
files, separated by colons, a program of Linux and its modules or one of Windows."""

import os
import pathlib
import subprocess
import unittest

FILES = [pathlib.Path(name) for name in os.environ["KRVWINPR_FILES"].split(":")]
ENDBR64 = b"\xf3\x0f\x1e\xfa"


def said_by(*command) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


class Hardening(unittest.TestCase):
    @unittest.skipIf(FILES[0].suffix == ".exe", "a program of Windows")
    def test_of_elf_files(self):
        symbols = ""
        for file in FILES:
            with self.subTest(file.name):
                text = said_by("readelf", "-Whldn", file)
                self.assertRegex(text, r"Type: +DYN ")
                self.assertRegex(text, "GNU_RELRO")
                self.assertRegex(text, r"FLAGS.*\bNOW\b")
                self.assertRegex(text, r"GNU_STACK .* RW ")
                self.assertNotRegex(text, r" RWE |TEXTREL")
                if "X86-64" in text:
                    # The file as a whole is not marked, because the system's start files are not.
                    self.assertGreater(file.read_bytes().count(ENDBR64), 3, "where calls may lead")
                own = said_by("readelf", "-W", "--dyn-syms", file)
                self.assertIn("__stack_chk_fail", own)
                symbols += own
        self.assertRegex(symbols, r"__\w+_chk@GLIBC")

    @unittest.skipUnless(FILES[0].suffix == ".exe", "programs of Linux")
    def test_of_the_windows_program(self):
        text, content = said_by("x86_64-w64-mingw32-objdump", "-p", FILES[0]), FILES[0].read_bytes()
        for flag in ("NX_COMPAT", "DYNAMIC_BASE", *(["HIGH_ENTROPY_VA"] if "pei-x86-64" in text else [])):
            self.assertIn(flag, text)
        for sign in (b"*** stack smashing detected ***", b"*** buffer overflow detected ***"):
            self.assertIn(sign, content)


if __name__ == "__main__":
    unittest.main()
