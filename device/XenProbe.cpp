// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Tells whether the machine is an unprivileged guest of Xen, and which.

#include <cctype>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "FileContent.h"
#include "MachinePaths.h"
#include "Uuid.h"
#include "tavqz/Export.h"

namespace {

// The caller's buffer has 64 bytes; a UUID's text takes 37 of them.
const std::size_t uuidTextLength = 36;

// The kernel's line at that path, without its end; empty where there is none.
std::string _readLine(const std::string& path) {
    const std::size_t page = 4096;
    const std::string text = QZ::readWholeFile(path, page).text;
    return text.substr(0, text.find('\n'));
}

std::optional<std::vector<unsigned char>> _parseUuid(const std::string& text) {
    if (text.size() != uuidTextLength) {
        return std::nullopt;
    }
    std::string digits;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const auto character = static_cast<unsigned char>(text[i]);
        if (dash ? character != '-' : std::isxdigit(character) == 0) {
            return std::nullopt;
        }
        if (!dash) {
            digits += text[i];
        }
    }
    std::vector<unsigned char> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<unsigned char>(std::stoul(digits.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

// The guest's identity; empty outside of Xen, and in its first domain, which has the UUID of
// zeros and is the real machine.
std::string _guestUuid() {
    if (_readLine(QZ::MachinePaths::hypervisorType()) != "xen") {
        return "";
    }
    const auto bytes = _parseUuid(_readLine(QZ::MachinePaths::hypervisorUuid()));
    return bytes ? QZ::Uuid(*bytes).toString() : "";
}

}  // namespace

extern "C" {

// Not 0 in an unprivileged guest whose identity can be told.
TAVQZ_EXPORT int running_in_xen_domU() {
    try {
        return _guestUuid().empty() ? 0 : 1;
    } catch (...) {  // no memory: the caller is not prepared for more than a no
        return 0;
    }
}

// Puts the guest's UUID and a NUL into a buffer of 64 bytes and returns 0; else returns -1 and
// leaves the buffer alone.
TAVQZ_EXPORT int domU_get_uuid(char* buffer) {
    try {
        const std::string uuid = _guestUuid();
        if (uuid.empty()) {
            return -1;
        }
        std::memcpy(buffer, uuid.c_str(), uuid.size() + 1);
        return 0;
    } catch (...) {
        return -1;
    }
}
}
