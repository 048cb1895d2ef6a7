// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ResourceString.h"

#include <array>
#include <cstdarg>
#include <cwchar>

#include "MessageCatalogue.h"
#include "MessageInsertions.h"
#include "Text.h"

namespace QZ {

namespace {

std::wstring textOf(const std::string& library, const std::string& key, std::wstring otherwise) {
    const std::size_t slash = library.rfind('/');
    const std::string folder = library.substr(0, slash == std::string::npos ? 0 : slash);
    const std::string language = library.substr(slash + 1);
    const auto english = MessageCatalogue(folder, MessageCatalogue::Root).find(key);
    if (!english)
        return otherwise;
    if (language == MessageCatalogue::Root)
        return *english;
    const auto translated = MessageCatalogue(folder, language).find(key);
    const bool isFit = translated && messageInsertions(*translated) == messageInsertions(*english);
    return isFit ? *translated : *english;
}

}  // namespace

ResourceString::ResourceString(const std::wstring& library, const std::wstring& key)
    : _text(textOf(make_string(library), make_string(key), key)) {}

bool ResourceString::_takes(const std::string& signature) const {
    return messageInsertions(_text) == signature;
}

// NOLINTNEXTLINE(cert-dcl50-cpp): vswprintf takes what such a function has
std::wstring ResourceString::_print(const wchar_t* format, ...) {
    std::array<wchar_t, MaximumLength + 1> buffer{};
    std::va_list values;
    va_start(values, format);
    // Too long a text is reported as a failure, with what fits in the buffer.
    (void)std::vswprintf(buffer.data(), buffer.size(), format, values);
    va_end(values);
    buffer.back() = L'\0';
    return buffer.data();
}

}  // namespace QZ
