// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace QZ {

// The parts of a date as they are written. Year 0 is the unset date; then all parts are 0.
struct DateTimeParts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int millisecond = 0;
    int offset = 0;  // minutes east of UTC
    bool hasTime = false;
};

// No zone lies further from UTC; ISO 8601 texts and CIM datetimes beyond it are refused.
constexpr int MaximumOffset = 14 * 60;

// True when there is such a day in the years 1 to 9999, such a time on it (no leap second) and an
// offset within bounds. Without a time, its parts and the offset are not looked at.
bool partsExist(const DateTimeParts& parts);

// Reads the ISO 8601 forms "2027-01-31", "2027-01-31T08:30:00+01:00" and
// "2027-01-31T08:30:00.250Z", the 25 characters of a CIM datetime (DSP0004), and that form with
// "+-060" for an offset west of UTC, where six digits below 1000 are milliseconds and else
// microseconds. In the CIM form asterisks for the whole time of day mean a date without one, and
// asterisks for its end mean zero. Anything else, intervals and dates that do not exist included,
// is the unset date.
DateTimeParts parseDateTime(std::string_view text);

// The ISO 8601 form, which parseDateTime reads back; empty for the unset date.
std::string composeDateTime(const DateTimeParts& parts);

}  // namespace QZ
