# SPDX-FileCopyrightText: 2026 the tavqz authors
# SPDX-License-Identifier: MIT
"""The kernel's initial file system: a cpio archive in the "newc" format."""
import os
import pathlib
import stat


class Archive:
    """Collects files and folders; archives may be joined to one by joining their bytes."""

    def __init__(self):
        self._entries = {}

    def add_folder(self, path):
        path = path.strip("/")
        if path and path not in self._entries:
            self.add_folder(os.path.dirname(path))
            self._entries[path] = (stat.S_IFDIR | 0o755, b"")

    def add(self, path, content, mode=0o644):
        self.add_folder(os.path.dirname(path))
        self._entries[path.strip("/")] = (stat.S_IFREG | mode, content)

    def add_file(self, path, source):
        source = pathlib.Path(source)
        self.add(path, source.read_bytes(), stat.S_IMODE(source.stat().st_mode))

    def add_tree(self, path, source):
        for file in sorted(pathlib.Path(source).rglob("*")):
            if file.is_file():
                self.add_file(f"{path}/{file.relative_to(source)}", file)

    def build(self):
        entries = list(self._entries.items()) + [("TRAILER!!!", (0, b""))]
        return b"".join(self._entry(number, path, mode, content)
                        for number, (path, (mode, content)) in enumerate(entries, 1))

    @staticmethod
    def _entry(number, path, mode, content):
        name = path.encode() + b"\0"
        fields = [number, mode, 0, 0, 1, 0, len(content), 0, 0, 0, 0, len(name), 0]
        header = b"070701" + b"".join(b"%08X" % field for field in fields) + name
        padded = header + b"\0" * (-len(header) % 4)
        return padded + content + b"\0" * (-len(content) % 4)
