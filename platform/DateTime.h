// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "Calendar.h"
#include "DateTimeText.h"

namespace QZ {

// A calendar day, with or without a time of day and its offset from UTC; or the unset date. A
// value: copies are independent. The machine's zone is the process's TZ as tzset() last saw it.
class DateTime {
public:
    // What of a moment is kept. A time of day without its day is the unset date.
    enum Format : unsigned { CalendarDate = 1, TimeOfDay = 2 };

    DateTime() = default;

    // The moment of a Unix time in the machine's zone: its calendar day, or with TimeOfDay its full
    // local time with the offset. Unset outside the years 1 to 9999.
    DateTime(std::int64_t seconds, unsigned format);

    // What parseDateTime reads, cut down to what the format keeps.
    DateTime(const std::string& text, unsigned format);
    DateTime(const char* text, unsigned format);

    // Unset when there is no such day, time or offset.
    static DateTime fromParts(int year, int month, int day, int hour, int minute, int second,
                              int millisecond, int offsetMinutes);
    static DateTime fromDay(int year, int month, int day);

    bool isSet() const { return _parts.year != 0; }
    bool hasTime() const { return _parts.hasTime; }

    // All 0 when unset; the time's parts and the offset 0 when there is no time.
    int getYear() const { return _parts.year; }
    int getMonth() const { return _parts.month; }
    int getDay() const { return _parts.day; }
    int getHour() const { return _parts.hour; }
    int getMinute() const { return _parts.minute; }
    int getSecond() const { return _parts.second; }
    int getMillisecond() const { return _parts.millisecond; }
    int getOffset() const { return _parts.offset; }  // minutes east of UTC

    // Unix time. A date without time counts from its 00:00:00 in the machine's zone; 0 when unset.
    std::int64_t toSeconds() const;

    // ISO 8601, which both the text constructors read back equal with both bits of the format.
    // Empty when unset.
    std::string toString() const;

    // Minutes east of UTC of the machine's zone at 00:00:00 of an existing day. Where the clocks
    // jump over 00:00:00 it is the offset before the jump, so that the day starts with its first
    // moment; where they strike it twice, that of the first.
    static int localOffset(int year, int month, int day);

private:
    explicit DateTime(const DateTimeParts& parts, unsigned format);

    DateTimeParts _parts;
};

// Without a time of day on either side both compare by their calendar days as written; else as
// moments, in whole seconds. The unset date has no time and lies before every day.
bool operator<=(const DateTime& left, const DateTime& right);

// The same parts, written the same way: two ways to write one moment are not equal.
bool operator==(const DateTime& left, const DateTime& right);
bool operator!=(const DateTime& left, const DateTime& right);

}  // namespace QZ
