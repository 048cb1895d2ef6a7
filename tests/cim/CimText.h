// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <string>

// What GoogleTest can print and compare.
inline std::string text(const Pegasus::String& string) {
    return static_cast<const char*>(string.getCString());
}

// The message of the Exception that `call` throws; empty if it throws none.
template <class Call>
std::string thrownMessage(Call call) {
    try {
        call();
    } catch (const Pegasus::Exception& e) {
        return text(e.getMessage());
    }
    return std::string();
}
