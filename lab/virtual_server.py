# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""One run of the virtual server under QEMU's software emulation."""
import json
import pathlib
import subprocess
import tarfile

import machine
from debian import Unavailable

MEGABYTE = 1 << 20


def quoted(value):
    """In a list of options a comma ends a value; two are one comma."""
    return str(value).replace(",", ",,")


def arguments(architecture, folder, kernel, initrd):
    """QEMU's command line for the machine; makes its firmware and disks in the folder."""
    processor = machine.PROCESSOR
    command = [architecture.emulator, "-accel", "tcg", "-machine", "q35", "-m", "768",
               "-cpu", f"{architecture.processor},vendor={processor.manufacturer},"
                       f"model-id={quoted(processor.model)}",
               "-nodefaults", "-no-user-config", "-no-reboot", "-display", "none",
               "-chardev", "stdio,id=console", "-device", "isa-serial,chardev=console",
               "-kernel", str(kernel), "-initrd", str(initrd),
               "-append", "console=ttyS0 quiet panic=-1 scsi_mod.scan=sync"]
    for structure in machine.write_firmware(folder):
        command += ["-smbios", f"file={quoted(structure)}"]
    frus, records = machine.write_bmc(folder)
    command += ["-device", f"ipmi-bmc-sim,id=bmc,frudatafile={quoted(frus)},"
                           f"fruareasize={machine.FRU_SIZE},sdrfile={quoted(records)},"
                           f"guid={machine.SYSTEM_UUID}",
                "-device", "isa-ipmi-kcs,bmc=bmc"]
    command += ["-device", "virtio-scsi-pci,id=scsi", "-device", "ahci,id=sata"]
    ports = 0
    for number, disk in enumerate(machine.DISKS):
        command += ["-drive", f"if=none,id=disk{number},file={quoted(blank(folder, number))},"
                              "format=raw"]
        device = {"driver": disk.driver, "drive": f"disk{number}", **disk.texts}
        if disk.driver == "scsi-hd":
            device |= {"bus": "scsi.0"}
        else:
            device |= {"bus": f"sata.{ports}"}
            ports += 1
        options = ",".join(f"{name}={quoted(value)}" for name, value in device.items()
                           if name != "driver")
        command += ["-device", f"{disk.driver},{options}"]
    command += ["-drive", f"if=none,id=answers,file={quoted(folder / 'answers')},format=raw",
                "-device", "virtio-blk-pci,drive=answers"]
    return command


def blank(folder, number, size=MEGABYTE):
    path = folder / f"disk-{number}"
    with path.open("wb") as file:
        file.truncate(size)
    return path


class Answers:
    """What the guest's commands wrote."""

    def __init__(self, path):
        self._texts = {}
        with tarfile.open(path) as archive:
            for member in archive:
                if member.isfile():
                    name = pathlib.PurePath(member.name).name
                    self._texts[name] = archive.extractfile(member).read()

    def text(self, name):
        return self._texts.get(name, b"").decode("utf-8", "surrogateescape")

    def json(self, name):
        # Not everybody escapes control characters.
        return json.loads(self.text(name), strict=False)

    def status(self, name):
        return int(self.text(f"{name}.run").split()[0])

    def seconds(self, name):
        return int(self.text(f"{name}.run").split()[1]) / 100


def ask(architecture, folder, kernel, initrd, timeout):
    """Boots the machine and waits until it has powered itself off; its answers."""
    with (folder / "answers").open("wb") as file:
        file.truncate(16 * MEGABYTE)
    log = folder / "console"
    with log.open("wb") as console:
        try:
            # Texts of the machine may hold any byte.
            command = [word.encode("utf-8", "surrogateescape")
                       for word in arguments(architecture, folder, kernel, initrd)]
            subprocess.run(command, stdin=subprocess.DEVNULL, stdout=console,
                           stderr=subprocess.STDOUT, timeout=timeout, check=True)
        except OSError as failure:
            raise Unavailable(f"{architecture.emulator}: {failure.strerror}") from failure
    try:
        return Answers(folder / "answers")
    except tarfile.TarError as failure:
        raise RuntimeError("the guest gave no answers") from failure
