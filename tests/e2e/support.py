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
import time
import unittest
from typing import NamedTuple

PROGRAM = pathlib.Path(os.environ["KRVWINPR"]).resolve()
SLOW = os.environ.get("KRVWINPR_SLOW") == "1"
PROJECT = pathlib.Path(__file__).resolve().parents[2]
SAMPLES = PROJECT / "samples"
VERSION = re.search(r"^project\(KRVWinPr VERSION (\S+)", (PROJECT / "CMakeLists.txt").read_text(), re.MULTILINE)[1]

OK_TEXT = "Alles OK, Korvano kann weitermachen!\r\n".encode()
PRINTER = "Korvano PDF"
PRODUCT_KEY = r"HKCU\Software\Velmora\KRVWinPr\3.0"
PRINTER_KEY = rf"{PRODUCT_KEY}\Drucker\{PRINTER}"
OWN_VALUES = ("RunPath", "EXEPath", "EXEVersion", "LastDriverUsed")  # what every job writes

STAMP = r"\d\d\.\d\d\.\d{4} \d\d:\d\d:\d\d"
LOG_LINE = rf"^({STAMP}> .*|======= NEUER START ========|)$"
TENTH_OF_A_MILLIMETRE = 72 / 254  # points


def output_of(*command) -> str:
    return subprocess.run([str(part) for part in command], stdout=subprocess.PIPE, text=True, check=True,
                          timeout=120).stdout


class Word(NamedTuple):
    """A word on a PDF's page: its corners in points from the sheet's top left corner, and its text."""
    x: float
    y: float
    right: float
    bottom: float
    text: str


WORD = re.compile(r'<word xMin="([\d.-]+)" yMin="([\d.-]+)" xMax="([\d.-]+)" yMax="([\d.-]+)">(.*?)</word>', re.DOTALL)


def words_of(pdf) -> list[list[Word]]:
    """The words of each page in reading order."""
    return [[Word(*map(float, corners), html.unescape(text)) for *corners, text in WORD.findall(page)]
            for page in output_of("pdftotext", "-bbox", pdf, "-").split("<page ")[1:]]


def lines_of(pdf) -> list[list[str]]:
    """The lines of each page that are not empty, with single blanks."""
    pages = output_of("pdftotext", "-layout", pdf, "-").split("\f")[:-1]
    return [[" ".join(line.split()) for line in page.split("\n") if line.strip()] for page in pages]


# What starts a command with mounts of its own, where that is allowed.
NAMESPACE = ["unshare", "-m"] if os.geteuid() == 0 else ["unshare", "-rm"]
CAN_MOUNT = shutil.which("unshare") and subprocess.run([*NAMESPACE, "sh", "-c", "mount -t tmpfs tmpfs /tmp"],
                                                       stderr=subprocess.DEVNULL).returncode == 0
needs_namespace = unittest.skipUnless(CAN_MOUNT, "needs a mount namespace (unshare -m, or -rm for users) and tmpfs, "
                                                 "which this system does not allow here")
# What starts a command for which the rights of files count, also when root starts it.
WITHOUT_PRIVILEGES = ["setpriv", "--bounding-set=-all"] if os.geteuid() == 0 else []

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


def on_disk(folder, options, remount="") -> list[str]:
    """What starts a command while a small disk takes the folder's place."""
    return [*NAMESPACE, "sh", "-c", ON_DISK, "sh", str(folder), options, remount]


class Run(subprocess.Popen):
    errors = ""  # what it said on standard error

    def finish(self, timeout) -> "Run":
        try:
            self.errors = self.communicate(timeout=timeout)[1].decode("utf-8", "replace")
        except subprocess.TimeoutExpired:
            self.end()
            raise
        return self

    def end(self):
        """Ends the program, and what it may have started, in the middle of whatever it does."""
        os.killpg(self.pid, signal.SIGKILL)
        self.communicate()


