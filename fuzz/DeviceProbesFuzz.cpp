// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "IdeProbe.h"
#include "MonitorProbe.h"
#include "PartInfo.h"
#include "ProcessorProbe.h"
#include "ScsiProbe.h"

using namespace QZ;

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

// What a part of the list shows of a text.
void checkCleaned(const std::string& text) {
    std::string cleaned;
    PartInfo(text, "", "", "", "").getManufacturer(cleaned);
    require(cleaned.size() <= text.size());
    require(cleaned.empty() || (cleaned.front() != ' ' && cleaned.back() != ' '));
    for (const char character : cleaned)
        require(character < 1 || character > 31);
}

}  // namespace

// The same bytes as each of the things that a device or a file may answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);

    char bytes[64] = {};
    const int count = decodeIdentify(text, bytes, sizeof bytes);
    require(count >= 0 && count <= static_cast<int>(sizeof bytes));

    std::string serial;
    if (decodeSerialNumberPage(data, size, serial)) {
        require(serial.size() <= 79);
        for (const char character : serial)
            require(character > 0);
    }

    CPUInfo processor;
    decodeCPUInfo(text, processor);
    require(processor.modelName.find('\n') == std::string::npos);

    MonitorInfo display;
    decodeXServerConfiguration(text, display);
    for (const std::string& value : {display.monitorVendor, display.monitorModel,
                                     display.videoCardVendor, display.videoCardModel})
        require(value.size() <= 255 && value.find("Generic") == std::string::npos);

    checkCleaned(text);
    return 0;
}
