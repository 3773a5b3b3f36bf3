"""What the program's files say of how they were hardened. The arguments of the environment: KRVWINPR_FILES names the
files, separated by colons, a program of Linux and its modules or one of Windows. Of that one also whether the oldest
Windows can load it."""

import os
import pathlib
import re
import subprocess
import unittest
from xml.etree import ElementTree

FILES = [pathlib.Path(name) for name in os.environ["KRVWINPR_FILES"].split(":")]
SYSTEM_FUNCTIONS = "tests/e2e/windows/system_functions.txt"
LATE_FUNCTIONS = "src/platform/windows/print/spooler_functions.def"
# Of what the registry names under "Session Manager\\KnownDLLs" from XP to 11, and msvcrt, on which those depend.
KNOWN_TO_THE_LOADER = {"advapi32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ntdll.dll", "ole32.dll", "oleaut32.dll",
                       "user32.dll"}
ENDBR64 = b"\xf3\x0f\x1e\xfa"


def said_by(*command) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def functions_of_the_oldest_windows(wide):
    """Those of each library, and those that are looked up with the first call."""
    known = {}
    for title, names in re.findall(r"^\[(.+)\]\n([^\[]*)", pathlib.Path(SYSTEM_FUNCTIONS).read_text(), re.M):
        library, _, bits = title.partition(" ")
        if wide or not bits:
            known.setdefault(library, set()).update(names.split())
    definition = pathlib.Path(LATE_FUNCTIONS).read_text()
    library = re.search(r"^LIBRARY (\S+)", definition, re.M)[1]
    return known, {library: set(re.findall(r"^(\w+)@", definition, re.M))}


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
        text = said_by("x86_64-w64-mingw32-objdump", "-p", FILES[0]).partition("The Import Tables")[0]
        content = FILES[0].read_bytes()
        wide = "pei-x86-64" in text
        for flag in ("NX_COMPAT", "DYNAMIC_BASE", "TERMINAL_SERVICE_AWARE", "large address aware",
                     *(["HIGH_ENTROPY_VA"] if wide else [])):
            self.assertIn(flag, text)
        self.assertNotRegex(text, r"Entry 5 \w+ 0+ ", "without relocations it cannot be loaded anywhere")
        header = content.index(b"PE\0\0")
        self.assertEqual(content[header + 8:header + 12], bytes(4), "the time of the link: two builds are the same")
        for kind in ("OSystem", "Subsystem"):
            version = [re.search(rf"{part}{kind}Version\s+(\d+)", text)[1] for part in ("Major", "Minor")]
            self.assertEqual(version, ["6", "1"] if wide else ["5", "1"], kind)
        for sign in (b"*** stack smashing detected ***", b"*** buffer overflow detected ***"):
            self.assertIn(sign, content)

    @unittest.skipUnless(FILES[0].suffix == ".exe", "programs of Linux")
    def test_what_the_windows_program_says_of_itself(self):
        content = FILES[0].read_bytes()
        for key, value in (("CompanyName", "Velmora"), ("LegalCopyright", "Copyright (c) 20")):
            at = content.index(key.encode("utf-16-le"))
            self.assertIn(value.encode("utf-16-le"), content[at:at + 80])
        self.assertIn(b"\x89PNG\r\n\x1a\n\0\0\0\rIHDR\0\0\1\0\0\0\1\0", content, "the large icon")
        manifest = ElementTree.fromstring(content[content.index(b"<?xml version="):content.index(b"</assembly>") + 11])
        # Windows XP reads what has this name space, and starts nothing that has unknown elements in it.
        namespace = "{urn:schemas-microsoft-com:asm.v1}"
        known = {"assembly", "assemblyIdentity", "description", "dependency", "dependentAssembly"}
        self.assertEqual({element.tag.removeprefix(namespace) for element in manifest.iter()
                          if element.tag.startswith(namespace)}, known)

    @unittest.skipUnless(FILES[0].suffix == ".exe", "programs of Linux")
    def test_what_the_windows_program_imports(self):
        text = said_by("x86_64-w64-mingw32-objdump", "-p", FILES[0])
        known, late = functions_of_the_oldest_windows("pei-x86-64" in text)
        imported = {library: set(re.findall(r"^\t\w+\t +\d+  (\S+)$", table, re.M))
                    for library, table in re.findall(r"DLL Name: (\S+)\n(.*?)\n\n", text, re.S)}
        self.assertIn("CreateFileW", imported["KERNEL32.dll"])
        imported |= late
        for library, functions in imported.items():
            with self.subTest(library):
                self.assertEqual(sorted(functions - known.get(library, set())), [], f"""
to be looked up, as the head of {SYSTEM_FUNCTIONS} says, before it is added there""")
                self.assertTrue(library in late or library.lower() in KNOWN_TO_THE_LOADER, "comes from the program's folder")
        # What sets the processor's precision is the system's, not the compiler's, which sets one beyond a double.
        self.assertEqual("_fpreset" in imported["msvcrt.dll"], "pei-x86-64" not in text)


if __name__ == "__main__":
    unittest.main()
