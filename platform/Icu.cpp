// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Icu.h"

#include <dlfcn.h>

#include <cstdio>
#include <type_traits>

namespace QZ {

const Icu* Icu::get() {
    static const Icu icu;
    return icu._isWhole ? &icu : nullptr;
}

// ICU keeps what it has opened until the process ends, so it is never unloaded.
Icu::Icu() {
    void* const library =
        dlopen("libicuuc.so." U_ICU_VERSION_SHORT, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        (void)std::fprintf(stderr, "No texts of messages: %s\n", dlerror());
        return;
    }
    _isWhole = true;
    const auto find = [&](auto& function, const char* name) {
        function = reinterpret_cast<std::decay_t<decltype(function)>>(dlsym(library, name));
        _isWhole = _isWhole && function != nullptr;
    };
// The headers add ICU's version to the names: they are expanded first.
#define TAVQZ_TEXT(name) #name
#define TAVQZ_FIND(name) find(name, TAVQZ_TEXT(name))
    TAVQZ_FIND(u_strToUTF8);
    TAVQZ_FIND(uloc_addLikelySubtags);
    TAVQZ_FIND(uloc_getCountry);
    TAVQZ_FIND(uloc_getLanguage);
    TAVQZ_FIND(uloc_getScript);
    TAVQZ_FIND(ures_close);
    TAVQZ_FIND(ures_getKey);
    TAVQZ_FIND(ures_getNextResource);
    TAVQZ_FIND(ures_getStringByKey);
    TAVQZ_FIND(ures_hasNext);
    TAVQZ_FIND(ures_openDirect);
    TAVQZ_FIND(ures_resetIterator);
#undef TAVQZ_FIND
#undef TAVQZ_TEXT
    dlclose(library);
}

}  // namespace QZ
