// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimDateTimeText.h"

#include <Pegasus/Common/Exception.h>

#include <algorithm>

#include "CimCalendar.h"

namespace QZ {

using Pegasus::Sint16;
using Pegasus::String;
using Pegasus::Uint32;
using Pegasus::Uint64;
using Pegasus::Uint8;

namespace {

constexpr Uint32 Length = 25;
constexpr Uint32 Point = 14;
constexpr Uint32 Sign = 21;

struct Field {
    const char* name;
    Uint32 begin;
    Uint32 width;
    Uint32 lowest;
    Uint32 highest;
};

constexpr Field Days{"days", 0, 8, 0, 99999999};
constexpr Field Year{"year", 0, 4, 0, 9999};
constexpr Field Month{"month", 4, 2, 1, 12};
constexpr Field DayOfMonth{"day", 6, 2, 1, 31};
constexpr Field Hour{"hour", 8, 2, 0, 23};
constexpr Field Minute{"minute", 10, 2, 0, 59};
constexpr Field Second{"second", 12, 2, 0, 59};
constexpr Field Microsecond{"microsecond", 15, 6, 0, 999999};
constexpr Field Offset{"offset", 22, 3, 0, 999};

void _require(bool form) {
    if (!form)
        throw Pegasus::InvalidDateTimeFormatException();
}

[[noreturn]] void _throwOutOfRange(const Field& field, Uint32 number) {
    String text(field.name);
    text.appendPrintf(" %u", number);
    throw Pegasus::DateTimeOutOfRangeException(text);
}

constexpr bool _isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Only the last digits of the microseconds may be asterisks one by one; of the other fields, all or
// none.
constexpr bool _isWildcardCount(Uint32 count, bool isInterval) {
    return count <= 6 || count == 8 || count == 10 || count == 12 || count == 20 ||
           (!isInterval && (count == 14 || count == 16));
}

void _copyText(const String& text, char (&out)[Length + 1]) {
    _require(text.size() == Length);
    const Pegasus::Char16* const units = text.getChar16Data();
    for (Uint32 i = 0; i < Length; ++i) {
        _require(Pegasus::Uint16(units[i]) < 0x80);
        out[i] = static_cast<char>(Pegasus::Uint16(units[i]));
    }
    out[Length] = '\0';
}

Uint8 _countWildcards(const char* text, bool isInterval) {
    Uint32 count = 0;
    bool digitSeen = false;
    for (Uint32 i = Sign; i-- > 0;) {
        if (i == Point)
            continue;
        if (text[i] == '*') {
            _require(!digitSeen);
            ++count;
        } else {
            _require(_isDigit(text[i]));
            digitSeen = true;
        }
    }
    _require(_isWildcardCount(count, isInterval));
    return static_cast<Uint8>(count);
}

Uint32 _read(const char* text, const Field& field) {
    if (text[field.begin] == '*')
        return field.lowest;
    Uint32 number = 0;
    for (Uint32 i = field.begin; i < field.begin + field.width; ++i)
        number = number * 10 + (text[i] == '*' ? 0 : static_cast<Uint32>(text[i] - '0'));
    if (number < field.lowest || number > field.highest)
        _throwOutOfRange(field, number);
    return number;
}

Uint64 _readDay(const char* text) {
    const CalendarDay day{_read(text, Year), _read(text, Month), _read(text, DayOfMonth)};
    if (day.day > daysInMonth(day.year, day.month))
        _throwOutOfRange(DayOfMonth, day.day);
    return dayNumber(day);
}

}  // namespace

CimDateTimeText parseCimDateTime(const String& text) {
    char bytes[Length + 1];
    _copyText(text, bytes);
    _require(bytes[Point] == '.');
    const char sign = bytes[Sign];
    _require(sign == '+' || sign == '-' || sign == ':');
    _require(std::all_of(bytes + Offset.begin, bytes + Length, _isDigit));

    CimDateTimeText value{};
    value.isInterval = sign == ':';
    value.wildcards = _countWildcards(bytes, value.isInterval);
    const auto offset = static_cast<Sint16>(_read(bytes, Offset));
    _require(!value.isInterval || offset == 0);
    value.offset = static_cast<Sint16>(sign == '-' ? -offset : offset);
    const Uint64 days = value.isInterval ? _read(bytes, Days) : _readDay(bytes);
    value.usec = days * CimDay + _read(bytes, Hour) * CimHour + _read(bytes, Minute) * CimMinute +
                 _read(bytes, Second) * CimSecond + _read(bytes, Microsecond);
    return value;
}

String formatCimDateTime(const CimDateTimeText& value) {
    const auto days = static_cast<Uint32>(value.usec / CimDay);
    const auto part = [&](Uint64 unit, Uint32 count) {
        return static_cast<Uint32>(value.usec / unit % count);
    };
    Uint32 date = days;
    if (!value.isInterval) {
        const CalendarDay day = dayFromNumber(days);
        date = day.year * 10000 + day.month * 100 + day.day;
    }
    String text;
    const int offset = value.offset;
    text.appendPrintf("%08u%02u%02u%02u.%06u%c%03d", date, part(CimHour, 24), part(CimMinute, 60),
                      part(CimSecond, 60), part(1, CimSecond),
                      value.isInterval ? ':' : (offset < 0 ? '-' : '+'),
                      offset < 0 ? -offset : offset);
    for (Uint32 i = Sign, count = value.wildcards; count > 0;) {
        if (--i == Point)
            continue;
        text[i] = '*';
        --count;
    }
    return text;
}

}  // namespace QZ
