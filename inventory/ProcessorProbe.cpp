// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProcessorProbe.h"

#include "LineScan.h"
#include "MachinePaths.h"

namespace QZ {
namespace {

// A processor takes about 1.5 KiB.
constexpr std::size_t _lookedAt = std::size_t{16} << 20;

// Scans the line that starts with the name as written here: the format's own blank would take any
// white space, and none.
bool _scan(const std::string& line, const char* name, const char* format, std::string& value) {
    return line.rfind(name, 0) == 0 && scanValue(line, format, value);
}

}  // namespace

void decodeCPUInfo(const std::string& text, CPUInfo& info) {
    std::string line;
    for (std::size_t offset = 0; takeLine(text, offset, line);) {
        (void)(_scan(line, "vendor_id", "vendor_id : ", info.vendor) ||
               _scan(line, "model name", "model name : ", info.modelName));
    }
}

int getCPUInfo(CPUInfo& info) {
    const FileContent file = readLines(MachinePaths::cpuInfo(), _lookedAt);
    if (file.state != FileContent::Read) {
        return 0;
    }
    decodeCPUInfo(file.text, info);
    return 1;
}

}  // namespace QZ
