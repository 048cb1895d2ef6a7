// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// The language that people are answered in.
class Locale {
public:
    // The language of the calling thread's LanguageScope, else the environment's (LC_ALL,
    // LC_MESSAGES, LANG): a language, and where it says more a script and a region, joined by
    // underscores as in "de", "pt_BR" or "zh_Hans". "en" where nothing is said.
    static std::string getLanguageId();
};

// Gives the calling thread a language for as long as it lives. Scopes nest.
class LanguageScope {
public:
    // A tag as in HTTP's Accept-Language ("de-AT") or an id of Locale's. What is neither, such as
    // an empty text or "*", leaves the language as it is.
    explicit LanguageScope(const std::string& tag);
    ~LanguageScope();
    LanguageScope(const LanguageScope&) = delete;
    LanguageScope& operator=(const LanguageScope&) = delete;

private:
    friend class Locale;

    std::string _languageId;
    const LanguageScope* _outer;
};

}  // namespace QZ
