// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Locale.h"

#include <cstdlib>

namespace QZ {

namespace {

// Trivial, so that a thread's end needs nothing of this module, which may be unloaded by then.
thread_local const LanguageScope* _current = nullptr;

constexpr std::size_t MaximumLength = 64;

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// The id that a tag, or a locale's name such as "de_DE.UTF-8@euro", stands for; empty where it
// names no language.
std::string languageOf(const std::string& tag) {
    std::string id;
    for (char character : tag) {
        if (character == '.' || character == '@')
            break;
        if (character == '-')
            character = '_';
        if (!isLetter(character) && character != '_' && (character < '0' || character > '9'))
            return {};
        id += character;
    }
    // ISO 639: two or three letters. "C" and "POSIX" are no languages.
    const std::size_t letters = id.substr(0, id.find('_')).size();
    const bool isLanguage = letters == 2 || letters == 3;
    return isLanguage && isLetter(id[0]) && id.size() <= MaximumLength ? id : std::string();
}

std::string environmentLanguage() {
    // The first that is set decides (POSIX, 8.2), also where it is "C".
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* const value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            return languageOf(value);
    }
    return {};
}

}  // namespace

std::string Locale::getLanguageId() {
    std::string language = _current != nullptr ? _current->_languageId : environmentLanguage();
    return language.empty() ? "en" : language;
}

LanguageScope::LanguageScope(const std::string& tag)
    : _languageId(languageOf(tag)), _outer(_current) {
    if (_languageId.empty())
        _languageId = _outer != nullptr ? _outer->_languageId : environmentLanguage();
    _current = this;
}

LanguageScope::~LanguageScope() {
    _current = _outer;
}

}  // namespace QZ
