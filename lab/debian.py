# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""Debian's packages, unpacked and never installed, of this architecture or of another."""
import dataclasses
import os
import pathlib
import subprocess
import time

DAY = 24 * 60 * 60

CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache"), "tavqz-lab")


class Unavailable(Exception):
    """There is no virtual server to be had here, and why."""


@dataclasses.dataclass(frozen=True)
class Architecture:
    name: str
    kernel: str  # the package that depends on the newest one
    libraries: str  # the folder of its shared libraries
    emulator: str
    processor: str


AMD64 = Architecture("amd64", "linux-image-amd64", "x86_64-linux-gnu", "qemu-system-x86_64",
                     "qemu64")
I386 = Architecture("i386", "linux-image-686-pae", "i386-linux-gnu", "qemu-system-i386", "qemu32")


def run(*command, **options):
    """What the command writes."""
    try:
        return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout
    except (OSError, subprocess.SubprocessError) as failure:
        reason = getattr(failure, "stderr", None) or str(failure)
        raise Unavailable(f"{' '.join(map(str, command))}: {reason.strip()}") from failure


class Archive:
    """The archive as one architecture sees it."""

    def __init__(self, architecture):
        self.is_native = run("dpkg", "--print-architecture").strip() == architecture.name
        self._options = ["-o", "Acquire::Retries=1", "-o", "Acquire::http::Timeout=20"]
        if os.geteuid() == 0:
            # Its own user has no access to root's cache.
            self._options += ["-o", "APT::Sandbox::User=root"]
        if not self.is_native:
            self._see_other(architecture)

    def _see_other(self, architecture):
        """Lists of our own, for this machine's apt may know of no other architecture."""
        folder = CACHE / f"apt-{architecture.name}"
        lists = folder / "lists"
        (lists / "partial").mkdir(parents=True, exist_ok=True)
        self._options += ["-o", f"APT::Architecture={architecture.name}",
                          "-o", f"APT::Architectures={architecture.name}",
                          "-o", f"Dir::State::lists={lists}", "-o", "Dir::State::status=/dev/null",
                          "-o", f"Dir::Cache={folder}"]
        # Old lists name packages that the archive has replaced. The lists themselves have its times.
        updated = folder / "updated"
        if not updated.exists() or time.time() - updated.stat().st_mtime > DAY:
            try:
                run("apt-get", *self._options, "update", timeout=300)
            except Unavailable:
                # Some of the machine's other sources may not have this architecture.
                if not list(lists.glob("*_Packages*")):
                    raise
            updated.touch()

    def dependencies(self, package):
        lines = run("apt-cache", *self._options, "depends", package).splitlines()
        return [line.split()[1] for line in lines if line.startswith("  Depends: ")]

    def unpack(self, package, folder):
        """Unpacks a package into a folder of its own below this one."""
        place = folder / package
        if not place.exists():
            place.mkdir()
            run("apt-get", *self._options, "download", package, cwd=place, timeout=300)
            run("dpkg-deb", "-x", next(place.glob("*.deb")), place)
        return place
