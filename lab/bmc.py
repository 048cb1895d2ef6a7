# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""What the simulated BMC holds: FRU inventory data (Platform Management FRU Information Storage
Definition 1.0) and sensor data records (IPMI 2.0, chapter 43)."""
import struct

# Language code: English.
ENGLISH = 25

AREA_VERSION = 1
END_OF_FIELDS = b"\xC1"


def _checksum(data):
    """The byte that makes the sum of all a multiple of 256."""
    return bytes([-sum(data) % 256])


def _field(text):
    """A type/length byte and a text of 8-bit characters."""
    data = text.encode("latin-1")
    return bytes([0xC0 | len(data)]) + data


def _area(start, texts):
    """An info area: its own start after version and length, its texts, padded to 8 bytes."""
    data = start + b"".join(map(_field, texts)) + END_OF_FIELDS
    length = -(-(len(data) + 3) // 8)
    data = bytes([AREA_VERSION, length]) + data
    data += b"\0" * (length * 8 - 1 - len(data))
    return data + _checksum(data)


def chassis_area(kind, part_number, serial):
    return _area(bytes([kind]), [part_number, serial])


def board_area(made, manufacturer, product, serial, part_number):
    """Made: minutes since 1996 began."""
    return _area(bytes([ENGLISH]) + struct.pack("<I", made)[:3],
                 [manufacturer, product, serial, part_number, ""])


def product_area(manufacturer, product, part_number, version, serial, asset_tag):
    return _area(bytes([ENGLISH]),
                 [manufacturer, product, part_number, version, serial, asset_tag, ""])


def fru(size, chassis=b"", board=b"", product=b""):
    """FRU inventory data: the common header with the places of its areas, and these."""
    offset = 1
    places = []
    for area in (chassis, board, product):
        places.append(offset if area else 0)
        offset += len(area) // 8
    header = bytes([AREA_VERSION, 0, *places, 0, 0])
    data = header + _checksum(header) + chassis + board + product
    return data.ljust(size, b"\xFF")


def sensor(record, sensor_type, number, reading_type, name):
    """A compact sensor record (43.2) of a sensor of the BMC's."""
    text = name.encode("ascii")
    body = bytes([0x20, 0, number, 7, 1, 0x67, 0x40, sensor_type, reading_type]).ljust(26, b"\0")
    body += bytes([0xC0 | len(text)]) + text
    return struct.pack("<HBBB", record, 0x51, 0x02, len(body)) + body


def event(kind, content):
    """The arguments of the raw command that adds a record to the event log (31.6). Number and time
    are the BMC's."""
    return " ".join(["0x0a 0x44 0 0", hex(kind), *map(hex, content.ljust(13, b"\xFF"))])


def system_event(sensor_type, number, reading_type, *data, generator=0x20):
    """Such a command for a system event (32.1); bit 7 of the reading type is its end."""
    return event(0x02, bytes([0, 0, 0, 0, generator, 0, 4, sensor_type, number, reading_type,
                              *data]))


def fru_locator(record, fru_id, name, entity, instance):
    """A FRU device locator record (43.8) of a logical FRU device behind the BMC."""
    text = name.encode("ascii")
    body = bytes([0x20, fru_id, 0x80, 0, 0, 0x10, 0, entity, instance, 0, 0xC0 | len(text)]) + text
    return struct.pack("<HBBB", record, 0x51, 0x11, len(body)) + body
