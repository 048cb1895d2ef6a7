// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace QZ {

// The short names that catalogue keys of IPMI events are made of, by the codes of IPMI 2.0,
// tables 42-1 (event/reading types), 42-2 (their offsets) and 42-3 (sensor types). Constant tables;
// any thread may ask.

constexpr std::uint32_t READING_TYPE_UNSPECIFIED = 0;
constexpr std::uint32_t READING_TYPE_SENSOR_SPECIFIC = 111;
constexpr std::uint32_t READING_TYPE_OEM = 112;

// The name of a sensor type, or of an event/reading type; empty for a code without one.
std::string_view sensorTypeName(std::uint32_t code);
std::string_view readingTypeName(std::uint32_t code);

// The offsets that a generic reading type (1 to 12), or a sensor type, gives names to.
struct EventNames {
    std::string_view group;    // empty: the code has no names
    std::string_view offsets;  // in offset order, with blanks between them

    // Empty past the end of the list.
    std::string_view name(std::uint32_t offset) const;
};

EventNames genericEventNames(std::uint32_t readingType);
EventNames sensorEventNames(std::uint32_t sensorType);

}  // namespace QZ
