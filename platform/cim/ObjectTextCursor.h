// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/String.h>

#include <cstdint>
#include <string_view>

namespace QZ {

// Thrown where a text is not what it should be; never leaves parseInstance().
struct DamagedText {};

// Goes through a text from token to token: words, numbers, quoted texts and single signs, with
// blanks and line ends between them. The text must outlive it.
class ObjectTextCursor {
public:
    explicit ObjectTextCursor(std::string_view text) : _rest(text) {}

    // Takes the token if it is next, else nothing.
    bool accept(std::string_view token);

    // These throw DamagedText for anything else.
    void require(std::string_view token);
    std::string_view word();    // of ASCII letters, digits and "_"
    std::string_view number();  // its characters; the caller looks at them
    Pegasus::String quoted();
    Pegasus::String name();  // a word or a quoted text

    bool isAtEnd();

private:
    void _skipBlanks();
    std::string_view _take(std::size_t count);
    Pegasus::Uint16 _escaped();

    std::string_view _rest;
};

}  // namespace QZ
