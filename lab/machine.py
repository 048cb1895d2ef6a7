# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""What the virtual server is made of, and so what whoever asks it has to find."""
import dataclasses
import pathlib
import shlex
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

BIOS = {"vendor": "Example Corp", "version": "EX2U-2.14", "date": "03/02/2025", "release": "2.14"}

# The second number is in BCD.
BMC = {"fwrev1": 2, "fwrev2": 0x14}

HOST_NAME = "lab-server"

# How many instances each class has, in the order in which they are asked for: of those that ask the
# BMC, the units first.
CLASSES = {
    "TAVIRA_ComputerSystemDetails": 1,
    "TAVIRA_PhysicalDiskDrive": 2,
    "TAVIRA_RAIDController": 0,
    "TAVIRA_FRU": 4,
    "TAVIRA_Lease": 1,
    "TAVIRA_Warranty": 1,
    "TAVIRA_SerialNumberInformation": 21,
    "TAVIRA_VigilComponentVPD": 2,
    "TAVIRA_VigilMachineLevelVPD": 1,
    "TAVIRA_VigilManagementProcessorVPD": 1,
    "TAVIRA_VigilPostBiosVPD": 1,
    "TAVIRA_VigilPresent": 1,
    "TAVIRA_VigilWatchdog": 1,
    "TAVIRA_VigilSystemState": 1,
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
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "Short", "serial": "7"},
         Part("SCSIDevice", "EXAMPLE", "Short", "7")),
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "Empty", "serial": ""},
         Part("SCSIDevice", "EXAMPLE", "Empty")),
    # No page 80h, and one with a character beyond ASCII.
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "No serial"}),
    Disk("scsi-hd", {"vendor": "EXAMPLE", "product": "Latin-1", "serial": "caf\udce9"}),
    # Seen through the kernel's translation of ATA to SCSI.
    Disk("ide-hd", {"model": "EXAMPLE SSD 480 GB", "serial": "EXI40-00071"},
         Part("SCSIDevice", "ATA", "EXAMPLE SSD 480", "EXI40-00071")),
]


# The system keeps two of them as one, in an array of its own.
ARRAY_MODELS = ["EX600-15K", "Long"]

# A unit that somebody recorded. It is a disk of the array under another name.
RECORDED_UNIT = {"FRUNumber": "6SJ0041A", "IdentifyingNumber": "EX600-15K", "Vendor": "EXAMPLE",
                 "Name": "Disk in bay 1", "Description": "replaced in May"}

# All that is told of units, by its source and its FRU number: what is kept of them, and what hides
# the others under the same number. The module's sources come in this order; a recorded unit hides
# what is found of it, and what the BMC's FRU records tell hides what its components tell.
UNITS = [("GETFRU", "6SJ0041A", "shown"),
         ("IPMI", "EX2100-7A", "shown"),
         ("IPMI", "EXPN-R2", "shown"),
         ("MPA", "EX2100-7A", "hidden by IPMI: Example Server 2U"),
         ("MPA", "EXPN-R2", "hidden by IPMI: Riser Board 2"),
         ("RAID", "6SJ0041A", "hidden by GETFRU: Disk in bay 1"),
         ("RAID", "012345678901234567890123456789012345", "shown")]


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
                       bmc.fru_locator(2, 1, "Riser 2", 0x10, 1),
                       bmc.sensor(3, 0x08, 0x41, 0x6F, "PSU 1"),
                       bmc.sensor(4, 0x15, 0x60, 0x03, "Riser Fault"),
                       bmc.sensor(5, 0x07, 0x90, 0x6F, "CPU 1")]

