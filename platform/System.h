// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

class System {
public:
    // The host name; of another machine, the first line of its host name file. Empty when unknown.
    static std::wstring getName();
};

}  // namespace QZ
