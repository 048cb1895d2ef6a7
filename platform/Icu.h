// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <unicode/uloc.h>
#include <unicode/ures.h>
#include <unicode/ustring.h>

namespace QZ {

// ICU's functions, under their names. The library is loaded when it is first asked for: most
// programs never need a message, and loading it takes as long as all else about their start.
class Icu {
public:
    // Null where the library is missing, which is said once on standard error.
    static const Icu* get();

// Qualified, as each is named after what gives it its type.
// NOLINTNEXTLINE(bugprone-macro-parentheses): no name is declared in parentheses
#define TAVQZ_ICU_FUNCTION(name) decltype(&::name) name = nullptr
    TAVQZ_ICU_FUNCTION(u_strToUTF8);
    TAVQZ_ICU_FUNCTION(uloc_addLikelySubtags);
    TAVQZ_ICU_FUNCTION(uloc_getCountry);
    TAVQZ_ICU_FUNCTION(uloc_getLanguage);
    TAVQZ_ICU_FUNCTION(uloc_getScript);
    TAVQZ_ICU_FUNCTION(ures_close);
    TAVQZ_ICU_FUNCTION(ures_getKey);
    TAVQZ_ICU_FUNCTION(ures_getNextResource);
    TAVQZ_ICU_FUNCTION(ures_getStringByKey);
    TAVQZ_ICU_FUNCTION(ures_hasNext);
    TAVQZ_ICU_FUNCTION(ures_openDirect);
    TAVQZ_ICU_FUNCTION(ures_resetIterator);
#undef TAVQZ_ICU_FUNCTION

private:
    Icu();

    bool _isWhole = false;
};

}  // namespace QZ
