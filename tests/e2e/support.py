"""Runs the program in a folder of its own, and reads back what it leaves there.

The environment says which program: KRVWINPR its path, KRVWINPR_SLOW=1 that it is built with the sanitizers."""

import html
import os
import pathlib
import re
import shutil
import signal
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["KRVWINPR"]).resolve()
SLOW = os.environ.get("KRVWINPR_SLOW") == "1"
SAMPLES = pathlib.Path(__file__).resolve().parents[2] / "samples"

OK_TEXT = "Alles OK, Korvano kann weitermachen!\r\n".encode()
PRINTER = "Korvano PDF"
PRODUCT_KEY = r"HKCU\Software\Velmora\KRVWinPr\3.0"
PRINTER_KEY = rf"{PRODUCT_KEY}\Drucker\{PRINTER}"
OWN_VALUES = ("RunPath", "EXEPath", "EXEVersion", "LastDriverUsed")  # what every job writes

STAMP = r"\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d"
FAULT_FOUND = 97  # exit code of a process in which a sanitizer found something


def output_of(*command) -> str:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, text=True, check=True,
                          timeout=120).stdout


class Word:
    """A word on a PDF's page: its text, and its corners in points from the sheet's top left corner."""

    def __init__(self, x, y, right, bottom, text):
        self.x, self.y, self.right, self.bottom = float(x), float(y), float(right), float(bottom)
        self.text = html.unescape(text)

    def __repr__(self):
        return f"{self.text!r} at {self.x:.3f}, {self.y:.3f}"


