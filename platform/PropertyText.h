// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <forward_list>
#include <string>
#include <string_view>
#include <vector>

namespace QZ {

// The text of a property file: UTF-8, one "key=value" a line. Pure: no file, no locale. Lines that
// are no entries (comments, blank ones, what is not understood) and entries that are not set stay
// byte for byte, in their place.
//
// Keys and values may be any bytes, written as PropertyEscape does. Blanks around "=" and at the
// ends of a line are not part of them.
class PropertyText {
public:
    PropertyText() = default;

    // Reads any text. Lines with a NUL byte are what a crash leaves behind: they are dropped.
    explicit PropertyText(std::string text);

    PropertyText(PropertyText&&) = default;
    PropertyText& operator=(PropertyText&&) = default;

    // True when lines were dropped.
    bool isDamaged() const { return _isDamaged; }

    // The value of the last entry with this key; empty when there is none.
    std::string get(std::string_view key) const;

    bool contains(std::string_view key) const { return _find(key) != nullptr; }

    // Whether set would leave everything as it is.
    bool holds(std::string_view key, std::string_view value) const;

    // Changes the last entry with this key, or appends one; trailing NULs of the value are dropped.
    // A value that the entry already has leaves its line as it is. With keepOld, the line that is
    // changed stays above as a comment.
    void set(std::string_view key, std::string_view value, bool keepOld = false);

    // The whole text. Without a set, exactly the text read.
    std::string compose() const;

private:
    // Lines look into _texts: to copy each of some forty would cost more than to read the file.
    struct Line {
        std::string_view text;   // with its end
        std::string_view key;    // as written
        std::string_view value;  // as written
        bool isEntry = false;
    };

    static Line _parse(std::string_view text);
    Line _make(std::string text);
    const Line* _find(std::string_view key) const;

    std::forward_list<std::string> _texts;
    std::vector<Line> _lines;
    bool _isDamaged = false;
};

}  // namespace QZ
