"""A private print server for tests: its own configuration, socket, spool and logs in a temporary folder.

Runs as root (then filters run as the user that CUPS has for them) or as an ordinary user; needs the packages
cups-daemon, cups-client and, for queues with a driver, cups-filters."""

import getpass
import os
import re
import select
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time
from pathlib import Path
from typing import NamedTuple

HERE = Path(__file__).resolve().parent / "cups"
PPD = (HERE / "trays.ppd").read_text()
TIMEOUT = 60  # seconds

FILES = """
ServerRoot {root}/etc
ServerBin {root}/bin
StateDir {root}/run
CacheDir {root}/cache
RequestRoot {root}/spool
AccessLog {root}/log/access_log
ErrorLog {root}/log/error_log
"""
SERVER = """
Listen {root}/run/cups.sock
Browsing No
DefaultShared No
<Location />
  Allow all
</Location>
<Policy default>
  <Limit Cancel-Jobs Purge-Jobs>
    AuthType Basic
    Require user {purger}
  </Limit>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
"""


class RecordedJob(NamedTuple):
    """A job as it arrived behind the filters of its queue, in a file."""
    title: str
    options: dict
    content_type: str
    path: Path


class PrivateCups:
    def __init__(self, may_purge=True, configuration=""):
        """may_purge: whether the caller has the right to cancel other people's jobs; further lines of cupsd.conf."""
        self.configuration = configuration
        self.root = Path(tempfile.mkdtemp(prefix="krv-cups-"))
        self.socket = self.root / "run/cups.sock"
        self.queues = []  # the recorded jobs of each lie in the folder of its number
        self.process = None
        self.purger = getpass.getuser() if may_purge else "somebody-else"

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        self.stop()
        shutil.rmtree(self.root, ignore_errors=True)

    def environment(self, **more):
        """The caller's environment, pointed at this server and away from the user's own print settings."""
        names = ("LPDEST", "PRINTER", "CUPS_USER", "CUPS_ENCRYPTION", "IPP_PORT")
        result = {name: value for name, value in os.environ.items() if name not in names}
        result.update(CUPS_SERVER=str(self.socket), CUPS_SERVERROOT=str(self.root / "etc"),
                      HOME=str(self.root / "home"), PATH=os.environ["PATH"] + ":/usr/sbin:/sbin")
        return result | more

    def start(self):
        root = self.root
        root.chmod(0o755)
        for name in ("etc/ppd", "run/certs", "spool/tmp", "cache", "log", "bin/backend", "out", "home"):
            (root / name).mkdir(parents=True)
        for name in ("filter", "daemon", "monitor"):
            (root / "bin" / name).symlink_to(f"/usr/lib/cups/{name}")
        for name in ("ipp", "ipps"):
            (root / "bin/backend" / name).symlink_to(f"/usr/lib/cups/backend/{name}")
        shutil.copy(HERE / "record", root / "bin/backend")
        # CUPS runs a backend that only its owner may run as root, any other as the user of the filters.
        (root / "bin/backend/record").chmod(0o700 if os.geteuid() == 0 else 0o755)
        (root / "etc/cups-files.conf").write_text(FILES.format(root=root))
        (root / "etc/cupsd.conf").write_text(SERVER.format(root=root, purger=self.purger) + self.configuration)
        self.launch()

    def launch(self):
        root = self.root
        with (root / "log/error_log").open("ab") as log:
            command = ["cupsd", "-f", "-c", root / "etc/cupsd.conf", "-s", root / "etc/cups-files.conf"]
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                            env=self.environment())
        self.wait_until(lambda: self.socket.exists() and "is running" in self.run("lpstat", "-r"), "the server")

    def stop(self):
        if self.process:
            self.process.kill()
            self.process.wait()

    def restart(self, signal_number=signal.SIGTERM):
        """Ends the server, and starts it again with what it kept."""
        self.process.send_signal(signal_number)
        self.process.wait()
        self.launch()

    def run(self, *command) -> str:
        """What a program of CUPS says: lpadmin, cupsdisable and the like."""
        result = subprocess.run(command, env=self.environment(LC_ALL="C.UTF-8"), stdin=subprocess.DEVNULL, text=True,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=TIMEOUT)
        if result.returncode:
            raise RuntimeError(f"{' '.join(command)}: {result.stdout.strip()}")
        return result.stdout

    def wait_until(self, condition, what):
        end = time.monotonic() + TIMEOUT
        while not condition():
            if self.process.poll() is not None or time.monotonic() > end:
                raise RuntimeError(f"Waited for {what}. {(self.root / 'log/error_log').read_text()[-4000:]}")
            time.sleep(0.05)

    def add_pdf_queue(self, name):
        """A queue without a driver: its jobs are recorded byte for byte as they were sent."""
        self.queues.append(name)
        out = self.root / "out" / str(len(self.queues))  # a device URI takes no umlauts
        out.mkdir()
        out.chmod(0o777)
        self.run("lpadmin", "-p", name, "-E", "-v", f"record:{out}")

    def add_tray_queue(self, name, *options, ppd=PPD):
        """A printer with trays, 1200 x 600 dpi, Letter by default; its jobs are recorded as the PDF that the print
        server's filters make for it."""
        self.add_pdf_queue(name)
        (self.root / "driver.ppd").write_text(ppd)
        self.run("lpadmin", "-p", name, "-P", str(self.root / "driver.ppd"), *options)

    def add_postscript_queue(self, name, *options, ppd=PPD):
        """The printer with trays, for PostScript, A4 by default; its jobs are recorded byte for byte as they were
        sent."""
        self.add_tray_queue(name, *options, ppd=ppd.replace(": Letter", ": A4").replace(
            "application/vnd.cups-pdf application/pdf", "application/postscript application/postscript"))

    def jobs(self, name) -> list[RecordedJob]:
        """The jobs of a queue that were printed, in their order."""
        result = []
        for record in sorted((self.root / "out" / str(self.queues.index(name) + 1)).glob("*.job")):
            title, options, content_type, _ = record.read_text("utf-8").split("\0")
            result.append(RecordedJob(title, dict(re.findall(r"(\S+?)=(\S+)", options)), content_type,
                                      record.with_suffix(".data")))
        return result

    def wait_for_jobs(self, name, count) -> list[RecordedJob]:
        """Waits until so many jobs were printed, and returns them."""
        self.wait_until(lambda: len(self.jobs(name)) >= count, f"{count} jobs in {name}")
        return self.jobs(name)

    def waiting(self, name) -> int:
        """How many jobs are still in the queue."""
        return len(self.run("lpstat", "-W", "not-completed", "-o", name).splitlines())


