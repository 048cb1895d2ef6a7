// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MonitorProbe.h"

#include "LineScan.h"
#include "MachinePaths.h"

namespace QZ {
namespace {

constexpr std::size_t _lookedAt = std::size_t{1} << 20;
constexpr std::size_t _longestValue = 255;

// An entry of a section, and the text that it gives.
struct Entry {
    const char* format;
    std::string MonitorInfo::*value;
};

// Formats start with white space: entries may be indented or not.
constexpr Entry _deviceEntries[] = {
    {"\tIdentifier ", &MonitorInfo::videoCardModel},
    {"\tVendorName ", &MonitorInfo::videoCardVendor},
};
constexpr Entry _monitorEntries[] = {
    {"\tIdentifier ", &MonitorInfo::monitorModel},
    {"\tModelName ", &MonitorInfo::monitorModel},
    {"\tVendorName ", &MonitorInfo::monitorVendor},
};

bool _contains(const std::string& text, const char* part) {
    return text.find(part) != std::string::npos;
}

bool _isName(const std::string& value) {
    return !_contains(value, "Generic") && !_contains(value, "Probed") &&
           !_contains(value, "Unknown");
}

// Takes the lines of a section up to its end, which is not indented.
template <std::size_t Count>
void _takeSection(const std::string& text, std::size_t& offset, const Entry (&entries)[Count],
                  MonitorInfo& info) {
    std::string line;
    std::string value;
    while (takeLine(text, offset, line) && line != "EndSection") {
        for (const Entry& entry : entries) {
            if (scanValue(line, entry.format, value)) {
                // All of it is tested, also what is cut off.
                if (_isName(value)) {
                    info.*entry.value = value.substr(0, _longestValue);
                }
            }
        }
    }
}

}  // namespace

void decodeXServerConfiguration(const std::string& text, MonitorInfo& info) {
    std::string line;
    for (std::size_t offset = 0; takeLine(text, offset, line);) {
        if (_contains(line, "Section \"Device\"")) {
            _takeSection(text, offset, _deviceEntries, info);
        } else if (_contains(line, "Section \"Monitor\"")) {
            _takeSection(text, offset, _monitorEntries, info);
        }
    }
}

int getMonitorInfo(MonitorInfo& info) {
    const FileContent file = readLines(MachinePaths::xServerConfiguration(), _lookedAt);
    if (file.state != FileContent::Read) {
        return 0;
    }
    decodeXServerConfiguration(file.text, info);
    return 1;
}

}  // namespace QZ
