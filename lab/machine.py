# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""What the virtual server is made of, and so what whoever asks it has to find."""
import dataclasses
import pathlib
import uuid

import bmc
import firmware


@dataclasses.dataclass(frozen=True)
class Part:
    """A part with its texts, as it is built and as it is to be seen."""
    tag: str
    manufacturer: str = ""
    model: str = ""
    serial: str = ""
    version: str = ""


@dataclasses.dataclass(frozen=True)
class Disk:
    """A disk to be plugged in, and the texts that it shows; None where it is not to be listed."""
    driver: str
    texts: dict
    seen: Part = None


FIRMWARE_PARTS = [
    Part("System", "Example Corp", "Example Server 2U -[EX2100-7A]-", "EXS2100417", "04"),
    Part("BaseBoard0", "Example Corp", "System Board 7A", "EXB7A00319", "Rev C"),
    Part("BaseBoard1", "Example Corp", "Riser Board 2", "EXR2000072", "Rev A"),
    Part("SystemEnclosure0", "Example Corp", "", "EXC8000417", "2U-8"),
] + [Part(f"Memory{i}", "Example Memory" if i < 4 else "Sample Modules", "", f"5A3C10{i}0")
     for i in range(8)]

# What the firmware has around the serial number of a part, for us to take off.
AROUND_SERIAL = {"Memory7": (" ", "\t")}

PROCESSOR = Part("Processor0", "GenuineIntel", "Example Processor 6316 @ 2.40GHz")

# As people write it; the firmware stores it with the bytes of its first three groups reversed.
SYSTEM_UUID = uuid.UUID("10325476-98ba-dcfe-8001-020304050611")
STORED_UUID = uuid.UUID(bytes=SYSTEM_UUID.bytes_le)

HOST_NAME = "lab-server"

# How many instances each class has.
CLASSES = {
    "TAVIRA_ComputerSystemDetails": 1,
    "TAVIRA_Lease": 1,
    "TAVIRA_Warranty": 1,
    "TAVIRA_SerialNumberInformation": 19,
    "TAVIRA_VigilComponentVPD": 0,
    "TAVIRA_VigilMachineLevelVPD": 0,
    "TAVIRA_VigilManagementProcessorVPD": 0,
    "TAVIRA_VigilPostBiosVPD": 0,
    "TAVIRA_VigilPresent": 0,
    "TAVIRA_VigilWatchdog": 0,
    "TAVIRA_VigilSystemState": 0,
}

# The monitor's model is the one before "Generic"; the end of its section is not the indented one.
X_SERVER = """\
Section "Monitor"
\tIdentifier "EX 17s"
\tModelName "Generic monitor"
\tEndSection
\tVendorName "Example Displays"
EndSection
Section "Device"
Identifier   "Example Graphics 8"
VendorName   "Unknown"
EndSection
"""
DISPLAY = [Part("Monitor0", '"Example Displays"', '"EX 17s"'),
           Part("VideoCard0", "", '"Example Graphics 8"')]

DISKS = [
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "EX600-15K", "serial": "6SJ0041A"},
         Part("SCSIDevice", "EXAMPLE", "EX600-15K", "6SJ0041A")),
    Disk("scsi-hd", {"vendor": "SAMPLE", "product": "Flash 16 letters", "serial": "  S<&\"'>]]> "},
         Part("SCSIDevice", "SAMPLE", "Flash 16 letters", "S<&\"'>]]>")),
    # The emulation has room for 36 characters.
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "Long", "serial": "0123456789" * 4},
         Part("SCSIDevice", "EXAMPLE", "Long", "012345678901234567890123456789012345")),
    # No page 80h, and a page with a character beyond ASCII.
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "No serial"}),
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "Latin-1", "serial": "caf\udce9"}),
    # Seen through the kernel's translation of ATA to SCSI.
    Disk("ide-hd", {"model": "EXAMPLE SSD 480 GB", "serial": "EXI40-00071"},
         Part("SCSIDevice", "ATA", "EXAMPLE SSD 480", "EXI40-00071")),
]


# Behind the BMC: the system with its chassis and first board, and the riser board.
FRU_SIZE = 1024
FRUS = [
    bmc.fru(FRU_SIZE, bmc.chassis_area(0x17, "2U-8", "EXC8000417"),
            bmc.board_area(15_000_000, "Example Corp", "System Board 7A", "EXB7A00319", "EXPN-7A"),
            bmc.product_area("Example Corp", "Example Server 2U", "EX2100-7A", "04", "EXS2100417",
                             "ASSET-17")),
    bmc.fru(FRU_SIZE, board=bmc.board_area(15_000_000, "Example Corp", "Riser Board 2",
                                           "EXR2000072", "EXPN-R2")),
]
SENSOR_DATA_RECORDS = [bmc.fru_locator(1, 0, "System", 0x07, 1),
                       bmc.fru_locator(2, 1, "Riser 2", 0x10, 1)]

# Which of its answers shows which of their texts.
FRU_TEXTS = [
    ("fru0", "Chassis Serial", "EXC8000417"),
    ("fru0", "Board Serial", "EXB7A00319"),
    ("fru0", "Product Name", "Example Server 2U"),
    ("fru0", "Product Part Number", "EX2100-7A"),
    ("fru0", "Product Serial", "EXS2100417"),
    ("fru0", "Product Asset Tag", "ASSET-17"),
    ("fru1", "Board Product", "Riser Board 2"),
    ("fru1", "Board Serial", "EXR2000072"),
]


def expected_parts():
    """All parts in the order of the list; the disks' order among themselves is the kernel's."""
    return FIRMWARE_PARTS + [PROCESSOR] + DISPLAY + [disk.seen for disk in DISKS if disk.seen]


def firmware_structures():
    """The SMBIOS structures, in the order of FIRMWARE_PARTS."""
    build = {"System": firmware.system, "BaseBoard": firmware.base_board,
             "SystemEnclosure": firmware.enclosure, "Memory": firmware.memory}
    # Handle 0 is of the BIOS structure, which the emulated firmware adds.
    for handle, part in enumerate(FIRMWARE_PARTS, 1):
        before, behind = AROUND_SERIAL.get(part.tag, ("", ""))
        part = dataclasses.replace(part, serial=before + part.serial + behind)
        yield build[part.tag.rstrip("0123456789")](handle, part, SYSTEM_UUID)


def write_firmware(folder: pathlib.Path):
    """Writes each structure to a file of its own; the paths."""
    paths = []
    for number, structure in enumerate(firmware_structures()):
        path = folder / f"smbios-{number:02}"
        path.write_bytes(structure)
        paths.append(path)
    return paths


def write_bmc(folder: pathlib.Path):
    """Writes the BMC's FRU data and sensor data records; the paths of both files."""
    frus, records = folder / "frus", folder / "sensor-data-records"
    frus.write_bytes(b"".join(FRUS))
    records.write_bytes(b"".join(SENSOR_DATA_RECORDS))
    return frus, records
