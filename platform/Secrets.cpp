// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Secrets.h"

#include <algorithm>
#include <optional>

#include "Placeholders.h"

namespace QZ {

namespace {

constexpr std::size_t UuidLength = 16;
constexpr std::size_t WorldWideNameLength = 8;

constexpr const char* LowerCase = "0123456789abcdef";
constexpr const char* UpperCase = "0123456789ABCDEF";

// DSP0134, 7.2.1: the first three fields of a UUID have their lowest byte first.
std::string swapFields(std::string uuid) {
    std::reverse(uuid.begin(), uuid.begin() + 4);
    std::reverse(uuid.begin() + 4, uuid.begin() + 6);
    std::reverse(uuid.begin() + 6, uuid.begin() + 8);
    return uuid;
}

std::string hexText(const std::string& bytes, const char* digits) {
    std::string text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4U];
        text += digits[static_cast<unsigned char>(byte) & 0xFU];
    }
    return text;
}

// 8-4-4-4-12.
std::string withDashes(std::string digits) {
    for (const std::size_t at : {8U, 13U, 18U, 23U})
        digits.insert(at, 1, '-');
    return digits;
}

std::string inLowerCase(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

// The bytes that digits show in pairs; nothing where something else is among them.
std::optional<std::string> bytesIn(const std::string& text) {
    if (text.size() % 2 != 0 ||
        text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
        return std::nullopt;
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); at += 2)
        bytes += static_cast<char>(std::stoi(text.substr(at, 2), nullptr, 16));
    return bytes;
}

// The bytes of a hexadecimal number that is as long as one of those that are written in several
// ways. One of digits alone may be any other.
std::optional<std::string> numberIn(std::string text) {
    if (text.size() == 2 * UuidLength + 4) {
        for (const std::size_t dash : {8U, 12U, 16U, 20U}) {
            if (text[dash] != '-')
                return std::nullopt;
            text.erase(dash, 1);
        }
        return bytesIn(text);
    }
    if (text.size() != 2 * UuidLength && text.size() != 2 * WorldWideNameLength)
        return std::nullopt;
    if (text.find_first_not_of("0123456789") == std::string::npos)
        return std::nullopt;
    return bytesIn(text);
}

// What firmware has for want of a UUID, but for one byte repeated: bytes counted in pairs.
bool isCounted(const std::string& uuid) {
    static const std::string counted("\0\2\0\3\0\4\0\5\0\6\0\7\0\x08\0\x09", UuidLength);
    return uuid == counted || swapFields(uuid) == counted;
}

}  // namespace

void Secrets::_add(const std::string& secret, const std::string& replacement) {
    _replacements[static_cast<unsigned char>(secret.front())].emplace(secret, replacement);
}

void Secrets::_addForms(const std::string& bytes, const std::string& replacement) {
    _add(bytes, replacement);
    for (const char* const digits : {LowerCase, UpperCase}) {
        const std::string text = hexText(bytes, digits);
        const std::string other = hexText(replacement, digits);
        _add(text, other);
        if (bytes.size() == UuidLength)
            _add(withDashes(text), withDashes(other));
    }
}

void Secrets::addNumber(const std::string& bytes) {
    if (bytes.empty() || bytes.find_first_not_of(bytes.front()) == std::string::npos)
        return;
    const std::string replacement = _pseudonyms.ofBytes(bytes);
    if (bytes.size() != UuidLength) {
        _addForms(bytes, replacement);
        return;
    }
    if (isCounted(bytes))
        return;
    // Its text has the fields swapped, but for old firmware; a management controller may have
    // either backwards.
    const std::string swapped = swapFields(bytes);
    const std::string swappedReplacement = swapFields(replacement);
    _addForms(swapped, swappedReplacement);
    _addForms(bytes, replacement);
    _add({bytes.rbegin(), bytes.rend()}, {replacement.rbegin(), replacement.rend()});
    _add({swapped.rbegin(), swapped.rend()},
         {swappedReplacement.rbegin(), swappedReplacement.rend()});
}

void Secrets::addText(const std::string& field) {
    for (std::size_t at = 0; at < field.size();) {
        const std::size_t end = std::min(field.find('\0', at), field.size());
        const std::string text = secretIn(field.substr(at, end - at));
        at = end + 1;
        if (text.empty())
            continue;
        const auto number = numberIn(text);
        if (number)
            addNumber(number->size() == UuidLength ? swapFields(*number) : *number);
        // Letters of both cases are a form of its own.
        _add(text, number ? replaced(inLowerCase(text)) : _pseudonyms.ofText(text));
    }
}

void Secrets::addHexText(const std::string& digits) {
    const auto bytes = bytesIn(digits);
    const std::string text = secretIn(bytes.value_or(""));
    if (text.empty())
        return;
    addText(text);
    _add(hexText(text, LowerCase), hexText(replaced(text), LowerCase));
}

void Secrets::addHostName(const std::string& field) {
    const std::string name = secretIn(field);
    const std::size_t dot = name.find('.');
    if (dot == std::string::npos || dot == 0 || dot + 1 == name.size()) {
        addText(name);
        return;
    }
    // Each part becomes in the whole what it becomes alone.
    const std::string host = name.substr(0, dot);
    const std::string domain = name.substr(dot + 1);
    addText(host);
    if (domain.find('.') != std::string::npos)
        addText(domain);
    const auto part = [this](const std::string& text) {
        return isPlaceholder(text) ? text : _pseudonyms.ofText(text);
    };
    _add(name, part(host) + '.' + part(domain));
}

void Secrets::replaceIn(std::string& content) const {
    std::string result;
    for (std::size_t at = 0; at < content.size();) {
        const auto& candidates = _replacements[static_cast<unsigned char>(content[at])];
        const auto found =
            std::find_if(candidates.begin(), candidates.end(), [&](const auto& candidate) {
                return content.compare(at, candidate.first.size(), candidate.first) == 0;
            });
        if (found == candidates.end()) {
            result += content[at++];
        } else {
            result += found->second;
            at += found->first.size();
        }
    }
    content = result;
}

std::string Secrets::replaced(std::string text) const {
    replaceIn(text);
    return text;
}

}  // namespace QZ
