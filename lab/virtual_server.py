# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""One run of the virtual server under QEMU's software emulation."""
import json
import pathlib
import socket
import subprocess
import tarfile
import threading

import machine
from debian import Unavailable

MEGABYTE = 1 << 20

# Of the console of a guest that failed.
LAST_LINES = 15


def quoted(value):
    """In a list of options a comma ends a value; two are one comma."""
    return str(value).replace(",", ",,")


def options_of(values):
    return ",".join(f"{name}={quoted(value)}" for name, value in values.items())


def arguments(architecture, folder, kernel, initrd, port):
    """QEMU's command line for the machine, whose CIM server is reached at the port of this one's
    loopback; makes its firmware and disks in the folder."""
    processor = machine.PROCESSOR
    command = [architecture.emulator, "-accel", "tcg", "-machine", "q35", "-m", "768",
               "-cpu", f"{architecture.processor},vendor={processor.manufacturer},"
                       f"model-id={quoted(processor.model)}",
               "-nodefaults", "-no-user-config", "-no-reboot", "-display", "none",
               "-chardev", "stdio,id=console", "-device", "isa-serial,chardev=console",
               "-kernel", str(kernel), "-initrd", str(initrd),
               # A loaded host is late with ticks: the kernel is not to take that for a broken timer.
               "-append", "console=ttyS0 quiet panic=-1 scsi_mod.scan=sync no_timer_check"]
    for structure in machine.write_firmware(folder):
        command += ["-smbios", f"file={quoted(structure)}"]
    command += ["-smbios", "type=0," + options_of(machine.BIOS)]
    frus, records = machine.write_bmc(folder)
    command += ["-device", f"ipmi-bmc-sim,id=bmc,frudatafile={quoted(frus)},"
                           f"fruareasize={machine.FRU_SIZE},sdrfile={quoted(records)},"
                           f"guid={machine.SYSTEM_UUID}," + options_of(machine.BMC),
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
        driver = device.pop("driver")
        command += ["-device", f"{driver},{options_of(device)}"]
    command += ["-drive", f"if=none,id=answers,file={quoted(folder / 'answers')},format=raw",
                "-device", "virtio-blk-pci,drive=answers"]
    command += ["-netdev", f"user,id=net,restrict=on,hostfwd=tcp:127.0.0.1:{port}-10.0.2.15:8080",
                "-device", "virtio-net-pci,netdev=net,romfile="]
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

    def lines(self, name):
        """The lines, without blanks around them."""
        return [line.strip() for line in self.text(name).splitlines()]

    def json(self, name):
        # Not everybody escapes control characters.
        return json.loads(self.text(name), strict=False)

    def status(self, name):
        return int(self.text(f"{name}.run").split()[0])

    def seconds(self, name):
        return int(self.text(f"{name}.run").split()[1]) / 100

    def ipmi_commands(self, name):
        """How many commands the BMC got."""
        return int(self.text(f"{name}.run").split()[2])


def free_port():
    """A port that nobody has now."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class VirtualServer:
    """The machine while it runs; in a "with" block, at whose end it is gone. Whatever it is waited
    for has to come before the time is up, in seconds from the start: then it is switched off."""

    def __init__(self, architecture, folder, kernel, initrd, timeout):
        self.port = free_port()
        self._folder = folder
        self._answers = folder / "answers"
        with self._answers.open("wb") as file:
            file.truncate(16 * MEGABYTE)
        # Texts of the machine may hold any byte.
        command = [word.encode("utf-8", "surrogateescape")
                   for word in arguments(architecture, folder, kernel, initrd, self.port)]
        try:
            self._emulator = subprocess.Popen(command, stdin=subprocess.PIPE,
                                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        except OSError as failure:
            raise Unavailable(f"{architecture.emulator}: {failure.strerror}") from failure
        self._console = (folder / "console").open("wb")
        self._limit = threading.Timer(timeout, self._emulator.kill)
        self._limit.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._limit.cancel()
        self._emulator.kill()
        self._emulator.communicate()
        self._console.close()

    def wait_until_serving(self):
        """Until the guest has asked everything that is asked inside, and answers others."""
        for line in self._emulator.stdout:
            self._console.write(line)
            self._console.flush()
            if line.startswith(b"guest: serving"):
                return
        raise RuntimeError("the guest did not serve: " + (self._said() or self._last_words()))

    def power_off(self):
        """Has it pack its answers and end; these."""
        rest, _ = self._emulator.communicate(b"done\n")
        self._console.write(rest)
        return self._collect()

    def _said(self):
        try:
            return self._collect().text("serve.err").strip()
        except RuntimeError:
            return ""

    def _last_words(self):
        console = (self._folder / "console").read_text(errors="replace").splitlines()
        return "\n".join(["it ended, or was too slow, with this on its console:",
                          *console[-LAST_LINES:]])

    def _collect(self):
        try:
            return Answers(self._answers)
        except tarfile.TarError as failure:
            raise RuntimeError("the guest gave no answers") from failure
