# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""The virtual server's kernel and file system, from Debian's packages and our own build."""
import hashlib
import pathlib
import re
import shutil
import tempfile

import debian
from archive import Archive
from debian import CACHE, Unavailable, run

# Drivers in the order in which they are to be loaded; SCSI disks before SATA ones.
DRIVERS = ["virtio_pci", "virtio_blk", "virtio_net", "sd_mod", "sg", "virtio_scsi", "ahci",
           "nvme", "raid1", "ipmi_si", "ipmi_devintf"]

# What is asked beside us inside the guest: packages and their programs.
PEERS = [("dmidecode", "usr/sbin/dmidecode"), ("lshw", "usr/bin/lshw"),
         ("ipmitool", "usr/bin/ipmitool"), ("mdadm", "sbin/mdadm")]

# The packages of the libraries of all that runs inside, where this machine does not have them.
PEER_LIBRARIES = ["libfreeipmi17", "libreadline8", "libssl3"]
LIBRARIES = ["libc6", "libgcc-s1", "libstdc++6", "libtinfo6", "libgcrypt20", "libgpg-error0",
             "libmd0", "libexpat1", "libicu72", "libpam0g", "libcrypt1", "libaudit1", "libcap-ng0",
             "libpci3", "libudev1", "zlib1g"]


# What is built here and runs inside.
PROGRAMS = ["bin/tavqz", "libexec/tavqz", "lib/libAssetIDProvider.so",
            "lib/libTavqzRaidProvider.so", "lib/libtav_shrdevice.so"]

# What they load when they need it, which no header tells.
LOADED = re.compile(rb"libicuuc\.so\.\d+")

# Images of earlier states that are kept: others may use them at the moment.
KEPT = 2


class Libraries:
    """Finds the shared libraries of programs in folders, the first one that has it."""

    def __init__(self, architecture, folders):
        self._place = f"usr/lib/{architecture.libraries}"
        self._found = {}
        for folder in folders:
            for path in sorted(pathlib.Path(folder).glob("*.so*")):
                self._found.setdefault(path.name, path)

    def add_program(self, archive, path, program):
        """Adds a program, the libraries that it needs and the loader that it asks for."""
        archive.add_file(path, program)
        loader = re.search(r"program interpreter: (\S+)\]", run("readelf", "-lW", program))
        if loader:
            name = pathlib.Path(loader.group(1)).name
            archive.add_file(loader.group(1), self._find(program, name))
        pending = [program]
        done = set()
        while pending:
            needing = pending.pop()
            names = re.findall(r"\(NEEDED\).*\[(.+)\]", run("readelf", "-dW", needing))
            names += [name.decode() for name in LOADED.findall(pathlib.Path(needing).read_bytes())]
            for name in names:
                if name not in done:
                    done.add(name)
                    library = self._find(needing, name)
                    archive.add_file(f"{self._place}/{name}", library)
                    pending.append(library)

    def _find(self, program, name):
        if name not in self._found:
            raise Unavailable(f"{program} needs {name}")
        return self._found[name]


def modules(kernel):
    """The files of the drivers and of all that they need, each after what it needs itself."""
    files = {path.stem.replace("-", "_"): path for path in kernel.glob("lib/modules/*/**/*.ko")}
    order = []

    def need(name):
        # What is in no file is built into the kernel.
        path = files.get(name.replace("-", "_"))
        if path and path not in order:
            depends = re.search(rb"\0depends=([^\0]*)", path.read_bytes())
            for other in depends.group(1).decode().split(",") if depends else []:
                need(other)
            order.append(path)

    for driver in DRIVERS:
        need(driver)
    return order


