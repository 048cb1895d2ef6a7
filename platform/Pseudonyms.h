// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

namespace QZ {

// What stands in the places of texts that tell one machine from all others. The same text has the
// same pseudonym with the same key; nobody without the key can try which became which. Pure.
class Pseudonyms {
public:
    explicit Pseudonyms(std::string key) : _key(std::move(key)) {}

    // A text of fewer characters, padding not counted, tells no machine from another.
    static constexpr std::size_t ShortestSecret = 4;

    // Of the same length, with digits for digits, letters for letters and every other byte as it
    // was. A hexadecimal number stays one.
    std::string ofText(const std::string& text) const;

    // As many bytes.
    std::string ofBytes(const std::string& bytes) const;

private:
    std::string _key;
};

// The text without the blanks and control characters around it that different ways to it pad it
// with; empty where it is too short to be a secret, or a placeholder.
std::string secretIn(const std::string& field);

}  // namespace QZ
