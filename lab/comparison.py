# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""What the guest answered against what the machine was built with, as a table."""
import dataclasses
import datetime
import re
import uuid

import machine
from machine import Part

SAME = "same"
UNKNOWN = "-"


@dataclasses.dataclass(frozen=True)
class Row:
    name: str
    expected: str
    cells: tuple
    agrees: bool


def tavqz_parts(instances):
    """The parts of the serial-number class, in the order in which they were listed."""
    found = []
    for instance in instances:
        texts = instance["properties"]
        found.append(Part(texts["Tag"], texts["Manufacturer"], texts["Model"],
                          texts["SerialNumber"], texts["Version"]))
    return found


def dmidecode_parts(text):
    """The parts that dmidecode prints a block for; a text that it does not give is None."""
    found = []
    for block in text.split("\n\n"):
        texts = dict(re.findall(r"^\t([^:\t]+): (.*?) *$", block, re.MULTILINE))
        if "Serial Number" in texts and "Manufacturer" in texts:
            found.append(Part("", texts["Manufacturer"], texts.get("Product Name"),
                              texts["Serial Number"], texts.get("Version")))
    return found


def lshw_parts(node):
    """The nodes of lshw's tree that have a serial number."""
    found = []
    if "serial" in node:
        # Of memory and disks it knows another product and version: part number and revision.
        is_memory = node["class"] == "memory"
        is_disk = node["class"] == "disk"
        found.append(Part("", node.get("vendor"), None if is_memory else node.get("product"),
                          node["serial"], None if is_memory or is_disk else node.get("version")))
    for child in node.get("children", []):
        found += lshw_parts(child)
    return found


def texts_of(part):
    return [part.manufacturer, part.model, part.serial, part.version]


def peer_cell(part, peer, knows):
    """What a peer says of a part that it knows by its serial number: of those texts that it gives
    and that the part has. It may not know a part of a kind that it is said to know."""
    for known in peer:
        # Some print a control character as a dot.
        if part.serial and known.serial.strip(" .\t") == part.serial:
            other = [theirs for ours, theirs in zip(texts_of(part), texts_of(known))
                     if ours and theirs is not None and theirs.strip(" .\t") != ours]
            return ", ".join(other) or SAME
    is_known = part.serial and part.tag.rstrip("0123456789") in knows
    return "missing" if is_known else UNKNOWN


def part_rows(found, peers):
    """A row for each part that was built, and one for each that was not and is listed. Of each
    peer: the parts that it found and the kinds that it knows."""
    rest = list(found)
    for part in machine.expected_parts():
        # Disks are told apart by their serial numbers: their order is the kernel's.
        same = [other for other in rest
                if (other.serial == part.serial and other.tag.startswith(part.tag)
                    if part.tag == "SCSIDevice" else other.tag == part.tag)]
        seen = same[0] if same else None
        if seen:
            rest.remove(seen)
        cell = SAME if seen and texts_of(seen) == texts_of(part) else (
            ", ".join(texts_of(seen)) if seen else "missing")
        cells = (cell, *(peer_cell(part, *peer) for peer in peers))
        yield Row(part.tag, ", ".join(text for text in texts_of(part) if text), cells,
                  cell == SAME and all(other in (SAME, UNKNOWN) for other in cells[1:]))
    for other in rest:
        cells = (", ".join(texts_of(other)), *[UNKNOWN] * len(peers))
        yield Row(other.tag, "nothing", cells, False)


def same_row(name, expected, instances):
    """The same parts, asked in another way."""
    agrees = tavqz_parts(instances) == expected
    return value_row(name, f"{len(expected)} parts",
                     f"{len(expected)} parts" if agrees else "others", None, None)


def sanitized_row(found, instances):
    """The same parts with other serial numbers, but for those that are too short to tell anything."""
    told = [part for part in found if sum(map(str.isalnum, part.serial)) > 3]
    others = {part.tag: part for part in tavqz_parts(instances)}
    kept = [part.tag for part in told
            if part.tag not in others or others[part.tag].serial in ("", part.serial)
            or others[part.tag].manufacturer != part.manufacturer]
    expected = f"{len(told)} of {len(found)} with another serial number"
    agrees = not kept and len(others) == len(found)
    return value_row("sanitized", expected, expected if agrees else f"not {', '.join(kept)}", None,
                     None)


def order_row(found):
    """Parts are listed in a fixed order, numbered without gaps."""
    disks = sum(disk.seen is not None for disk in machine.DISKS)
    tags = [part.tag for part in machine.expected_parts() if part.tag != "SCSIDevice"]
    tags += [f"SCSIDevice{number}" for number in range(disks)]
    agrees = [part.tag for part in found] == tags
    return Row("order", f"{len(tags)} parts in theirs",
               (SAME if agrees else " ".join(part.tag for part in found), UNKNOWN, UNKNOWN), agrees)


def value_row(name, expected, *seen):
    """A value as each one sees it; None where one does not tell, which all may but the first."""
    cells = tuple(UNKNOWN if value is None else SAME if value == expected else value
                  for value in seen)
    return Row(name, expected, cells,
               cells[0] == SAME and all(cell in (SAME, UNKNOWN) for cell in cells))


def uuid_in(text):
    """As the firmware stores it, of the one that a peer prints; None without one."""
    printed = re.search(r"uuid\W+([0-9a-f-]{36})", text, re.IGNORECASE)
    return str(uuid.UUID(bytes=uuid.UUID(printed.group(1)).bytes_le)) if printed else None


