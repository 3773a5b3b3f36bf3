"""A display of the test's own, worked with by keyboard and mouse, and read as screen readers read it.

Needs Xvfb, xdotool, gdbus and at-spi2-core; for pictures imagemagick."""

import os
import re
import subprocess

from preview_picture import Picture

FOCUSED, SHOWING = 1 << 12, 1 << 25  # states of AT-SPI


class PrivateScreen:
    def __init__(self, bus=None, size="1280x1024"):
        """bus: the PrivateBus of the same desktop, where it is to be read as well."""
        read, write = os.pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(write), "-screen", "0", size + "x24", "-noreset"],
                                       pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as numbers:
            self.environment = {"DISPLAY": ":" + numbers.readline().strip()}
        if bus is None:
            return
        self.environment |= {"DBUS_SESSION_BUS_ADDRESS": bus.address, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                             "XDG_RUNTIME_DIR": bus.folder.name}
        self.bus = self.tool("gdbus", "call", "--session", "-d", "org.a11y.Bus", "-o", "/org/a11y/bus", "-m",
                             "org.a11y.Bus.GetAddress").split("'")[1]

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()

    def picture(self) -> Picture:
        """What the screen shows."""
        return Picture.of(["import", "-window", "root", "-depth", "8", "ppm:-"], os.environ | self.environment)

    def tool(self, *command) -> str:
        return subprocess.run(command, env=os.environ | {"LC_ALL": "C.UTF-8"} | self.environment, timeout=30,
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True, check=True).stdout

    def press(self, *keys):
        self.tool("xdotool", "key", "--delay", "40", *keys)

    def height(self, title) -> int:
        found = self.tool("xdotool", "search", "--sync", "--onlyvisible", "--name", title, "getwindowgeometry")
        return int(re.search(r"Geometry: \d+x(\d+)", found)[1])

    def ask(self, place, question, *arguments) -> str:
        return self.tool("gdbus", "call", "--address", self.bus, "-d", place[0], "-o", place[1], "-m", question,
                         *arguments)

    def children(self, place) -> list[tuple[str, str]]:
        answer = self.ask(place, "org.a11y.atspi.Accessible.GetChildren")
        return re.findall(r"\('(:[\d.]+)', (?:objectpath )?'([^']+)'", answer)

    def name(self, place) -> str:
        """A control's label, where it has one that tells more than its own name."""
        label = re.search(r"uint32 2, \[\('(:[\d.]+)', (?:objectpath )?'([^']+)'",
                          self.ask(place, "org.a11y.atspi.Accessible.GetRelationSet"))
        answer = self.ask(label.groups() if label else place, "org.freedesktop.DBus.Properties.Get",
                          "org.a11y.atspi.Accessible", "Name")
        return re.match(r"\(<(['\"])(.*)\1>,\)", answer)[2]

    def controls(self) -> dict[str, tuple[str, str]]:
        """What the program's window shows and the user can work with, by name."""
        root = self.children(("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root"))
        window = self.children(root[-1])[0]
        return {self.name(place): place for place in self.children(window)
                if self.role(place) != "label" and self.has(place, SHOWING)}

    def has(self, place, state) -> bool:
        return bool(int(self.ask(place, "org.a11y.atspi.Accessible.GetState").split()[1].strip(",")) & state)

    def role(self, place) -> str:
        return self.ask(place, "org.a11y.atspi.Accessible.GetRoleName").split("'")[1]

    def text(self, place) -> str:
        return re.match(r"\((['\"])(.*)\1,\)", self.ask(place, "org.a11y.atspi.Text.GetText", "0", "int32 -1"))[2]

    def place(self, place) -> tuple[int, ...]:
        """Left and top edge, width and height."""
        return tuple(map(int, re.findall(r"-?\d+", self.ask(place, "org.a11y.atspi.Component.GetExtents", "0"))))

    def click(self, place, down=0.5):
        """So much of the control's height below its top."""
        x, y, width, height = self.place(place)
        self.tool("xdotool", "mousemove", str(x + width // 2), str(y + int(height * down)), "click", "1", "sleep", "0.1")
