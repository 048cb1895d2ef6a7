// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace QZ {

// The text with the letters A to Z in lower case, whatever the locale: as long as it was.
std::string lowerCased(std::string_view text);

// A value's name without blanks, tabs and quotes around it, which tell no name from another.
std::string_view bareName(std::string_view name);

// A value as it was found.
struct RegistryValue {
    enum Kind { None, Text, Number };

    Kind kind = None;
    std::string text;
    unsigned long number = 0;  // 32 bits
};

// The content of a registry-style file: the text as it is, and the same in lower case to search.
class RegistryText {
public:
    explicit RegistryText(std::string text);

    const std::string& text() const { return _text; }

    // Whether what is looked for, in any case, stands anywhere.
    bool contains(std::string_view wanted) const;

    // The value whose name is found first as a substring of the section's text.
    RegistryValue find(std::string_view key, std::string_view valueName) const;

    // Puts "name=data" in the place of the entry of exactly that name, or at the end of its
    // section, or with the section at the end of the text. The caller vouches for the layout.
    void set(std::string_view key, std::string_view name, std::string_view data);

    static std::string header(std::string_view key);

private:
    // Positions of a part of the text.
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    bool _section(std::string_view key, Range& section) const;
    bool _entry(const Range& section, std::string_view name, Range& entry) const;
    std::size_t _lineEndAt(const Range& section, std::size_t at) const;
    std::size_t _entrySign(const Range& section, std::size_t line) const;
    bool _hasData(std::size_t sign) const;
    std::size_t _entryEnd(const Range& section, std::size_t sign) const;
    void _replace(const Range& range, const std::string& with);

    std::string _text;
    std::string _search;  // _text in lower case
    const char* _lineEnd;
};

}  // namespace QZ
