#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""asset.py [LIBRARY]: notes when this machine was inventoried, and prints what is known of it.

Shows the flat interface (include/tavqz/AssetFlat.h) from Python; LIBRARY is where the loader finds
the module, libAssetIDProvider.so unless said.
"""
import ctypes
import datetime
import sys


class Assets:
    """The module's functions by the names of their fields."""

    # The module asks for no size: longer than this no text may be. People do not enter more than
    # 1024 bytes.
    ROOM = 64 * 1024

    def __init__(self, library):
        self.module = ctypes.CDLL(library)
        self.module.AssetIDinit()

    def text(self, field, *index):
        """A text or a date; that of an index for parts and personalised pairs."""
        room = ctypes.create_string_buffer(self.ROOM)
        getattr(self.module, "get" + field)(room, *index)
        return room.value.decode("utf-8", "replace")

    def number(self, field):
        get = getattr(self.module, "get" + field)
        get.restype = ctypes.c_uint
        return get()

    def set_text(self, field, text, *index):
        getattr(self.module, "set" + field)(text.encode(), *index)

    def set_number(self, field, value):
        getattr(self.module, "set" + field)(ctypes.c_uint(value))

    def parts(self):
        """(tag, manufacturer, model, serial number, version) of each part."""
        fields = ("Tag", "Manufacturer", "Model", "SerialNumber", "Version")
        for index in range(self.module.getPICount()):
            yield tuple(self.text("PI" + field, index) for field in fields)


def as_day(date):
    """The day of a CIM datetime text, None where it is not set."""
    return None if date.startswith("0000") else datetime.date.fromisoformat(
        f"{date[:4]}-{date[4:6]}-{date[6:8]}")


def main():
    assets = Assets(sys.argv[1] if len(sys.argv) > 1 else "libAssetIDProvider.so")

    assets.set_text("CSDetailsOwnerName", "Renée Müller")
    assets.set_text("CSDetailsLastInventoried", "2026-11-21")
    assets.set_number("LeaseBuyout", 1200)
    assets.set_text("LeaseEndDate", "2028-01-31T00:00:00Z")

    print("name:", assets.text("CSDetailsSystemName"))
    print("serial number:", assets.text("CSDetailsSystemSerialNumber"))
    print("owner:", assets.text("CSDetailsOwnerName"))
    print("inventoried:", as_day(assets.text("CSDetailsLastInventoried")))
    print("lease ends:", as_day(assets.text("LeaseEndDate")), "for", assets.number("LeaseBuyout"))
    print("warranty ends:", as_day(assets.text("WarrantyEndDate")))
    for tag, manufacturer, model, serial, _ in assets.parts():
        print(f"{tag}:", manufacturer, "/", model, "/", serial or "no serial number")


if __name__ == "__main__":
    main()
