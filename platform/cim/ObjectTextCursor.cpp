// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ObjectTextCursor.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

bool _isWordSign(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool _isNumberSign(char c) {
    return _isWordSign(c) || c == '+' || c == '-' || c == '.';
}

void _append(std::vector<Char16>& units, std::uint32_t c) {
    if (c >= 0x10000) {
        units.emplace_back(static_cast<Uint16>(0xD800 + ((c - 0x10000) >> 10)));
        c = 0xDC00 + ((c - 0x10000) & 0x3FF);
    }
    units.emplace_back(static_cast<Uint16>(c));
}

}  // namespace

std::string_view ObjectTextCursor::_take(std::size_t count) {
    const std::string_view taken = _rest.substr(0, count);
    _rest.remove_prefix(count);
    return taken;
}

void ObjectTextCursor::_skipBlanks() {
    const std::size_t blanks = _rest.find_first_not_of(" \t\r\n");
    _rest.remove_prefix(std::min(blanks, _rest.size()));
}

bool ObjectTextCursor::accept(std::string_view token) {
    _skipBlanks();
    if (_rest.substr(0, token.size()) != token)
        return false;
    // "of" is no beginning of "office".
    const bool isWord = _isWordSign(token.back());
    if (isWord && token.size() < _rest.size() && _isWordSign(_rest[token.size()]))
        return false;
    _take(token.size());
    return true;
}

void ObjectTextCursor::require(std::string_view token) {
    if (!accept(token))
        throw DamagedText();
}

std::string_view ObjectTextCursor::word() {
    _skipBlanks();
    const auto end = std::find_if_not(_rest.begin(), _rest.end(), _isWordSign);
    if (end == _rest.begin())
        throw DamagedText();
    return _take(static_cast<std::size_t>(end - _rest.begin()));
}

std::string_view ObjectTextCursor::number() {
    _skipBlanks();
    const auto end = std::find_if_not(_rest.begin(), _rest.end(), _isNumberSign);
    return _take(static_cast<std::size_t>(end - _rest.begin()));
}

String ObjectTextCursor::name() {
    _skipBlanks();
    if (!_rest.empty() && _rest.front() == '"')
        return quoted();
    const std::string_view taken = word();
    return String(taken.data(), static_cast<Uint32>(taken.size()));
}

Uint16 ObjectTextCursor::_escaped() {
    if (_rest.empty())
        throw DamagedText();
    const char sign = _take(1).front();
    switch (sign) {
        case '"':
        case '\\':
            return static_cast<Uint16>(sign);
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            break;
    }
    Uint16 unit = 0;
    const std::string_view digits =
        sign == 'u' ? _take(std::min<std::size_t>(4, _rest.size())) : std::string_view();
    const char* const end = digits.data() + digits.size();
    if (digits.size() != 4 || std::from_chars(digits.data(), end, unit, 16).ptr != end)
        throw DamagedText();
    return unit;
}

String ObjectTextCursor::quoted() {
    require("\"");
    std::vector<Char16> units;
    for (;;) {
        if (_rest.empty() || static_cast<unsigned char>(_rest.front()) < 0x20)
            throw DamagedText();
        if (_rest.front() == '"')
            break;
        if (_rest.front() == '\\') {
            _take(1);
            units.emplace_back(_escaped());
            continue;
        }
        const char* at = _rest.data();
        std::uint32_t c = 0;
        if (!decodeUtf8(at, _rest.data() + _rest.size(), c))
            throw DamagedText();
        _take(static_cast<std::size_t>(at - _rest.data()));
        _append(units, c);
    }
    _take(1);
    return units.empty() ? String() : String(units.data(), static_cast<Uint32>(units.size()));
}

bool ObjectTextCursor::isAtEnd() {
    _skipBlanks();
    return _rest.empty();
}

}  // namespace QZ
