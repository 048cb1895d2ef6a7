// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QZ {

struct WqlToken {
    enum Kind {
        End,
        Name,         // keywords are names too
        String,       // text is the content
        Number,       // text is as written, with its sign
        Punctuation,  // text is one of = <> < <= > >= ( ) , . *
    };

    Kind kind = End;
    std::string text;
    std::size_t position = 0;  // of its first byte
};

// Cuts a query into tokens. Each call of next() takes the next one; at the end of the text it
// answers End for ever. What is no token throws WqlError. The text must outlive the lexer.
class WqlLexer {
public:
    explicit WqlLexer(std::string_view text) : _text(text) {}

    WqlToken next();

private:
    char _peek(std::size_t ahead = 0) const;
    void _takeDigits();
    void _takeNumber();
    std::string _string();
    std::size_t _punctuationSize() const;

    std::string_view _text;
    std::size_t _at = 0;
};

}  // namespace QZ
