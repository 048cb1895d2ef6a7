// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SdrDecoder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void _require(bool promise) {
    if (!promise) {
        std::abort();
    }
}

}  // namespace

// Records one behind the other, each as long as its header says.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t headerLength = 5;
    const std::string input(reinterpret_cast<const char*>(data), size);
    std::vector<std::string> records;
    for (std::size_t at = 0; at < size;) {
        const std::size_t length =
            headerLength + (at + 4 < size ? static_cast<std::size_t>(data[at + 4]) : 0U);
        records.push_back(input.substr(at, length));
        at += length;
    }

    const QZ::SdrContents contents = QZ::decodeSdr(records);

    const std::size_t found =
        contents.fruLocators.size() + contents.controllers.size() + contents.sensors.size();
    _require(found <= records.size());
    for (const QZ::FruLocator& locator : contents.fruLocators) {
        // Five bits of length, in which UTF-8 takes the most room behind two digits of BCD plus.
        _require(locator.name.size() <= 62);
        _require(locator.lun < 4 && locator.channel < 16 && locator.address % 2 == 0);
    }
    // A record says the same whatever stands beside it.
    std::size_t alone = 0;
    for (const std::string& record : records) {
        const QZ::SdrContents one = QZ::decodeSdr({record});
        alone += one.fruLocators.size() + one.controllers.size() + one.sensors.size();
        _require(contents.isDamaged || !one.isDamaged);
    }
    _require(alone == found);
    return 0;
}
