// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "KeyNumber.h"

#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>

namespace Pegasus {

// Empty, which is no number, if a character is none that a number may have.
static std::string _plain(const String& text) {
    std::string plain;
    for (Uint32 i = 0; i < text.size(); ++i) {
        const Uint16 c = text[i];
        if (c < '+' || c > 'x')
            return std::string();
        plain.push_back(static_cast<char>(c));
    }
    return plain;
}

static bool _readMagnitude(std::string_view text, Uint64& number) {
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.size() > 1 && text[0] == '0') {
        return false;
    }
    Uint64 result = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, result, base);
    if (error != std::errc() || stop != end)
        return false;
    number = result;
    return true;
}

bool readUnsigned(const String& text, Uint64& number) {
    return _readMagnitude(_plain(text), number);
}

bool readSigned(const String& text, Sint64& number) {
    const std::string plain = _plain(text);
    const bool negative = !plain.empty() && plain[0] == '-';
    const bool sign = negative || (!plain.empty() && plain[0] == '+');
    const Uint64 limit = static_cast<Uint64>(std::numeric_limits<Sint64>::max());
    Uint64 magnitude = 0;
    if (!_readMagnitude(std::string_view(plain).substr(sign ? 1 : 0), magnitude))
        return false;
    if (magnitude > limit + (negative ? 1 : 0))
        return false;
    // The smallest number has no positive counterpart to negate.
    if (negative && magnitude > 0)
        number = -static_cast<Sint64>(magnitude - 1) - 1;
    else
        number = static_cast<Sint64>(magnitude);
    return true;
}

static std::size_t _digits(std::string_view text, std::size_t from) {
    std::size_t end = from;
    while (end < text.size() && text[end] >= '0' && text[end] <= '9')
        ++end;
    return end - from;
}

static bool _isSign(std::string_view text, std::size_t position) {
    return position < text.size() && (text[position] == '+' || text[position] == '-');
}

static bool _isReal(std::string_view text) {
    std::size_t at = _isSign(text, 0) ? 1 : 0;
    at += _digits(text, at);
    if (at == text.size() || text[at] != '.')
        return false;
    const std::size_t fraction = _digits(text, ++at);
    if (fraction == 0)
        return false;
    at += fraction;
    if (at == text.size())
        return true;
    if (text[at] != 'e' && text[at] != 'E')
        return false;
    at += _isSign(text, at + 1) ? 2 : 1;
    const std::size_t exponent = _digits(text, at);
    return exponent > 0 && at + exponent == text.size();
}

bool readReal(const String& text, Real64& number) {
    const std::string plain = _plain(text);
    if (!_isReal(plain))
        return false;
    // from_chars, not strtod: the decimal point must not depend on the locale. It takes no "+".
    const char* const begin = plain.data() + (plain[0] == '+' ? 1 : 0);
    Real64 result = 0;
    const auto parsed = std::from_chars(begin, plain.data() + plain.size(), result);
    if (parsed.ec != std::errc())
        return false;
    number = result;
    return true;
}

// Reads with `read`, and refuses what the type To of the value cannot hold.
template <class To, class Wide>
static bool _readAs(bool (*read)(const String&, Wide&), const String& text, CIMValue& value) {
    Wide wide = 0;
    if (!read(text, wide) || wide < static_cast<Wide>(std::numeric_limits<To>::lowest()) ||
        wide > static_cast<Wide>(std::numeric_limits<To>::max()))
        return false;
    value.set(static_cast<To>(wide));
    return true;
}

bool readNumber(const String& text, CIMType type, CIMValue& value) {
    switch (type) {
        case CIMTYPE_UINT8:
            return _readAs<Uint8>(readUnsigned, text, value);
        case CIMTYPE_UINT16:
            return _readAs<Uint16>(readUnsigned, text, value);
        case CIMTYPE_UINT32:
            return _readAs<Uint32>(readUnsigned, text, value);
        case CIMTYPE_UINT64:
            return _readAs<Uint64>(readUnsigned, text, value);
        case CIMTYPE_SINT8:
            return _readAs<Sint8>(readSigned, text, value);
        case CIMTYPE_SINT16:
            return _readAs<Sint16>(readSigned, text, value);
        case CIMTYPE_SINT32:
            return _readAs<Sint32>(readSigned, text, value);
        case CIMTYPE_SINT64:
            return _readAs<Sint64>(readSigned, text, value);
        case CIMTYPE_REAL32:
            return _readAs<Real32>(readReal, text, value);
        case CIMTYPE_REAL64:
            return _readAs<Real64>(readReal, text, value);
        default:
            return false;
    }
}

}  // namespace Pegasus