WORD = re.compile(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" yMax="([\d.-]+)">(.*?)</word>', re.DOTALL)


def words_of(pdf) -> list[list[Word]]:
    """The words of each page in reading order."""
    pages = output_of("pdftotext", "-bbox", pdf, "-").split("<page ")[1:]
    return [[Word(*groups) for groups in WORD.findall(page)] for page in pages]


def lines_of(pdf) -> list[list[str]]:
    """The lines of each page that are not empty, with single blanks."""
    pages = output_of("pdftotext", "-layout", pdf, "-").split("\f")[:-1]
    return [[" ".join(line.split()) for line in page.split("\n") if line.strip()] for page in pages]


def page_count(pdf) -> int:
    return int(re.search(r"^Pages: +(\d+)$", output_of("pdfinfo", pdf), re.MULTILINE)[1])


def namespace_command() -> list[str] | None:
    """What starts a command with mounts of its own; nothing where that is not allowed."""
    command = ["unshare", "-m"] if os.geteuid() == 0 else ["unshare", "-rm"]
    probe = [*command, "sh", "-c", "mount -t tmpfs tmpfs /tmp"]
    allowed = shutil.which("unshare") and subprocess.run(probe, stderr=subprocess.DEVNULL).returncode == 0
    return command if allowed else None


def without_privileges() -> list[str]:
    """What starts a command for which the rights of files count, also when root starts it."""
    return ["setpriv", "--bounding-set=-all"] if os.geteuid() == 0 else []


# Mounts a small disk over the folder $1 with the options $2, and remounts it with the options $3, for one command;
# afterwards the folder beneath holds what was on it.
ON_DISK = """
start=$PWD
cd "$1" && mount -t tmpfs -o "$2" tmpfs "$1" && cp -a ./. "$1" || exit 96
[ -z "$3" ] || mount -o "remount,$3" "$1" || exit 96
place=$1; shift 3
(cd "$start" && exec "$@")
code=$?
find . -mindepth 1 -delete
cp -a "$place/." .
exit $code
"""


class Run:
    """One run of the program: what it said on standard error."""

    def __init__(self, process: subprocess.Popen):
        self.process = process
        self.errors = ""

    def wait(self, timeout) -> "Run":
        try:
            self.errors = self.process.communicate(timeout=timeout)[1].decode("utf-8", "replace")
        except subprocess.TimeoutExpired:
            self.kill()
            raise
        return self

    def kill(self):
        """Ends the program, and what it may have started, in the middle of whatever it does."""
        os.killpg(self.process.pid, signal.SIGKILL)
        self.process.communicate()


class Job:
    """A folder with print files, and settings of its own."""

    def __init__(self, test: unittest.TestCase):
        root = pathlib.Path(tempfile.mkdtemp(prefix="krvwinpr-"))
        test.addCleanup(shutil.rmtree, root, True)
        self.test = test
        self.folder = root / "auftrag"
        self.settings = root / "config/KRVWinPr/settings.ini"
        self.folder.mkdir()
        self.environment = {
            "PATH": os.environ["PATH"],
            "HOME": str(root),
            "XDG_CONFIG_HOME": str(root / "config"),
            "LANG": "de_DE.UTF-8",
            "CUPS_SERVER": str(root / "no-cups.sock"),
            "ASAN_OPTIONS": f"exitcode={FAULT_FOUND}",
            "LSAN_OPTIONS": f"exitcode={FAULT_FOUND}",
            "UBSAN_OPTIONS": f"exitcode={FAULT_FOUND}",
        }

    def write(self, name, data) -> pathlib.Path:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data if isinstance(data, bytes) else data.encode("cp850"))
        return path

    def sample(self, name) -> pathlib.Path:
        return self.write(name, (SAMPLES / name).read_bytes())

    def write_settings(self, text):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_bytes(text if isinstance(text, bytes) else text.encode())

    def printer_settings(self, *lines):
        self.write_settings(f"[{PRINTER_KEY}]\n" + "".join(line + "\n" for line in lines))

    def settings_lines(self) -> list[str]:
        """What a person sees in the settings: no comments, no empty lines."""
        lines = self.settings.read_bytes().decode("utf-8", "replace").splitlines()
        return [line for line in lines if line.strip() and line.lstrip()[0] not in "#;"]

    def read(self, name) -> bytes | None:
        path = self.folder / name
        return path.read_bytes() if path.exists() else None

    def names(self) -> list[str]:
        return sorted(os.listdir(self.folder))

    def pdfs(self) -> list[str]:
        return [name for name in self.names() if name.endswith(".pdf")]

    def log(self) -> list[str]:
        """The lines of the debug log without their stamps, which all but empty and title lines must have."""
        text = self.read("KRVWinPr.LOG").decode()
        self.test.assertTrue(text.endswith("\r\n"), text[-200:])
        lines = text.split("\r\n")[:-1]
        for line in lines:
            self.test.assertRegex(line, f"^({STAMP}> .*|======= NEUER START ========|)$")
        return [re.sub(f"^{STAMP}", "", line) for line in lines]

    def start(self, *arguments, prefix=(), limits=None, **environment) -> Run:
        command = [*prefix, str(PROGRAM), *(str(argument) for argument in arguments)]
        return Run(subprocess.Popen(command, cwd=self.folder, env=self.environment | environment, preexec_fn=limits,
                                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                    start_new_session=True))

    def run(self, *arguments, timeout=60, **options) -> Run:
        """Runs the program to its end. Whatever happens to a job: it ends by itself and as if nothing had been, what
        lay in its folder is unchanged, and it leaves nothing half-written."""
        before = self.contents()
        run = self.start(*arguments, **options).wait(timeout)
        self.check(run)
        after = self.contents()
        own = lambda name: name == "KRVWINPR.OK" or name.endswith(".LOG")
        for name, content in before.items():
            self.test.assertTrue(own(name) or after.get(name) == content, f"{name} has been changed")
        new = after.keys() - before.keys()
        self.test.assertEqual([name for name in new if not own(name) and not name.endswith(".pdf")], [], run.errors)
        self.test.assertEqual([name for name in new if name.startswith(".")], [], run.errors)
        return run

    def check(self, run: Run):
        self.test.assertEqual(run.process.returncode, 0, run.errors)
        self.test.assertNotRegex(run.errors, "Sanitizer|runtime error:")

    def contents(self) -> dict[str, bytes | None]:
        def content(path):
            return path.read_bytes() if path.is_file() and os.access(path, os.R_OK) else None
        return {name: content(self.folder / name) for name in os.listdir(self.folder)}

    def assert_sound(self, name, pages=None):
        """A PDF that is whole; with as many pages."""
        result = subprocess.run(["qpdf", "--check", self.folder / name], stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)
        self.test.assertEqual(result.returncode, 0, result.stdout)
        if pages is not None:
            self.test.assertEqual(page_count(self.folder / name), pages, name)

    def words(self, name) -> list[list[Word]]:
        return words_of(self.folder / name)

    def lines(self, name) -> list[list[str]]:
        return lines_of(self.folder / name)


class JobTest(unittest.TestCase):
    def setUp(self):
        self.job = Job(self)

    def new_job(self) -> Job:
        self.job = Job(self)
        return self.job