class LossyProxy:
    """A way to a print server's socket on which the first document that is sent ("document") or the answer to it
    ("answer") is lost, with the connection; for ever: and nothing gets through afterwards. With a function nothing is
    lost, but it is called before the document gets through."""

    SEND_DOCUMENT = b"\x02\x00\x00\x06"  # version 2.0 and the operation (RFC 8011, section 5.4.15)

    def __init__(self, server, lose, for_ever=False):
        self.server, self.lose, self.for_ever = server, lose, for_ever
        self.lost = False
        self.folder = tempfile.TemporaryDirectory(prefix="krv-proxy-")
        self.path = Path(self.folder.name) / "cups.sock"

    def __enter__(self):
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(str(self.path))
        self.listener.listen()
        threading.Thread(target=self.accept, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.listener.shutdown(socket.SHUT_RDWR)
        self.listener.close()
        self.folder.cleanup()

    def accept(self):
        while True:
            try:
                client, _ = self.listener.accept()
            except OSError:
                return
            threading.Thread(target=self.forward, args=(client,), daemon=True).start()

    def forward(self, client):
        with client, socket.socket(socket.AF_UNIX) as server:
            if self.lost and self.for_ever:
                return
            server.connect(str(self.server))
            losing = False
            while True:
                for source in select.select([client, server], [], [])[0]:
                    data = source.recv(1 << 20)
                    if source is client and not self.lost and self.SEND_DOCUMENT in data:
                        self.lost = True
                        losing = not callable(self.lose)
                        if not losing:
                            self.lose()
                    answer = source is server and b"HTTP/1.1 200" in data
                    if not data or (losing and (self.lose == "document" or answer)):
                        return
                    (server if source is client else client).sendall(data)