# What has happened to it, put into its event log before anybody asks: with and without a name of
# the sensor, beginnings and ends, what the standard's tables do not name, a maker's own records.
EVENTS = [
    bmc.system_event(0x08, 0x41, 0x6F, 0x03),
    bmc.system_event(0x08, 0x41, 0xEF, 0x03),
    bmc.system_event(0x15, 0x60, 0x03, 0x01),
    bmc.system_event(0x15, 0x60, 0x03, 0x00),
    bmc.system_event(0x07, 0x90, 0x6F, 0x01),
    bmc.system_event(0x0C, 0x90, 0x6F, 0x00, generator=0x33),
    bmc.system_event(0x09, 0x42, 0x6F, 0x03),
    bmc.system_event(0x09, 0x42, 0x6F, 0x04),
    bmc.system_event(0x25, 0x61, 0x6F, 0x00),
    bmc.system_event(0x25, 0x61, 0x6F, 0x01),
    bmc.system_event(0xC5, 0x62, 0x70, 0x01),
    bmc.event(0xC0, b"\0\0\0\0\x39\x30\0maker"),
    bmc.event(0xFB, b"thirteen byte"),
]

# What ipmitool calls some of them, and the key and the text that we have for it.
EVENT_NAMES = {
    "Initiated by hard reset": ("IPMI_EVENT_STC_BOOT_INI_RST", "Initiated by hard reset"),
    "Initiated by warm reset": ("IPMI_EVENT_STC_BOOT_INI_WARM", "Initiated by warm reset"),
    "Unknown Progress": ("IPMI_EVENT_STC_SFWPROG_STRT", "System firmware progress"),
    "Power Supply AC lost": ("IPMI_EVENT_STC_PWRSUP_ACLOST", "Power supply input lost"),
    "State Asserted": ("IPMI_EVENT_ERC_STATE_ASRT", "State asserted"),
    "State Deasserted": ("IPMI_EVENT_ERC_STATE_DASRT", "State deasserted"),
    "Thermal Trip": ("IPMI_EVENT_STC_PROC_THTRP", "Thermal trip"),
    "Correctable ECC": ("IPMI_EVENT_STC_MEM_CERR", "Correctable ECC error"),
    "Interlock power down": ("IPMI_EVENT_STC_PWRUNIT_ILOCKDWN", "Interlock power down"),
    "AC lost": ("IPMI_EVENT_STC_PWRUNIT_ACLOST", "AC lost"),
    "Absent": ("IPMI_EVENT_STC_ENT_ABSENT", "Entity absent"),
}

# What is done to the BMC before anybody asks it: the arguments of raw commands. It got a restart, a
# progress of the firmware and another restart into its event log (IPMI 2.0, 31.6), and the operating
# system set (27.6) and started (27.5) the watchdog, with 300 s before a reset: the emulation runs
# none that does nothing, and tells that one runs only where the bit of "do not stop" was set.
BMC_STATE = [
    "0x0a 0x44 0 0 2 0 0 0 0 0x20 0 4 0x1d 1 0x6f 1 0xff 0xff",
    "0x0a 0x44 0 0 2 0 0 0 0 0x20 0 4 0x0f 2 0x6f 2 1 0xff",
    "0x0a 0x44 0 0 2 0 0 0 0 0x20 0 4 0x1d 1 0x6f 2 0xff 0xff",
    "0x06 0x24 0x44 1 0 0x10 0xb8 0x0b",
    "0x06 0x22",
]


@dataclasses.dataclass(frozen=True)
class Value:
    """A property's value as it is to be seen, which instance of the class has it, and what another
    tool says: the name of its answer and a pattern, whose one group is the same value there."""
    class_name: str
    property: str
    expected: str
    peer: tuple = None
    instance: int = 0


