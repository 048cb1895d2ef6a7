// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "WqlLexer.h"

#include "WqlQuery.h"

namespace QZ {

namespace {

bool _isDigit(char c) {
    return c >= '0' && c <= '9';
}

// A byte beyond ASCII is part of a name; whether the name is one is seen when it is whole.
bool _isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool _isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

[[noreturn]] void _fail(std::size_t position, const char* what) {
    throw WqlError("character " + std::to_string(position + 1) + " of the query: " + what);
}

}  // namespace

char WqlLexer::_peek(std::size_t ahead) const {
    return _at + ahead < _text.size() ? _text[_at + ahead] : '\0';
}

void WqlLexer::_takeDigits() {
    while (_isDigit(_peek())) {
        ++_at;
    }
}

void WqlLexer::_takeNumber() {
    ++_at;  // a sign or a digit
    _takeDigits();
    if (_peek() == '.' && _isDigit(_peek(1))) {
        ++_at;
        _takeDigits();
    }
    const std::size_t sign = _peek(1) == '+' || _peek(1) == '-' ? 2 : 1;
    if ((_peek() == 'e' || _peek() == 'E') && _isDigit(_peek(sign))) {
        _at += sign;
        _takeDigits();
    }
}

std::string WqlLexer::_string() {
    const std::size_t begin = _at;
    const char quote = _text[_at++];
    std::string content;
    while (_at < _text.size()) {
        const char c = _text[_at++];
        if (c == quote) {
            if (_peek() != quote) {
                return content;
            }
            ++_at;
        } else if (c == '\\') {
            if (_peek() != '\\' && _peek() != '\'' && _peek() != '"') {
                _fail(_at - 1, "a backslash stands before another, or before a quote");
            }
            content += _text[_at++];
            continue;
        }
        content += c;
    }
    _fail(begin, "the string has no end");
}

std::size_t WqlLexer::_punctuationSize() const {
    const std::string_view rest = _text.substr(_at, 2);
    if (rest == "<>" || rest == "<=" || rest == ">=") {
        return 2;
    }
    return std::string_view("=<>(),.*").find(_peek()) != std::string_view::npos ? 1 : 0;
}

WqlToken WqlLexer::next() {
    while (_at < _text.size() && _isBlank(_text[_at])) {
        ++_at;
    }
    WqlToken token;
    token.position = _at;
    if (_at == _text.size()) {
        return token;
    }
    const char c = _peek();
    const std::size_t begin = _at;
    if (c == '"' || c == '\'') {
        token.kind = WqlToken::String;
        token.text = _string();
        return token;
    }
    if (_isNameStart(c)) {
        token.kind = WqlToken::Name;
        while (_isNameStart(_peek()) || _isDigit(_peek())) {
            ++_at;
        }
    } else if (_isDigit(c) || ((c == '-' || c == '+') && _isDigit(_peek(1)))) {
        token.kind = WqlToken::Number;
        _takeNumber();
    } else {
        token.kind = WqlToken::Punctuation;
        _at += _punctuationSize();
        if (_at == begin) {
            _fail(begin, "nothing of the kind is known");
        }
    }
    token.text = _text.substr(begin, _at - begin);
    return token;
}

}  // namespace QZ
