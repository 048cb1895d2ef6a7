# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""SMBIOS structures (DMTF DSP0134): the bytes that firmware has of a part."""
import struct


def structure(kind, handle, fields):
    """A structure of a formatted area, whose texts become numbers, and its strings."""
    formatted = b""
    strings = []
    for field in fields:
        if isinstance(field, str):
            if field:
                strings.append(field.encode() + b"\0")
            field = bytes([len(strings) if field else 0])
        formatted += field
    header = struct.pack("<BBH", kind, 4 + len(formatted), handle)
    return header + formatted + (b"".join(strings) or b"\0") + b"\0"


def system(handle, part, system_uuid):
    """7.2; the first three fields of a UUID stand with their low bytes first."""
    return structure(1, handle, [part.manufacturer, part.model, part.version, part.serial,
                                 system_uuid.bytes_le, b"\x06", "", ""])


def base_board(handle, part, _):
    """7.3"""
    return structure(2, handle, [part.manufacturer, part.model, part.version, part.serial, "",
                                 b"\x09", "", struct.pack("<HBB", 0xFFFF, 0x0A, 0)])


def enclosure(handle, part, _):
    """7.4: a rack mount chassis in a safe state, two units high."""
    return structure(3, handle, [part.manufacturer, b"\x17", part.version, part.serial, "",
                                 struct.pack("<4BIBBBB", 3, 3, 3, 3, 0, 2, 0, 0, 0), ""])


def memory(handle, part, _):
    """7.18: a DDR4 DIMM of 16 GiB."""
    slot = "DIMM " + part.tag.removeprefix("Memory")
    return structure(17, handle, [struct.pack("<HHHHHBB", 0xFFFE, 0xFFFE, 72, 64, 0x4000, 9, 0),
                                  slot, "", struct.pack("<BHH", 0x1A, 0x2080, 3200),
                                  part.manufacturer, part.serial, "", "EM16G-3200R",
                                  struct.pack("<BIHHHH", 2, 0, 3200, 1200, 1200, 1200)])
