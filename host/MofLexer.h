// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Error.h"

namespace QZ {

// A place in a MOF text. Lines and columns count from 1, columns in bytes.
struct MofPosition {
    unsigned line = 1;
    unsigned column = 1;
};

// A text that is no MOF: "FILE:LINE:COLUMN: what was expected, what was found".
class MofError : public Error {
public:
    MofError(const std::string& file, MofPosition position, const std::string& what);

    MofPosition getPosition() const { return _position; }

private:
    MofPosition _position;
};

struct MofToken {
    enum Kind {
        End,
        Identifier,   // text is the name; keywords are identifiers too
        Pragma,       // the directive "#pragma"
        String,       // text is the content as UTF-8, adjacent literals joined
        Char,         // number is the code unit
        Integer,      // number is the magnitude
        Real,         // text is as written, without a sign
        Punctuation,  // text is one of { } [ ] ( ) , ; : = + - $
    };

    Kind kind = End;
    std::string text;
    std::uint64_t number = 0;
    MofPosition position;
};

// Cuts a text into tokens (DSP0004, annex A). Each call of next() takes the next one; at the end of
// the text it answers End for ever. What is no token throws MofError. The text must outlive the
// lexer.
class MofLexer {
public:
    MofLexer(std::string_view text, std::string fileName);

    MofToken next();
    // The same, in place of a token that is done with.
    void next(MofToken& token);

    [[noreturn]] void fail(MofPosition position, const std::string& what) const;

private:
    static bool _isBlank(char c);
    static bool _isDigit(char c);
    static bool _isNameStart(char c);
    static bool _isNamePart(char c);
    // Up to 15 for a hexadecimal digit, 16 for what is none.
    static unsigned _digitValue(char c);

    bool _atEnd() const { return _at == _text.size(); }
    char _peek(std::size_t ahead = 0) const;
    char _take();
    void _skipBlanks();
    void _skipComment();
    void _identifier(MofToken& token);
    void _number(MofToken& token);
    void _takeNumber();
    std::uint64_t _magnitude(std::string_view digits, unsigned base, MofPosition position) const;
    void _string(MofToken& token);
    void _stringPiece(std::string& content);
    // What stands for itself and is one character a byte, as nearly all text.
    void _plainText(std::string& content);
    void _char(MofToken& token);
    std::uint32_t _character();
    std::uint32_t _escape();
    std::uint32_t _hexadecimal();

    std::string_view _text;
    std::string _file;
    std::size_t _at = 0;
    MofPosition _position;
};

}  // namespace QZ
