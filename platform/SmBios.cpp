// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SmBios.h"

#include <cstring>
#include <utility>

#include "Error.h"
#include "FileContent.h"
#include "MachinePaths.h"
#include "SmBiosDecoder.h"

namespace QZ {
namespace {

// Entry points of version 2 announce at most 64 KiB, and a server of version 3 with hundreds of
// memory devices stays within that too. What is far larger is no firmware's.
constexpr std::size_t sizeLimit = std::size_t{1} << 20;

// Empty when the file was read.
std::string _whyUnread(const std::string& path, const FileContent& content) {
    switch (content.state) {
        case FileContent::Read:
            return {};
        case FileContent::Missing:
        case FileContent::Unreadable:
            return "Cannot read " + path + ": " + systemErrorText(content.error) + ".";
        case FileContent::NotRegular:
            return "Cannot read " + path + ": it is not a regular file.";
        case FileContent::TooLarge:
            break;
    }
    return "Cannot read " + path + ": it is larger than " + std::to_string(sizeLimit) + " bytes.";
}

SmBios::Contents _readMachine() {
    const std::string tablePath = MachinePaths::smbiosTable();
    FileContent table = readWholeFile(tablePath, sizeLimit);
    if (table.state != FileContent::Read) {
        SmBios::Contents failed;
        failed.reason = _whyUnread(tablePath, table);
        return failed;
    }
    const std::string entryPath = MachinePaths::smbiosEntryPoint();
    const FileContent entryPoint = readWholeFile(entryPath, sizeLimit);
    SmBios::Contents contents = decodeSmBios(entryPoint.text, std::move(table.text));
    if (entryPoint.state != FileContent::Read) {
        contents.reason = _whyUnread(entryPath, entryPoint) + " " + contents.reason;
    }
    return contents;
}

}  // namespace

SmBios::SmBios() : _contents(_readMachine()) {}

SmBios::Table::Table(std::shared_ptr<const std::string> bytes, std::size_t offset,
                     std::size_t stringsEnd)
    : _bytes(std::move(bytes)),
      _offset(offset),
      _stringsEnd(stringsEnd),
      _length(static_cast<unsigned char>((*_bytes)[offset + 1])) {}

unsigned short SmBios::Table::getHandle() const {
    return static_cast<unsigned short>(getByte(2) | getByte(3) << 8);
}

unsigned char SmBios::Table::getByte(std::size_t offset) const {
    return offset < _length ? static_cast<unsigned char>((*_bytes)[_offset + offset])
                            : static_cast<unsigned char>(0);
}

const char* SmBios::Table::getString(unsigned index) const {
    if (index == 0) {
        return nullptr;
    }
    for (std::size_t at = _offset + _length; at < _stringsEnd;) {
        const char* text = _bytes->c_str() + at;
        // An empty string is the end of the set.
        if (*text == '\0') {
            return nullptr;
        }
        if (--index == 0) {
            return text;
        }
        at += std::strlen(text) + 1;
    }
    return nullptr;
}

}  // namespace QZ
