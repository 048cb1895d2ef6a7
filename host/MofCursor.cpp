// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofCursor.h"

#include <utility>

#include "Text.h"

namespace QZ {

namespace {

std::string _describe(const MofToken& token) {
    switch (token.kind) {
        case MofToken::End:
            return "the end of the file";
        case MofToken::Pragma:
            return "#pragma";
        case MofToken::String:
            return "a string";
        case MofToken::Char:
            return "a character";
        case MofToken::Integer:
        case MofToken::Real:
            return "a number";
        default:
            return "\"" + token.text + "\"";
    }
}

}  // namespace

MofCursor::MofCursor(std::string_view text, const std::string& fileName)
    : _lexer(text, fileName), _token(_lexer.next()) {}

bool MofCursor::at(char punctuation) const {
    return _token.kind == MofToken::Punctuation && _token.text[0] == punctuation;
}

bool MofCursor::at(const char* keyword) const {
    return _token.kind == MofToken::Identifier && sameName(_token.text, keyword);
}

MofToken MofCursor::take() {
    return std::exchange(_token, _lexer.next());
}

void MofCursor::_skip() {
    _lexer.next(_token);
}

bool MofCursor::accept(char punctuation) {
    const bool there = at(punctuation);
    if (there) {
        _skip();
    }
    return there;
}

bool MofCursor::accept(const char* keyword) {
    const bool there = at(keyword);
    if (there) {
        _skip();
    }
    return there;
}

void MofCursor::expect(char punctuation) {
    if (!accept(punctuation)) {
        expected(std::string("\"") + punctuation + "\"");
    }
}

void MofCursor::expect(const char* keyword) {
    if (!accept(keyword)) {
        expected(std::string("\"") + keyword + "\"");
    }
}

std::string MofCursor::takeName(const char* what) {
    if (_token.kind != MofToken::Identifier) {
        expected(what);
    }
    return take().text;
}

void MofCursor::expected(const std::string& what) const {
    fail(position(), what + " expected, found " + _describe(_token));
}

void MofCursor::fail(MofPosition position, const std::string& what) const {
    _lexer.fail(position, what);
}

}  // namespace QZ