class Job:
    """A folder with print files, and settings of its own."""

    encoding = "utf-8"  # of the debug log

    def __init__(self, test: unittest.TestCase):
        root = pathlib.Path(tempfile.mkdtemp(prefix="krvwinpr-"))
        test.addCleanup(shutil.rmtree, root, True)
        self.test = test
        self.folder = root / "auftrag"
        self.settings = root / "config/KRVWinPr/settings.ini"
        self.folder.mkdir()
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(root), "XDG_CONFIG_HOME": str(root / "config"),
                            "LANG": "de_DE.UTF-8", "CUPS_SERVER": str(root / "no-cups.sock")}
        self.environment |= {f"{kind}SAN_OPTIONS": "exitcode=97" for kind in ("A", "L", "UB")}

    def show_windows(self):
        """For the builds with the sanitizers, where the program loads the libraries of a desktop."""
        # What these leak is not the program's.
        foreign = self.settings.parents[2] / "foreign-leaks"
        foreign.write_text("leak:libdbus-1\nleak:libfontconfig\n")
        self.environment["LSAN_OPTIONS"] += f":suppressions={foreign}:print_suppressions=0"
        # Following the thread storage of libraries loaded late makes this compiler's leak check crash now and then.
        self.environment["ASAN_OPTIONS"] += ":intercept_tls_get_addr=0"

    def write(self, name, data) -> pathlib.Path:
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data if isinstance(data, bytes) else data.encode("cp850"))
        return path

    def sample(self, name):
        self.write(name, (SAMPLES / name).read_bytes())

    def sample_letter(self):
        shutil.copytree(SAMPLES / "BRIEF", self.folder, dirs_exist_ok=True)

    def write_settings(self, *lines, key=PRINTER_KEY):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text("".join(line + "\n" for line in (f"[{key}]", *lines)))

    def read(self, name) -> bytes | None:
        path = self.folder / name
        return path.read_bytes() if path.exists() else None

    def names(self) -> list[str]:
        return sorted(os.listdir(self.folder))

    def wait_for_ok(self, end) -> bool:
        """Whether the completion file is there before that time of the clock."""
        while "KRVWINPR.OK" not in self.names() and time.monotonic() < end:
            time.sleep(0.005)
        return "KRVWINPR.OK" in self.names()

    def pdfs(self) -> list[str]:
        return [name for name in self.names() if name.endswith(".pdf")]

    def log(self) -> list[str]:
        """The lines of the debug log without their stamps, which all but empty and title lines must have."""
        text = self.read("KRVWinPr.LOG").decode(self.encoding)
        self.test.assertTrue(text.endswith("\r\n"), text[-200:])
        lines = text.split("\r\n")[:-1]
        for line in lines:
            self.test.assertRegex(line, LOG_LINE)
        return [re.sub(f"^{STAMP}", "", line) for line in lines]

    def margins(self) -> list[float]:
        """What the printer cannot print on at the left and at the top, in points, as the debug log says it."""
        line = next(line for line in reversed(self.log()) if "Ränder" in line)
        return [float(text.replace(",", ".")) / 2.54 * 72 for text in line.split(": ")[1].split(";")[:2]]

    def start(self, *arguments, prefix=(), limits=None, **environment) -> Run:
        return Run([*prefix, PROGRAM, *arguments], cwd=self.folder, env=self.environment | environment,
                   preexec_fn=limits, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                   start_new_session=True)

    def run(self, *arguments, timeout=60, **options) -> Run:
        """Runs the program to its end. Whatever happens to a job: it ends by itself and as if nothing had been, what
        lay in its folder is unchanged, and it leaves nothing half-written."""
        before = self.contents()
        run = self.start(*arguments, **options).finish(timeout)
        self.check(run)
        after = self.contents()
        for name in before.keys() | after.keys():
            if name.upper() != "KRVWINPR.OK" and not name.endswith(".LOG"):
                made = name not in before and name.endswith(".pdf") and not name.startswith(".")
                self.test.assertTrue(made or before.get(name, 0) == after.get(name, 0), f"{name}: {run.errors}")
        return run

    def check(self, run: Run):
        self.test.assertEqual(run.returncode, 0, run.errors)
        self.test.assertNotRegex(run.errors, "Sanitizer|runtime error:|Unerwarteter Fehler")

    def contents(self) -> dict[str, bytes | None]:
        return {name: path.read_bytes() if path.is_file() and os.access(path, os.R_OK) else None
                for name in os.listdir(self.folder) for path in (self.folder / name,)}

    def assert_sound(self, name, pages=None):
        """A PDF that is whole; with as many pages."""
        result = subprocess.run(["qpdf", "--check", self.folder / name], stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)
        self.test.assertEqual(result.returncode, 0, result.stdout)
        if pages is not None:
            self.test.assertEqual(int(output_of("qpdf", "--show-npages", self.folder / name)), pages, name)

    def words(self, name) -> list[list[Word]]:
        return words_of(self.folder / name)

    def lines(self, name) -> list[list[str]]:
        return lines_of(self.folder / name)


class JobTest(unittest.TestCase):
    def setUp(self):
        self.new_job()

    def new_job(self) -> Job:
        self.job = Job(self)
        return self.job
