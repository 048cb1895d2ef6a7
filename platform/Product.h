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

    // Makes the data folder, with the folders above it, for their owner only. True when it stands;
    // else the reason is a sentence for the administrator.
    static bool makeDataDirectory(std::string& reason) noexcept;
};

}  // namespace QZ