def controller_row(value, served, answers):
    """A property of a class that was served, beside what a tool inside says of it."""
    instances = served[value.class_name]
    seen = (str(instances[value.instance]["properties"][value.property])
            if value.instance < len(instances) else "no instance")
    told = None
    if value.peer:
        answer, pattern = value.peer
        found = re.search(pattern, answers.text(answer))
        told = found.group(1).strip() if found else "nothing"
    return value_row(f"{value.class_name.removeprefix('TAVIRA_')}.{value.property}",
                     value.expected, seen, told)


def served_seconds(log, class_name):
    """How long the server took for each enumeration of the class, by its log."""
    pattern = rf'"EnumerateInstances {class_name}" 200 \d+ bytes ([\d.]+) ms'
    return [float(milliseconds) / 1000 for milliseconds in re.findall(pattern, log)]


def limit_row(name, limit, measured, unit):
    """A figure that may not be above its limit."""
    return Row(name, f"{limit:.3g} {unit}", (f"{measured:.3g} {unit}",), measured <= limit)


@dataclasses.dataclass(frozen=True)
class Event:
    """A record of the event log: time to the second, sensor, what happened, as ipmitool calls it, and
    whether that began or ended."""
    number: int
    time: str
    sensor: str
    what: str
    state: str

    def __str__(self):
        return " ".join(filter(None, [self.time, self.sensor, self.what, self.state]))


def ipmitool_events(text):
    """The lines of its extended list."""
    for line in text.splitlines():
        cells = [cell.strip() for cell in line.split("|")]
        is_timed = re.fullmatch(r"\d\d/\d\d/\d\d", cells[1])
        has_state = cells[-1] in ("Asserted", "Deasserted")
        yield Event(int(cells[0], 16), f"{cells[1]} {cells[2]}" if is_timed else "",
                    cells[3 if is_timed else 1], cells[-2] if has_state else "",
                    cells[-1] if has_state else "")


def tavqz_event(event):
    """As ipmitool writes it, but for the sensor's type in front of its name or number and for what
    happened, which each says in its own words."""
    when = event["time"] and datetime.datetime.fromisoformat(event["time"])
    sensor = event["sensor"] or f"#0x{event['sensorNumber'] or 0:02x}"
    return Event(event["record"],
                 when.astimezone(datetime.timezone.utc).strftime("%m/%d/%y %X UTC") if when else "",
                 sensor if event["type"] == 2 else f"OEM record {event['type']:02x}", "",
                 {True: "Asserted", False: "Deasserted", None: ""}[event["asserted"]])


def event_rows(listed, events, their_bytes, our_bytes):
    """What ipmitool and tavqz say of the event log, a row for each record: when, where and whether;
    what, as a key and its text; and the bytes, which both also write alone."""
    theirs, ours = list(ipmitool_events(listed)), list(map(tavqz_event, events))
    yield value_row("records", str(len(theirs)), str(len(ours)), str(len(their_bytes)),
                    str(len(our_bytes)))
    for their, our, event, *both in zip(theirs, ours, events, their_bytes, our_bytes):
        is_same = their.sensor.endswith(our.sensor) and their == dataclasses.replace(
            our, sensor=their.sensor, what=their.what)
        what = (event["key"], event["text"])
        is_known = what == machine.EVENT_NAMES.get(their.what, (None, None))
        is_written = both == [event["bytes"]] * 2
        yield Row(f"record {their.number}", str(their),
                  (SAME if is_same else str(our), ": ".join(filter(None, what)) or UNKNOWN,
                   SAME if is_written else event["bytes"]), is_same and is_known and is_written)


def unit_rows(served):
    """A row for each unit that anybody tells of: whether it is listed, or what is in its place."""
    listed = [unit["properties"] for unit in served["TAVIRA_FRU"]]
    told = [(source, number) for source, number, _ in machine.UNITS]
    for source, name, key in (("MPA", "TAVIRA_VigilComponentVPD", "FieldReplaceableUnitNumber"),
                              ("RAID", "TAVIRA_PhysicalDiskDrive", "FRU"),
                              ("RAID", "TAVIRA_RAIDController", "FRU")):
        told += [(source, unit["properties"][key]) for unit in served[name]]
    told += [(unit["ElementName"], unit["FRUNumber"]) for unit in listed]
    rows = []
    for source, number in dict.fromkeys(told):
        expected = [fate for *unit, fate in machine.UNITS if unit == [source, number]]
        same = [unit for unit in listed if unit["FRUNumber"] == number]
        fate = "missing"
        if any(unit["ElementName"] == source for unit in same):
            fate = "shown"
        elif same:
            fate = f"hidden by {same[0]['ElementName']}: {same[0]['Name']}"
        rows.append(value_row(f"{source} {number}", expected[0] if expected else UNKNOWN, fate))
    return rows


def layout(headings, rows):
    """The rows as lines, columns aligned; one that disagrees is marked."""
    lines = [(*headings, "")]
    lines += [(row.name, row.expected, *row.cells, "" if row.agrees else "WRONG") for row in rows]
    lines = [[printable(cell) for cell in line] for line in lines]
    widths = [max(map(len, column)) for column in zip(*lines)]
    return "\n".join("  ".join(map(str.ljust, line, widths)).rstrip() for line in lines)


def printable(text):
    return "".join(c if c.isprintable() else f"\\x{ord(c):02x}" for c in text)
