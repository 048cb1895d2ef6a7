// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SelBuilder.h"

namespace {

constexpr std::size_t RecordLength = 16;

std::string littleEndian(std::uint32_t value, unsigned bytes) {
    std::string text;
    for (unsigned i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> 8U * i & 0xFFU);
    return text;
}

}  // namespace

std::string selRecord(const TestEvent& event) {
    constexpr unsigned Version2 = 4;
    const unsigned direction = event.isDeassertion ? 0x80U : 0U;
    return otherSelRecord(event.record, 0x02,
                          littleEndian(event.seconds, 4) + littleEndian(event.generator, 2) +
                              littleEndian(Version2, 1) + littleEndian(event.sensorType, 1) +
                              littleEndian(event.sensorNumber, 1) +
                              littleEndian(event.readingType | direction, 1) +
                              littleEndian(event.offset, 1));
}

std::string otherSelRecord(unsigned record, unsigned type, const std::string& content) {
    std::string bytes = littleEndian(record, 2) + littleEndian(type, 1) + content;
    bytes.resize(RecordLength, '\xFF');
    return bytes;
}
