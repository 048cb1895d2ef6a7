// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// Number literals.

#include "MofLexer.h"

namespace QZ {

namespace {

// Whether a text is a sequence of at least one decimal digit.
bool _isDecimal(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

// Whether a text is [digits] "." digits [exponent].
bool _isReal(std::string_view text) {
    const std::size_t exponent = text.find_first_of("eE");
    const std::string_view mantissa = text.substr(0, exponent);
    const std::size_t point = mantissa.find('.');
    if (point == std::string_view::npos || !_isDecimal(mantissa.substr(point + 1)) ||
        (point != 0 && !_isDecimal(mantissa.substr(0, point)))) {
        return false;
    }
    if (exponent == std::string_view::npos) {
        return true;
    }
    std::string_view power = text.substr(exponent + 1);
    if (!power.empty() && (power[0] == '+' || power[0] == '-')) {
        power.remove_prefix(1);
    }
    return _isDecimal(power);
}

}  // namespace

unsigned MofLexer::_digitValue(char c) {
    if (_isDigit(c)) {
        return unsigned(c - '0');
    }
    if (c >= 'a' && c <= 'f') {
        return unsigned(c - 'a') + 10;
    }
    return c >= 'A' && c <= 'F' ? unsigned(c - 'A') + 10 : 16;
}

// Takes all that may belong to a number in any of its forms: which one it is shows at its end.
void MofLexer::_takeNumber() {
    bool isReal = false;
    bool inExponent = false;
    while (!_atEnd()) {
        const char c = _peek();
        const bool isSign = (c == '+' || c == '-') && isReal && inExponent;
        if (!isSign && c != '.' && !_isNamePart(c)) {
            return;
        }
        isReal = isReal || c == '.';
        inExponent = c == 'e' || c == 'E';
        _take();
    }
}

void MofLexer::_number(MofToken& token) {
    const std::size_t start = _at;
    _takeNumber();
    const std::string_view text = _text.substr(start, _at - start);
    token.kind = MofToken::Integer;
    if (text.size() > 2 && text[0] == '0' && (text[1] | 0x20) == 'x') {
        token.number = _magnitude(text.substr(2), 16, token.position);
    } else if ((text.back() | 0x20) == 'b') {
        token.number = _magnitude(text.substr(0, text.size() - 1), 2, token.position);
    } else if (text.find('.') != std::string_view::npos) {
        if (!_isReal(text)) {
            fail(token.position, "a number expected, found \"" + std::string(text) + "\"");
        }
        token.kind = MofToken::Real;
        token.text = text;
    } else {
        token.number = _magnitude(text, text.size() > 1 && text[0] == '0' ? 8 : 10, token.position);
    }
}

std::uint64_t MofLexer::_magnitude(std::string_view digits, unsigned base,
                                   MofPosition position) const {
    std::uint64_t value = 0;
    for (const char c : digits) {
        const unsigned digit = _digitValue(c);
        if (digit >= base) {
            fail(position, "a number of base " + std::to_string(base) + " expected");
        }
        if (value > (UINT64_MAX - digit) / base) {
            fail(position, "a number of at most 64 bits expected");
        }
        value = value * base + digit;
    }
    return value;
}

}  // namespace QZ
