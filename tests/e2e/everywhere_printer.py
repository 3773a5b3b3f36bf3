"""An IPP Everywhere printer in software (ippeveprinter) that is announced to whoever is on the test's own system bus.

Needs the packages avahi-daemon, cups-ipp-utils and dbus-daemon, and a mount namespace for avahi-daemon's fixed folder."""

import os
import shutil
import socket
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

from support import NAMESPACE

BUS = """<busconfig><type>system</type><listen>unix:path={root}/bus</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/>
<allow user="*"/></policy></busconfig>"""
# Announces on this machine only.
AVAHI = "[server]\nallow-interfaces=lo\nuse-ipv6=no\nhost-name=krv-test\n"
DISCOVERY = ["sh", "-c", 'mount -t tmpfs tmpfs /run && exec avahi-daemon --no-drop-root --no-chroot --no-rlimits -f "$0"']


class EverywherePrinter:
    """A printer that calls itself so; it keeps what it is sent."""

    def __init__(self, name):
        self.name, self.processes = name, []

    def __enter__(self):
        self.root = Path(tempfile.mkdtemp(prefix="krv-everywhere-"))
        try:
            self.start()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            process.terminate()
            process.wait()
        shutil.rmtree(self.root, ignore_errors=True)

    def start(self):
        (self.root / "bus.conf").write_text(BUS.format(root=self.root))
        (self.root / "avahi.conf").write_text(AVAHI)
        (self.root / "jobs").mkdir()
        self.environment = {"DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.root}/bus"}
        with socket.socket() as free:
            free.bind(("localhost", 0))
            self.port = free.getsockname()[1]
        self.run("dbus-daemon", "--nofork", f"--config-file={self.root}/bus.conf", says="", until=self.root / "bus")
        self.run(*NAMESPACE, *DISCOVERY, self.root / "avahi.conf", says="Server startup complete")
        self.run("ippeveprinter", "-k", "-d", self.root / "jobs", "-p", str(self.port), "-n", "localhost", "-f",
                 "application/pdf,image/pwg-raster", self.name, says="state 2")

    def run(self, *command, says, until=None):
        """Starts a program and waits until it says so, and until a file is there."""
        log = self.root / f"{len(self.processes)}.log"
        with log.open("wb") as output:
            try:
                process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                                           env=os.environ | self.environment)
            except FileNotFoundError as error:
                raise unittest.SkipTest(f"{error.filename} is not installed") from error
        self.processes.append(process)
        end = time.monotonic() + 20
        while says not in log.read_text() or not (until or log).exists():
            if process.poll() is not None or time.monotonic() > end:
                raise unittest.SkipTest(f"{command[0]} does not run here: {log.read_text().strip()[-300:]}")
            time.sleep(0.05)

    def jobs(self):
        """The documents that arrived."""
        return sorted((self.root / "jobs").glob("**/*.pdf"))
