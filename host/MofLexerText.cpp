// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// String and character literals.

#include "MofLexer.h"
#include "Text.h"

namespace QZ {

void MofLexer::_string(MofToken& token) {
    token.kind = MofToken::String;
    do {
        _stringPiece(token.text);
        _skipBlanks();
    } while (!_atEnd() && _peek() == '"');
}

void MofLexer::_stringPiece(std::string& content) {
    const MofPosition start = _position;
    _take();
    for (;;) {
        _plainText(content);
        if (_atEnd() || _peek() == '\n') {
            fail(start, "a string without end");
        }
        if (_peek() == '"') {
            _take();
            return;
        }
        const MofPosition place = _position;
        std::uint32_t character = _character();
        // \x writes one UTF-16 code unit: a character beyond them takes two in a row.
        if (character >= 0xD800 && character < 0xDC00 && _peek() == '\\') {
            const std::uint32_t low = _character();
            if (low >= 0xDC00 && low < 0xE000) {
                character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
            }
        }
        if (character >= 0xD800 && character < 0xE000) {
            fail(place, "half of a surrogate pair");
        }
        appendUtf8(content, character);
    }
}

void MofLexer::_plainText(std::string& content) {
    const std::size_t start = _at;
    while (!_atEnd() && _text[_at] >= ' ' && _text[_at] < '\x7F' && _text[_at] != '"' &&
           _text[_at] != '\\') {
        ++_at;
    }
    content += _text.substr(start, _at - start);
    _position.column += unsigned(_at - start);
}

void MofLexer::_char(MofToken& token) {
    token.kind = MofToken::Char;
    _take();
    if (_atEnd() || _peek() == '\'' || _peek() == '\n') {
        fail(token.position, "a character expected");
    }
    token.number = _character();
    if (_atEnd() || _take() != '\'' || token.number > 0xFFFF) {
        fail(token.position, "one character of at most 16 bits expected");
    }
}

std::uint32_t MofLexer::_character() {
    if (_peek() == '\\') {
        return _escape();
    }
    const char* at = _text.data() + _at;
    const char* const end = _text.data() + _text.size();
    const char* const start = at;
    std::uint32_t character = 0;
    if (!decodeUtf8(at, end, character)) {
        fail(_position, "text that is not UTF-8");
    }
    for (const char* byte = start; byte != at; ++byte) {
        _take();
    }
    return character;
}

std::uint32_t MofLexer::_escape() {
    const MofPosition place = _position;
    _take();
    switch (_atEnd() ? '\0' : _take()) {
        case 'b':
            return '\b';
        case 't':
            return '\t';
        case 'n':
            return '\n';
        case 'f':
            return '\f';
        case 'r':
            return '\r';
        case '"':
            return '"';
        case '\'':
            return '\'';
        case '\\':
            return '\\';
        case 'x':
        case 'X':
            return _hexadecimal();
        default:
            fail(place, "an escape that MOF does not know");
    }
}

std::uint32_t MofLexer::_hexadecimal() {
    const MofPosition place = _position;
    std::uint32_t value = 0;
    int digits = 0;
    for (; digits < 4 && !_atEnd(); ++digits) {
        const unsigned digit = _digitValue(_peek());
        if (digit == 16) {
            break;
        }
        value = value * 16 + digit;
        _take();
    }
    if (digits == 0) {
        fail(place, "one to four hexadecimal digits expected");
    }
    return value;
}

}  // namespace QZ