# What the service-processor classes and the units say, and who else says it.
CONTROLLER_VALUES = [
    Value("TAVIRA_VigilPresent", "DeviceID", "0"),
    Value("TAVIRA_VigilPresent", "SystemName", HOST_NAME),
    Value("TAVIRA_VigilManagementProcessorVPD", "Description", "IPMI"),
    Value("TAVIRA_VigilManagementProcessorVPD", "Revision", "2.14",
          ("mc", r"Firmware Revision +: (.+)")),
    Value("TAVIRA_VigilMachineLevelVPD", "UUID", SYSTEM_UUID.hex.upper()),
    Value("TAVIRA_VigilMachineLevelVPD", "MachineType", "EX21"),
    Value("TAVIRA_VigilMachineLevelVPD", "MachineModel", "007"),
    Value("TAVIRA_VigilMachineLevelVPD", "SerialNumber", "EXS2100",
          ("dmidecode", r"Serial Number: (EXS2100)417")),
    Value("TAVIRA_VigilPostBiosVPD", "BuildLevel", BIOS["version"],
          ("dmidecode", r"BIOS Information\n(?:\t.*\n)*?\tVersion: (.+)")),
    Value("TAVIRA_VigilPostBiosVPD", "BuildDate", BIOS["date"],
          ("dmidecode", r"Release Date: (.+)")),
    Value("TAVIRA_VigilPostBiosVPD", "Version", "214"),
    Value("TAVIRA_VigilSystemState", "PowerOnHours", "0"),
    Value("TAVIRA_VigilSystemState", "CurrentState", "5"),
    Value("TAVIRA_VigilWatchdog", "DeviceID", "Watchdog2"),
    Value("TAVIRA_VigilWatchdog", "TimeoutInterval", "300",
          ("watchdog", r"Initial Countdown: +(\d+)\.0 sec")),
    Value("TAVIRA_VigilComponentVPD", "FieldReplaceableUnitNumber", "EX2100-7A",
          ("fru0", r"Product Part Number +: (.+)")),
    Value("TAVIRA_VigilComponentVPD", "ManufacturerId", "Example Corp",
          ("fru0", r"Product Manufacturer +: (.+)")),
    Value("TAVIRA_VigilComponentVPD", "ModelNumber", "EX2100-7A",
          ("fru0", r"Product Part Number +: (.+)")),
    Value("TAVIRA_VigilComponentVPD", "FieldReplaceableUnitNumber", "EXPN-R2",
          ("fru1", r"Board Part Number +: (.+)"), 1),
    Value("TAVIRA_VigilComponentVPD", "ManufacturerId", "Example Corp",
          ("fru1", r"Board Mfg +: (.+)"), 1),
    Value("TAVIRA_FRU", "FRUNumber", "EX2100-7A", ("fru0", r"Product Part Number +: (.+)"), 1),
    Value("TAVIRA_FRU", "IdentifyingNumber", "EX2100-7A", ("fru0", r"Product Part Number +: (.+)"),
          1),
    Value("TAVIRA_FRU", "Vendor", "Example Corp", ("fru0", r"Product Manufacturer +: (.+)"), 1),
    Value("TAVIRA_FRU", "Name", "Example Server 2U", ("fru0", r"Product Name +: (.+)"), 1),
    Value("TAVIRA_FRU", "Description", "System", ("locators", r"(System) "), 1),
    Value("TAVIRA_FRU", "Name", "Riser Board 2", ("fru1", r"Board Product +: (.+)"), 2),
    Value("TAVIRA_FRU", "Description", "Riser 2", ("locators", r"(Riser 2) "), 2),
]


def preparation():
    """What is done before anybody asks, as a shell's commands: to the BMC, the array, the recorded
    unit."""
    lines = [f"ipmitool -I open raw {command}" for command in BMC_STATE + EVENTS]
    named = "/dev/$(cd /sys/block && grep -l '^{} *$' sd*/device/model | cut -d/ -f1)"
    members = " ".join(map(named.format, ARRAY_MODELS))
    lines.append(f"mdadm --create /dev/md0 --run --metadata=1.0 --level=1 --assume-clean "
                 f"--raid-devices={len(ARRAY_MODELS)} {members}")
    texts = [f"{name}={text}" for name, text in RECORDED_UNIT.items()]
    lines.append(shlex.join(["tavqz", "fru", "add", *texts]))
    return "".join(f"{line}\n" for line in lines)


def expected_parts():
    """All parts in the order of the list; the disks' order among themselves is the kernel's."""
    return FIRMWARE_PARTS + [PROCESSOR] + DISPLAY + [disk.seen for disk in DISKS if disk.seen]


def without_display(found):
    return [part for part in found if part not in DISPLAY]


def without_firmware(found):
    """A system is listed all the same."""
    return [Part("System")] + [part for part in found if part not in FIRMWARE_PARTS]


def secrets():
    """What must not be read in a record of the machine that is given away; those that a shell takes
    as they are."""
    serials = [part.serial for part in expected_parts()]
    return [serial for serial in serials if len(serial) > 2 and serial.replace("-", "").isalnum()]


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
