// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <map>
#include <string>

#include "Pseudonyms.h"

namespace QZ {

// The texts and numbers of a machine that are to be replaced, each in all the forms that it may
// have elsewhere and with what each becomes. What is added first decides. A value.
class Secrets {
public:
    explicit Secrets(const std::string& key) : _pseudonyms(key) {}

    // A field of a record: a text, or several behind NULs, with padding around them. Placeholders
    // and short texts are none. A UUID or a world wide name in letters and digits is one.
    void addText(const std::string& field);

    // The same of a text whose characters are shown as two digits each.
    void addHexText(const std::string& digits);

    // A host name, whose first part stands alone elsewhere.
    void addHostName(const std::string& field);

    // The bytes of a number; of sixteen, those of a UUID in the order of the firmware's tables.
    // One byte repeated is no number.
    void addNumber(const std::string& bytes);

    // Takes the longest that starts at each place, and looks on behind it.
    void replaceIn(std::string& content) const;

    // A text of nothing but one secret; as it is where it is none.
    std::string replaced(std::string text) const;

private:
    void _add(const std::string& secret, const std::string& replacement);
    void _addForms(const std::string& bytes, const std::string& replacement);

    struct LongerFirst {
        bool operator()(const std::string& one, const std::string& other) const {
            return one.size() != other.size() ? one.size() > other.size() : one < other;
        }
    };

    Pseudonyms _pseudonyms;
    // By their first byte.
    std::array<std::map<std::string, std::string, LongerFirst>, 256> _replacements;
};

}  // namespace QZ
