// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofLexer.h"

#include <cstring>

namespace QZ {

namespace {

std::string _place(const std::string& file, MofPosition position) {
    return file + ":" + std::to_string(position.line) + ":" + std::to_string(position.column);
}

}  // namespace

// Not <cctype>: MOF is ASCII whatever the locale.
bool MofLexer::_isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f';
}

bool MofLexer::_isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool MofLexer::_isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool MofLexer::_isNamePart(char c) {
    return _isNameStart(c) || _isDigit(c);
}

MofError::MofError(const std::string& file, MofPosition position, const std::string& what)
    : Error(_place(file, position) + ": " + what), _position(position) {}

MofLexer::MofLexer(std::string_view text, std::string fileName)
    : _text(text), _file(std::move(fileName)) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (_text.substr(0, byteOrderMark.size()) == byteOrderMark) {
        _text.remove_prefix(byteOrderMark.size());
    }
}

void MofLexer::fail(MofPosition position, const std::string& what) const {
    throw MofError(_file, position, what);
}

char MofLexer::_peek(std::size_t ahead) const {
    return ahead < _text.size() - _at ? _text[_at + ahead] : '\0';
}

char MofLexer::_take() {
    const char c = _text[_at++];
    if (c == '\n') {
        ++_position.line;
        _position.column = 1;
    } else {
        ++_position.column;
    }
    return c;
}

void MofLexer::_skipComment() {
    const MofPosition start = _position;
    _take();
    if (_take() == '/') {
        while (!_atEnd() && _peek() != '\n') {
            _take();
        }
        return;
    }
    while (!_atEnd()) {
        if (_take() == '*' && _peek() == '/') {
            _take();
            return;
        }
    }
    fail(start, "a comment without end");
}

void MofLexer::_skipBlanks() {
    while (!_atEnd()) {
        if (_isBlank(_peek())) {
            _take();
        } else if (_peek() == '/' && (_peek(1) == '/' || _peek(1) == '*')) {
            _skipComment();
        } else {
            return;
        }
    }
}

MofToken MofLexer::next() {
    MofToken token;
    next(token);
    return token;
}

void MofLexer::next(MofToken& token) {
    _skipBlanks();
    token.kind = MofToken::End;
    token.text.clear();
    token.number = 0;
    token.position = _position;
    if (_atEnd()) {
        return;
    }
    const char c = _peek();
    if (_isNameStart(c)) {
        _identifier(token);
    } else if (_isDigit(c) || (c == '.' && _isDigit(_peek(1)))) {
        _number(token);
    } else if (c == '"') {
        _string(token);
    } else if (c == '\'') {
        _char(token);
    } else if (c == '#') {
        _take();
        _identifier(token);
        if (token.text != "pragma") {
            fail(token.position, "#pragma expected");
        }
        token.kind = MofToken::Pragma;
    } else if (c == '\0' || !std::strchr("{}[](),;:=+-$", c)) {
        fail(token.position, "a character that MOF does not know");
    } else {
        token.kind = MofToken::Punctuation;
        token.text.push_back(_take());
    }
}

void MofLexer::_identifier(MofToken& token) {
    token.kind = MofToken::Identifier;
    const std::size_t start = _at;
    while (!_atEnd() && _isNamePart(_text[_at])) {
        ++_at;
    }
    token.text = _text.substr(start, _at - start);
    _position.column += unsigned(_at - start);
}

}  // namespace QZ
