// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

namespace QZ {

// Microseconds.
constexpr Pegasus::Uint64 CimSecond = 1000000;
constexpr Pegasus::Uint64 CimMinute = 60 * CimSecond;
constexpr Pegasus::Uint64 CimHour = 60 * CimMinute;
constexpr Pegasus::Uint64 CimDay = 24 * CimHour;
// The first beyond the year 9999, and the first that eight digits of days cannot hold.
constexpr Pegasus::Uint64 CimEndOfTime = 3652425 * CimDay;
constexpr Pegasus::Uint64 CimEndOfIntervals = 100000000 * CimDay;

// What the 25 characters of a CIM datetime say. Asterisks count as the lowest value of their field.
struct CimDateTimeText {
    bool isInterval;
    // Since 1 January of the year 0 as written, or the length of the interval.
    Pegasus::Uint64 usec;
    // Minutes east of UTC.
    Pegasus::Sint16 offset;
    // How many of the 20 digits before the offset are asterisks, counted from the right.
    Pegasus::Uint8 wildcards;
};

// Throws InvalidDateTimeFormatException or DateTimeOutOfRangeException.
CimDateTimeText parseCimDateTime(const Pegasus::String& text);

Pegasus::String formatCimDateTime(const CimDateTimeText& value);

}  // namespace QZ
