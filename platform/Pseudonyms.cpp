// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Pseudonyms.h"

#include <sha256.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "Placeholders.h"

namespace QZ {

namespace {

std::string digest(const std::string& key, const std::string& text) {
    std::array<char, SHA256_DIGEST_LENGTH> result{};
    SHA2_CTX context{};
    SHA256Init(&context);
    for (const std::string* part : {&key, &text})
        SHA256Update(&context, reinterpret_cast<const std::uint8_t*>(part->data()), part->size());
    SHA256Final(reinterpret_cast<std::uint8_t*>(result.data()), &context);
    return {result.data(), result.size()};
}

}  // namespace

std::string Pseudonyms::ofBytes(const std::string& bytes) const {
    const std::string seed = digest(_key, bytes);
    std::string result;
    for (unsigned block = 0; result.size() < bytes.size(); ++block)
        result += digest(seed, std::to_string(block));
    result.resize(bytes.size());
    return result;
}

std::string Pseudonyms::ofText(const std::string& text) const {
    const bool isHexadecimal =
        text.find_first_not_of("0123456789abcdefABCDEF-") == std::string::npos;
    const unsigned letters = isHexadecimal ? 6 : 26;
    const std::string bytes = ofBytes(text);
    std::string result = text;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (text[i] >= '0' && text[i] <= '9')
            result[i] = static_cast<char>('0' + byte % 10);
        else if (text[i] >= 'a' && text[i] <= 'z')
            result[i] = static_cast<char>('a' + byte % letters);
        else if (text[i] >= 'A' && text[i] <= 'Z')
            result[i] = static_cast<char>('A' + byte % letters);
    }
    return result;
}

std::string secretIn(const std::string& field) {
    const auto isText = [](char byte) { return static_cast<unsigned char>(byte) > ' '; };
    const auto first = std::find_if(field.begin(), field.end(), isText);
    const auto last = std::find_if(field.rbegin(), std::make_reverse_iterator(first), isText);
    const std::string text(first, last.base());
    return text.size() < Pseudonyms::ShortestSecret || isPlaceholder(text) ? std::string() : text;
}

}  // namespace QZ
