"""A private print server for tests: its own configuration, socket, spool and logs in a temporary folder.

    with PrivateCups() as cups:
        cups.add_pdf_queue("Archiv")
        subprocess.run([program, ...], env=cups.environment())
        job = cups.wait_for_jobs("Archiv", 1)[0]

Runs as root (then filters run as the user that CUPS has for them) or as an ordinary user; needs the packages
cups-daemon, cups-client and, for queues with a driver, cups-filters. The machine's own print server is left alone.
"""

import getpass
import os
import re
import shutil
import signal
import stat
import subprocess
import tempfile
import time
from dataclasses import dataclass
from pathlib import Path

HERE = Path(__file__).resolve().parent / "cups"
SYSTEM_SERVER_BIN = Path("/usr/lib/cups")
SYSTEM_DATA = Path("/usr/share/cups")
TIMEOUT = 20  # seconds


@dataclass
class RecordedJob:
    """A job as it arrived behind the filters of its queue."""

    title: str
    options: dict
    content_type: str
    data: bytes


class PrivateCups:
    def __init__(self, may_purge=True):
        """may_purge: whether the caller has the right to cancel other people's jobs."""
        self.may_purge = may_purge
        self.root = None
        self._process = None
        self._out = {}  # folder of the recorded jobs by queue

    # --- the server -------------------------------------------------------------------------------------------------

    def __enter__(self):
        self.root = Path(tempfile.mkdtemp(prefix="krv-cups-"))
        try:
            self._configure()
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.stop()
        shutil.rmtree(self.root, ignore_errors=True)

    @property
    def socket(self):
        return self.root / "run" / "cups.sock"

    def environment(self, **more):
        """The caller's environment, pointed at this server and away from the user's own print settings."""
        names = ("LPDEST", "PRINTER", "CUPS_SERVER", "CUPS_USER", "CUPS_ENCRYPTION", "IPP_PORT")
        result = {name: value for name, value in os.environ.items() if name not in names}
        result.update(CUPS_SERVER=str(self.socket), CUPS_SERVERROOT=str(self.root / "etc"),
                      HOME=str(self.root / "home"))
        result["PATH"] = result.get("PATH", "/usr/bin:/bin") + ":/usr/sbin:/sbin"
        result.update(more)
        return result

    def start(self):
        log = (self.root / "log" / "stderr").open("ab")
        with log:
            self._process = subprocess.Popen(
                ["cupsd", "-f", "-c", str(self.root / "etc/cupsd.conf"), "-s", str(self.root / "etc/cups-files.conf")],
                stdin=subprocess.DEVNULL, stdout=log, stderr=log, env=self.environment())

        def ready():
            if self._process.poll() is not None:
                raise RuntimeError(f"cupsd ended at once: {self.log()}")
            return self._lp("lpstat", "-r", check=False).returncode == 0 and self.socket.exists()

        self.wait_until(ready, "the print server to start")

    def stop(self):
        """Ends the server; its queues and jobs stay, start() brings them back."""
        if self._process and self._process.poll() is None:
            self._process.send_signal(signal.SIGCONT)
            self._process.terminate()
            try:
                self._process.wait(5)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        self._process = None

    def suspend(self):
        """Lets the server hang: it accepts connections and never answers, until stop()."""
        self._process.send_signal(signal.SIGSTOP)

    def log(self):
        return "\n".join((self.root / "log" / name).read_text(errors="replace")[-4000:]
                         for name in ("error_log", "stderr") if (self.root / "log" / name).exists())

    # --- queues -----------------------------------------------------------------------------------------------------

    def add_pdf_queue(self, name, **options):
        """A queue without a driver: its jobs are recorded byte for byte as they were sent."""
        self._add(name, [], options)

    def add_tray_queue(self, name, **options):
        """A printer with trays, 1200 x 600 dpi, Letter by default; its jobs are recorded as the PDF that the print
        server's filters make for it."""
        self._add(name, ["-P", str(HERE / "trays.ppd")], options)

    def add_postscript_queue(self, name, **options):
        """The printer with trays, for PostScript, A4 by default; its jobs are recorded byte for byte as they were
        sent."""
        ppd = (HERE / "trays.ppd").read_text().replace(": Letter", ": A4").replace(
            "application/vnd.cups-pdf application/pdf", "application/postscript application/postscript")
        path = self.root / "postscript.ppd"
        path.write_text(ppd)
        self._add(name, ["-P", str(path)], options)

    def _add(self, name, driver, options):
        # A device URI takes no umlauts.
        out = self._out[name] = self.root / "out" / str(len(self._out) + 1)
        out.mkdir()
        out.chmod(0o777)
        arguments = ["lpadmin", "-p", name, "-E", "-v", f"record:{out}", *driver]
        for key, value in options.items():
            arguments += ["-D", value] if key == "comment" else ["-L", value] if key == "location" else \
                ["-o", f"{key.replace('_', '-')}={value}"]
        self._lp(*arguments)

    def set_default(self, name):
        self._lp("lpadmin", "-d", name)

    def reject(self, name):
        """The queue takes no more jobs."""
        self._lp("cupsreject", name)

    def disable(self, name):
        """Jobs stay in the queue."""
        self._lp("cupsdisable", name)

    def enable(self, name):
        self._lp("cupsenable", name)

    # --- jobs -------------------------------------------------------------------------------------------------------

    def jobs(self, name):
        """The jobs of a queue that were printed, in their order."""
        result = []
        for record in sorted(self._out[name].glob("*.job")):
            title, options, content_type, _ = record.read_text("utf-8").split("\0")
            result.append(RecordedJob(title, dict(re.findall(r"(\S+?)=(\S+)", options)), content_type,
                                      record.with_suffix(".data").read_bytes()))
        return result

    def wait_for_jobs(self, name, count):
        """Waits until so many jobs were printed, and returns them."""
        self.wait_until(lambda: len(self.jobs(name)) >= count, f"{count} jobs in {name}")
        return self.jobs(name)

    def waiting(self, name):
        """Numbers of the jobs that are still in the queue."""
        lines = self._lp("lpstat", "-W", "not-completed", "-o", name).stdout.splitlines()
        return [int(line.split()[0].rpartition("-")[2]) for line in lines if line.strip()]

    # --- inside -----------------------------------------------------------------------------------------------------

    def _lp(self, *command, check=True):
        result = subprocess.run(command, env=self.environment(LC_ALL="C.UTF-8"), stdin=subprocess.DEVNULL, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=TIMEOUT)
        if check and result.returncode:
            raise RuntimeError(f"{' '.join(command)}: {result.stdout.strip()}")
        return result

    def wait_until(self, condition, what):
        end = time.monotonic() + TIMEOUT
        while not condition():
            if time.monotonic() > end:
                raise RuntimeError(f"Waited {TIMEOUT} s for {what}. {self.log()}")
            time.sleep(0.05)

    def _configure(self):
        root = self.root
        root.chmod(0o755)
        for name in ("etc/ppd", "run/certs", "spool", "spool/tmp", "cache", "log", "bin/backend", "out", "home"):
            (root / name).mkdir(parents=True)
        for name in ("filter", "daemon", "notifier", "driver", "monitor", "cgi-bin"):
            if (SYSTEM_SERVER_BIN / name).exists():
                (root / "bin" / name).symlink_to(SYSTEM_SERVER_BIN / name)
        backend = root / "bin/backend/record"
        shutil.copy(HERE / "record", backend)
        # CUPS runs a backend that only its owner may run as root, any other as the user of the filters.
        backend.chmod(stat.S_IRWXU if os.geteuid() == 0 else 0o755)
        (root / "etc/cups-files.conf").write_text(f"""
            ServerRoot {root}/etc
            ServerBin {root}/bin
            DataDir {SYSTEM_DATA}
            StateDir {root}/run
            CacheDir {root}/cache
            RequestRoot {root}/spool
            TempDir {root}/spool/tmp
            AccessLog {root}/log/access_log
            ErrorLog {root}/log/error_log
            FileDevice Yes
            SystemGroup root
            """)
        administrator = getpass.getuser()
        (root / "etc/cupsd.conf").write_text(f"""
            Listen {self.socket}
            LogLevel debug
            Browsing No
            WebInterface No
            DefaultShared No
            DefaultAuthType Basic
            JobRetryInterval 1
            <Location />
              Order allow,deny
              Allow all
            </Location>
            <Policy default>
              JobPrivateAccess all
              JobPrivateValues none
              <Limit Cancel-Jobs Purge-Jobs>
                AuthType Default
                Require user {administrator if self.may_purge else "somebody-else"}
                Order deny,allow
              </Limit>
              <Limit CUPS-Add-Modify-Printer CUPS-Delete-Printer CUPS-Add-Modify-Class CUPS-Set-Default>
                AuthType Default
                Require user {administrator}
                Order deny,allow
              </Limit>
              <Limit All>
                Order deny,allow
              </Limit>
            </Policy>
            """)
