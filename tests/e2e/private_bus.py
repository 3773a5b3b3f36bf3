"""A session bus of the test's own, with a notification service on it.

The environment names the service: KRVWINPR_NOTIFICATIONS is krv-notifications."""

import os
import queue
import subprocess
import tempfile
import threading


class PrivateBus:
    def __init__(self, *capabilities):
        self.capabilities, self.lines = capabilities, queue.Queue()

    def __enter__(self):
        self.folder = tempfile.TemporaryDirectory(prefix="krvwinpr-bus-", ignore_cleanup_errors=True)
        self.address = f"unix:path={self.folder.name}/bus"
        self.daemon = self.start("dbus-daemon", "--session", "--nofork", "--print-address=1",
                                 f"--address={self.address}")
        self.daemon.stdout.readline()
        self.service = self.start(os.environ["KRVWINPR_NOTIFICATIONS"], *self.capabilities)
        self.service.stdout.readline()
        self.reading = threading.Thread(target=lambda: [self.lines.put(line.strip()) for line in self.service.stdout])
        self.reading.start()
        return self

    def start(self, *command):
        return subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                text=True, env=os.environ | {"DBUS_SESSION_BUS_ADDRESS": self.address,
                                                   "XDG_RUNTIME_DIR": self.folder.name})

    def __exit__(self, *_):
        for process in self.service, self.daemon:
            process.terminate()
            process.wait()
        self.reading.join()
        for process in self.service, self.daemon:
            process.stdout.close()
        self.folder.cleanup()

    def message(self) -> str:
        """The next one that is shown, "title: text"."""
        return self.lines.get(timeout=20)
