// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// This product on this machine.
class Product {
public:
    // The folder of our data files, ending in "/".
    static std::wstring getDataDirectory();

    // The build's version.
    static std::wstring getVersion();

    // A UUID that is this machine's for as long as its machine id lasts, and that does not disclose
    // it. Empty where there is no machine id.
    static std::wstring getUid();

    // The message catalogue that serves a language best, for ResourceString: the language's own,
    // its parent's ("de" for "de_AT", "zh_Hans" for "zh_CN"), else the English one. A component has
    // catalogues of its own; the empty name is for the module's.
    static std::wstring getResourceLibrary(const std::string& component,
                                           const std::string& languageId);

    // Whether that catalogue is in the language asked for, and not English for want of a better.
    static bool hasResourceLibrary(const std::string& component, const std::string& languageId);

    // Makes the data folder, with the folders above it, for their owner only. True when it stands;
    // else the reason is a sentence for the administrator.
    static bool makeDataDirectory(std::string& reason) noexcept;

    // Makes the data folder, and an empty file of that name in it, where they are missing. For use
    // while a library is being loaded, where nothing may escape: whether they stand, and what is
    // wrong is reported by the first operation that meets it.
    static bool makeDataFile(const wchar_t* name) noexcept;
};

}  // namespace QZ
