"""Hosts in the emulator dosbox, and the messenger around it."""

import re
import shutil
import signal
import subprocess
import time
from typing import NamedTuple

from support import PROGRAM

MESSENGER = PROGRAM.with_name("KRVWinPrBote")
HOST_PROGRAMS = [PROGRAM.parent / "dos" / name for name in ("KRVWINPR.COM", "HOST.COM")]
CLOCK = 1193.182  # of the host's times, in one millisecond
# It is deaf to all but this while a batch file runs.
KILLED = ["timeout", "-s", "KILL", "60"]
RESULT = re.compile(r"^(\d) ([01]) ([01]) ([0-9A-F]{8})\r\n", re.MULTILINE)

CONFIGURATION = """
[mixer]
nosound=true
[autoexec]
@ECHO OFF
MOUNT D "{said}"
MOUNT C "{folder}"
C:
{lines}
EXIT
"""


class Call(NamedTuple):
    """What the host saw of one call: errorlevel, the completion file, a key that is left, milliseconds."""
    level: int
    completed: bool
    key_left: bool
    time: float


class Dosbox:
    """A DOS machine that runs the lines of a batch file, with a job's folder as C: and an empty one as D:."""

    def __init__(self, job, *lines, tail=b" DRUCK.OUT KEINEGRAFIK", prefix=()):
        for program in HOST_PROGRAMS:
            shutil.copy(program, job.folder)
        job.write("TAIL.TXT", tail)
        self.said = job.folder.parent / "gesagt"
        shutil.rmtree(self.said, ignore_errors=True)
        self.said.mkdir()
        configuration = job.folder.parent / "dosbox.conf"
        configuration.write_bytes(CONFIGURATION.format(said=self.said, folder=job.folder, lines="\n".join(lines))
                                  .encode("cp850"))
        environment = job.environment | {"SDL_VIDEODRIVER": "dummy", "SDL_AUDIODRIVER": "dummy"}
        self.process = subprocess.Popen([*prefix, *KILLED, "dosbox", "-conf", configuration], env=environment,
                                        cwd=job.folder.parent, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                        stderr=subprocess.DEVNULL)

    def finish(self) -> "Dosbox":
        code = self.process.wait(70)
        assert code == 0, f"dosbox ended with {code}"
        return self

    def text(self, name="AUS.TXT") -> str:
        """What a program said on the screen, redirected to a file of D:, without the host's lines."""
        return RESULT.sub("", self.bytes(name).decode("cp850")).replace("\r\n", "\n")

    def calls(self, name="AUS.TXT") -> list[Call]:
        return [Call(int(level), completed == "1", left == "1", int(clocks, 16) / CLOCK)
                for level, completed, left, clocks in RESULT.findall(self.bytes(name).decode("cp850"))]

    def bytes(self, name) -> bytes:
        return (self.said / name).read_bytes()


class Messenger:
    """Carries out the orders in the folders of some jobs, with the settings of the first, until the test ends."""

    def __init__(self, test, *jobs, command=(MESSENGER,)):
        self.test = test
        self.log = jobs[0].folder.parent / "bote.log"
        with self.log.open("wb") as errors:
            self.process = subprocess.Popen([*command, *(job.folder for job in jobs)], env=jobs[0].environment,
                                            cwd=jobs[0].folder.parent, stdin=subprocess.DEVNULL, stderr=errors)
        test.addCleanup(self.stop)
        until(lambda: self.log.read_text().count("wird überwacht") == len(jobs))

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        self.test.assertEqual(self.process.wait(20), 0, self.log.read_text())
        self.test.assertNotRegex(self.log.read_text(), "Sanitizer|runtime error:")


def until(condition, seconds=20):
    end = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < end, "waited in vain"
        time.sleep(0.01)
