"""A fresh Debian in a folder, made from the package sources of this machine, and without anything that this one has.

Needs root's rights, mounts of its own, and mmdebstrap."""

import os
import pathlib
import platform
import shutil
import subprocess
import tempfile
import unittest

from support import CAN_MOUNT, NAMESPACE

# The folder for temporary files is the same as outside.
ENTER = 'mount -t proc proc "$0/proc" && mount --bind "$1" "$0$1" && root=$0 && shift && exec chroot "$root" env -C "$@"'
CHANGING = {"proc", "sys", "dev", "tmp", "var/cache", "var/log"}


class FreshDebian:
    def __enter__(self):
        if os.geteuid() != 0 or not CAN_MOUNT or not shutil.which("mmdebstrap"):
            raise unittest.SkipTest("needs root's rights, mounts of its own, and mmdebstrap")
        # Those of Debian itself, as far as apt has their lists.
        sources = subprocess.run(["apt-get", "indextargets", "--format", "deb $(REPO_URI) $(CODENAME) $(COMPONENT)",
                                  "Created-By: Packages", "Origin: Debian"], stdout=subprocess.PIPE, text=True).stdout
        if not sources:
            raise unittest.SkipTest("apt has no lists of Debian's packages here (apt-get update)")
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="krv-debian-"))
        self.root = self.folder / "root"
        (self.folder / "sources.list").write_text(sources)
        options = ["--quiet", "--mode=root", "--variant=minbase", "--skip=cleanup/apt", "--dpkgopt=force-unsafe-io"]
        release = platform.freedesktop_os_release()["VERSION_CODENAME"]
        made = subprocess.run(["mmdebstrap", *options, release, self.root, self.folder / "sources.list"],
                              stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        if made.returncode:
            self.__exit__()
            raise unittest.SkipTest("no fresh Debian can be made here: " + made.stdout)
        shutil.copy("/etc/resolv.conf", self.root / "etc")
        (self.root / tempfile.gettempdir().lstrip("/")).mkdir(parents=True, exist_ok=True)
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder, ignore_errors=True)

    def entering(self, folder) -> list[str]:
        """What starts a command in there, in a folder below the one for temporary files."""
        return [*NAMESPACE, "sh", "-c", ENTER, str(self.root), tempfile.gettempdir(), str(folder)]

    def apt(self, *arguments):
        run = subprocess.run([*self.entering("/"), "apt-get", "-y", *arguments], stdin=subprocess.DEVNULL, text=True,
                             env=os.environ | {"DEBIAN_FRONTEND": "noninteractive", "LC_ALL": "C.UTF-8"},
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        assert run.returncode == 0, run.stdout

    def files(self) -> set[str]:
        """What there is, without what every program may leave in caches and logs."""
        found = set()
        for folder, folders, names in os.walk(self.root):
            place = os.path.relpath(folder, self.root)
            folders[:] = [name for name in folders if os.path.normpath(f"{place}/{name}") not in CHANGING]
            found |= {os.path.normpath(f"{place}/{name}") for name in (*folders, *names)}
        return found
