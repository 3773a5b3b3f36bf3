"""The Windows program under Wine with windows that are seen, on a display and a print server of the test's own."""

import subprocess

from private_cups import PrivateCups
from private_screen import PrivateScreen
from test_windows import PROGRAM, QUEUE, WINE, WindowsTest

DRIVERS = r"HKCU\Software\Wine\Drivers"


class WindowsScreenTest(WindowsTest):
    SIZE = "1280x1024"

    @classmethod
    def setUpClass(cls):
        cls.end_wine()
        cls.cups = cls.enterClassContext(PrivateCups())
        cls.cups.add_pdf_queue("archiv")
        cls.cups.add_postscript_queue(QUEUE, "-o", "Resolution=600dpi")
        cls.screen = cls.enterClassContext(PrivateScreen(size=cls.SIZE))
        # Other tests want windows that nobody sees.
        for graphics in "x11", "null":
            command = [*WINE, "reg", "add", DRIVERS, "/v", "Graphics", "/d", graphics, "/f"]
            if graphics == "x11":
                subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
            else:
                cls.addClassCleanup(subprocess.run, command, stdout=subprocess.DEVNULL, check=True)
        cls.end_wine()
        cls.addClassCleanup(cls.end_wine)

    def start(self, *arguments):
        self.program = subprocess.Popen([*WINE, PROGRAM, *arguments], cwd=self.job.folder,
                                        env=self.cups.environment() | self.screen.environment,
                                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(self.program.wait)
        self.addCleanup(self.program.terminate)
