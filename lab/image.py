# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""The virtual server's kernel and file system, from Debian's packages and our own build."""
import hashlib
import os
import pathlib
import re
import shutil
import subprocess
import tempfile

from archive import Archive

CACHE = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache"), "tavqz-lab")

# Drivers in the order in which they are to be loaded; SCSI disks before SATA ones.
DRIVERS = ["virtio_pci", "virtio_blk", "virtio_net", "sd_mod", "sg", "virtio_scsi", "ahci",
           "nvme", "ipmi_si", "ipmi_devintf"]

# What is asked beside us inside the guest: packages, their programs and the packages of libraries
# that a machine with a compiler may lack.
PEERS = [("dmidecode", "usr/sbin/dmidecode", []),
         ("lshw", "usr/bin/lshw", []),
         ("ipmitool", "usr/bin/ipmitool", ["libfreeipmi17", "libreadline8", "libssl3"])]


class Unavailable(Exception):
    """There is no virtual server to be had here, and why."""


def run(*command, **options):
    """What the command writes."""
    try:
        return subprocess.run(command, check=True, capture_output=True, text=True, **options).stdout
    except (OSError, subprocess.SubprocessError) as failure:
        reason = getattr(failure, "stderr", None) or str(failure)
        raise Unavailable(f"{' '.join(map(str, command))}: {reason.strip()}") from failure


def unpack(package, folder):
    """Unpacks a package into a folder of its own below this one; nothing is installed."""
    place = folder / package
    if not place.exists():
        place.mkdir()
        run("apt-get", "-o", "Acquire::Retries=1", "-o", "Acquire::http::Timeout=20", "download",
            package, cwd=place, timeout=300)
        run("dpkg-deb", "-x", next(place.glob("*.deb")), place)
    return place


def libraries(program, folders=()):
    """The paths of the shared libraries of a program, its loader included. Libraries of the folders
    come first."""
    environment = dict(os.environ, LD_LIBRARY_PATH=":".join(map(str, folders)))
    linked = run("ldd", program, env=environment)
    missing = re.search(r"(\S+) => not found", linked)
    if missing:
        raise Unavailable(f"{program} needs {missing.group(1)}")
    return re.findall(r"(/\S+) \(0x", linked)


def add_program(archive, path, program, folders=()):
    """Adds a program, and its libraries where it looks for them."""
    archive.add_file(path, program)
    for library in libraries(program, folders):
        place = library
        for folder in folders:
            place = place.replace(str(folder), f"/usr/lib/{folder.name}")
        archive.add_file(place, library)


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


def prepare(kernel_package, folder):
    """Makes the kernel and what is the same for every build: drivers, a shell and the peers."""
    with tempfile.TemporaryDirectory(dir=CACHE) as temporary:
        packages = pathlib.Path(temporary)
        kernel = unpack(kernel_package, packages)
        archive = Archive()
        for module in modules(kernel):
            archive.add_file(f"modules/{module.name}", module)
        order = "".join(f"{module.name}\n" for module in modules(kernel))
        archive.add("modules/order", order.encode())
        archive.add_file("bin/busybox", unpack("busybox-static", packages) / "bin/busybox")
        for package, program, needed in PEERS:
            folders = [place for name in needed
                       for place in unpack(name, packages).glob("**/*-linux-gnu") if place.is_dir()]
            add_program(archive, program, unpack(package, packages) / program, folders)
        ready = packages / "ready"
        ready.mkdir()
        shutil.copy(next(kernel.glob("boot/vmlinuz-*")), ready / "vmlinuz")
        (ready / "base.cpio").write_bytes(archive.build())
        if not folder.exists():
            ready.rename(folder)


def base():
    """The folder of "vmlinuz" and "base.cpio", made once for each kernel and each state of this
    file. What was made before does where Debian's archive is out of reach."""
    CACHE.mkdir(parents=True, exist_ok=True)
    state = hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()[:16]
    try:
        newest = re.search(r"Depends: (linux-image-\S+)",
                           run("apt-cache", "depends", "linux-image-amd64"))
        if not newest:
            raise Unavailable("linux-image-amd64: no such package")
        folder = CACHE / f"{newest.group(1)}-{state}"
        if not folder.exists():
            prepare(newest.group(1), folder)
        return folder
    except Unavailable:
        made = sorted(CACHE.glob(f"linux-image-*-{state}"))
        if not made:
            raise
        return made[-1]


def product(build, source):
    """Our command, module and model as they were built, and what the guest does with them."""
    archive = Archive()
    for file in ("bin/tavqz", "lib/libAssetIDProvider.so"):
        add_program(archive, f"opt/tavqz/{file}", build / file)
    archive.add_tree("opt/tavqz/share/tavqz/schema", source / "schema")
    archive.add("etc/machine-id", b"5f3a9c1e7d2b4860a1b2c3d4e5f60718\n")
    archive.add("init", (source / "lab/guest-init").read_bytes(), 0o755)
    return archive