def prepare(packages, architecture, kernel_package, folder):
    """Makes the kernel and what is the same for every build: drivers, a shell, the peers, and the
    libraries that a build for another architecture than this machine's may need."""
    with tempfile.TemporaryDirectory(dir=CACHE) as temporary:
        work = pathlib.Path(temporary)
        ready = work / "ready"
        shared = ready / "lib"
        shared.mkdir(parents=True)
        for name in PEER_LIBRARIES + ([] if packages.is_native else LIBRARIES):
            for library in packages.unpack(name, work).glob(f"**/{architecture.libraries}/*.so*"):
                shutil.copy(library, shared)
        libraries = Libraries(architecture, library_folders(packages, architecture, ready))
        kernel = packages.unpack(kernel_package, work)
        archive = Archive()
        for module in modules(kernel):
            archive.add_file(f"modules/{module.name}", module)
        order = "".join(f"{module.name}\n" for module in modules(kernel))
        archive.add("modules/order", order.encode())
        archive.add_file("bin/busybox", packages.unpack("busybox-static", work) / "bin/busybox")
        for package, program in PEERS:
            libraries.add_program(archive, program, packages.unpack(package, work) / program)
        shutil.copy(next(kernel.glob("boot/vmlinuz-*")), ready / "vmlinuz")
        (ready / "base.cpio").write_bytes(archive.build())
        if not folder.exists():
            ready.rename(folder)


def library_folders(packages, architecture, base):
    own = [f"/lib/{architecture.libraries}", f"/usr/lib/{architecture.libraries}", "/lib64"]
    return (own if packages.is_native else []) + [base / "lib"]


def slimmed(build, folder):
    """A copy of what is built here without what helps to debug it: that is many times what the
    machine has memory for."""
    for file in [*PROGRAMS, *(f"lib/{path.name}" for path in (build / "lib").glob("*.so*"))]:
        (folder / file).parent.mkdir(exist_ok=True)
        run("strip", "--strip-debug", "-o", folder / file, build / file)
    return folder


def forget(architecture):
    """Removes what was made for earlier states of this file."""
    made = sorted(CACHE.glob(f"linux-image-*-{architecture.name}-*"),
                  key=lambda path: path.stat().st_mtime)
    for old in made[:-1 - KEPT]:
        shutil.rmtree(old, ignore_errors=True)


class Image:
    """The kernel and the file system, but for what is built here. Made once for each kernel and
    state of this file; what was made before does where Debian's archive is out of reach."""

    def __init__(self, architecture):
        CACHE.mkdir(parents=True, exist_ok=True)
        self._architecture = architecture
        self._packages = debian.Archive(architecture)
        state = hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()[:16]
        state = f"{architecture.name}-{state}"
        try:
            newest = [name for name in self._packages.dependencies(architecture.kernel)
                      if name.startswith("linux-image-")]
            if not newest:
                raise Unavailable(f"{architecture.kernel}: no such package")
            self._folder = CACHE / f"{newest[0]}-{state}"
            if not self._folder.exists():
                prepare(self._packages, architecture, newest[0], self._folder)
                forget(architecture)
        except Unavailable:
            made = sorted(CACHE.glob(f"linux-image-*-{state}"))
            if not made:
                raise
            self._folder = made[-1]
        self.kernel = self._folder / "vmlinuz"

    def file_system(self, build, source, settings):
        """With our command, module and model as they were built, and the guest's settings: files by
        their names."""
        for file in PROGRAMS:
            if not (build / file).exists():
                raise Unavailable(f"{build / file}: not built")
        archive = Archive()
        with tempfile.TemporaryDirectory() as temporary:
            slim = slimmed(build, pathlib.Path(temporary))
            libraries = Libraries(self._architecture,
                                  [slim / "lib", *library_folders(self._packages,
                                                                  self._architecture,
                                                                  self._folder)])
            for file in PROGRAMS:
                libraries.add_program(archive, f"opt/tavqz/{file}", slim / file)
        archive.add_tree("opt/tavqz/share/tavqz", build / "share/tavqz")
        archive.add("etc/machine-id", b"5f3a9c1e7d2b4860a1b2c3d4e5f60718\n")
        archive.add("init", (source / "lab/guest-init").read_bytes(), 0o755)
        for name, text in settings.items():
            archive.add(name, text.encode(), 0o600)
        return (self._folder / "base.cpio").read_bytes() + archive.build()
