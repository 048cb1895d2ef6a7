// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "MofLexer.h"

namespace QZ {

// The parser's place in a MOF text: the token there, and ways to go past it. What is not as a
// caller expects throws MofError.
class MofCursor {
public:
    MofCursor(std::string_view text, const std::string& fileName);

    const MofToken& token() const { return _token; }
    MofPosition position() const { return _token.position; }
    bool at(char punctuation) const;
    // Whether the token is that keyword, ignoring case.
    bool at(const char* keyword) const;
    bool atEnd() const { return _token.kind == MofToken::End; }

    MofToken take();
    // Goes past the token if it is that.
    bool accept(char punctuation);
    bool accept(const char* keyword);
    void expect(char punctuation);
    void expect(const char* keyword);
    // An identifier's text; `what` is for the message.
    std::string takeName(const char* what);

    // Throws "WHAT expected, found ...".
    [[noreturn]] void expected(const std::string& what) const;
    [[noreturn]] void fail(MofPosition position, const std::string& what) const;

private:
    void _skip();

    MofLexer _lexer;
    MofToken _token;
};

}  // namespace QZ
