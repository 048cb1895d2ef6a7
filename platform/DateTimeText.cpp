// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DateTimeText.h"

#include <cstddef>

#include "Calendar.h"

namespace QZ {

namespace {

// Takes the texts of a date apart from left to right.
class Reader {
public:
    explicit Reader(std::string_view text) : _rest(text) {}

    bool atEnd() const { return _rest.empty(); }

    bool take(char expected) {
        if (_rest.empty() || _rest.front() != expected)
            return false;
        _rest.remove_prefix(1);
        return true;
    }

    // Exactly so many decimal digits.
    bool takeNumber(std::size_t digits, int& number) {
        if (_rest.size() < digits)
            return false;
        int value = 0;
        for (const char digit : _rest.substr(0, digits)) {
            if (digit < '0' || digit > '9')
                return false;
            value = value * 10 + (digit - '0');
        }
        _rest.remove_prefix(digits);
        number = value;
        return true;
    }

    // Exactly so many asterisks.
    bool takeAsterisks(std::size_t count) {
        if (_rest.size() < count || _rest.substr(0, count) != std::string_view("******", count))
            return false;
        _rest.remove_prefix(count);
        return true;
    }

private:
    std::string_view _rest;
};

bool readIsoOffset(Reader& reader, int& offset) {
    if (reader.take('Z'))
        return true;
    const bool isWest = reader.take('-');
    int hours = 0;
    int minutes = 0;
    if (!(isWest || reader.take('+')) || !reader.takeNumber(2, hours) || !reader.take(':') ||
        !reader.takeNumber(2, minutes) || minutes > 59)
        return false;
    offset = (hours * 60 + minutes) * (isWest ? -1 : 1);
    return true;
}

bool readIso(Reader reader, DateTimeParts& parts) {
    if (!reader.takeNumber(4, parts.year) || !reader.take('-') ||
        !reader.takeNumber(2, parts.month) || !reader.take('-') || !reader.takeNumber(2, parts.day))
        return false;
    if (reader.atEnd())
        return true;
    parts.hasTime = true;
    if (!reader.take('T') || !reader.takeNumber(2, parts.hour) || !reader.take(':') ||
        !reader.takeNumber(2, parts.minute) || !reader.take(':') ||
        !reader.takeNumber(2, parts.second))
        return false;
    if (reader.take('.') && !reader.takeNumber(3, parts.millisecond))
        return false;
    return readIsoOffset(reader, parts.offset) && reader.atEnd();
}

// Six digits, the last of which may be asterisks.
bool readCimFraction(Reader& reader, int& millisecond) {
    int digits = 0;
    int value = 0;
    for (int digit = 0; digits < 6 && reader.takeNumber(1, digit); ++digits)
        value = value * 10 + digit;
    if (!reader.takeAsterisks(static_cast<std::size_t>(6 - digits)))
        return false;
    if (digits == 6 && value < 1000) {
        millisecond = value;
        return true;
    }
    for (; digits < 6; ++digits)
        value *= 10;
    millisecond = value / 1000;
    return true;
}

// The time of day of a CIM datetime. From some field on all of it may be asterisks: that much is
// not significant (DSP0004), and from the first on there is no time at all.
bool readCimTime(Reader& reader, DateTimeParts& parts) {
    if (reader.takeNumber(2, parts.hour)) {
        parts.hasTime = true;
        if (reader.takeNumber(2, parts.minute)) {
            if (reader.takeNumber(2, parts.second))
                return reader.take('.') && readCimFraction(reader, parts.millisecond);
            return reader.takeAsterisks(2) && reader.take('.') && reader.takeAsterisks(6);
        }
        return reader.takeAsterisks(4) && reader.take('.') && reader.takeAsterisks(6);
    }
    return reader.takeAsterisks(6) && reader.take('.') && reader.takeAsterisks(6);
}

bool readCim(Reader reader, DateTimeParts& parts) {
    if (!reader.takeNumber(4, parts.year) || !reader.takeNumber(2, parts.month) ||
        !reader.takeNumber(2, parts.day) || !readCimTime(reader, parts))
        return false;
    // The flat interface writes its plus sign whatever the offset's own sign.
    const bool hasPlus = reader.take('+');
    const bool isWest = reader.take('-');
    if (!hasPlus && !isWest)
        return false;
    if (reader.takeNumber(3, parts.offset)) {
        parts.offset *= isWest ? -1 : 1;
        return reader.atEnd();
    }
    return !parts.hasTime && reader.takeAsterisks(3) && reader.atEnd();
}

// In decimal, from the digit that counts `place` down to the ones.
void appendNumber(std::string& text, int value, int place) {
    for (; place > 0; place /= 10)
        text += static_cast<char>('0' + value / place % 10);
}

}  // namespace

bool partsExist(const DateTimeParts& parts) {
    if (!dateExists(parts.year, parts.month, parts.day))
        return false;
    const auto isWithin = [](int value, int end) { return value >= 0 && value < end; };
    return !parts.hasTime || (isWithin(parts.hour, 24) && isWithin(parts.minute, 60) &&
                              isWithin(parts.second, 60) && isWithin(parts.millisecond, 1000) &&
                              parts.offset >= -MaximumOffset && parts.offset <= MaximumOffset);
}

DateTimeParts parseDateTime(std::string_view text) {
    DateTimeParts parts;
    const bool isIso = text.size() > 4 && text[4] == '-';
    const bool isRead = isIso ? readIso(Reader(text), parts) : readCim(Reader(text), parts);
    if (!isRead || !partsExist(parts))
        return {};
    if (!parts.hasTime)
        parts.offset = 0;
    return parts;
}

std::string composeDateTime(const DateTimeParts& parts) {
    std::string text;
    if (parts.year == 0)
        return text;
    appendNumber(text, parts.year, 1000);
    text += '-';
    appendNumber(text, parts.month, 10);
    text += '-';
    appendNumber(text, parts.day, 10);
    if (!parts.hasTime)
        return text;
    text += 'T';
    appendNumber(text, parts.hour, 10);
    text += ':';
    appendNumber(text, parts.minute, 10);
    text += ':';
    appendNumber(text, parts.second, 10);
    if (parts.millisecond != 0) {
        text += '.';
        appendNumber(text, parts.millisecond, 100);
    }
    const int minutes = parts.offset < 0 ? -parts.offset : parts.offset;
    text += parts.offset < 0 ? '-' : '+';
    appendNumber(text, minutes / 60, 10);
    text += ':';
    appendNumber(text, minutes % 60, 10);
    return text;
}

}  // namespace QZ
