// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "tavqz/AccessHelpers.h"

namespace QZ {

// Passes a text to addLogItem, under the name of the operation or class that it is from. Called
// from any thread, as often as wanted.
inline void logItem(const char* component, const char* text) {
    // addLogItem takes char* for its older callers' sake, and changes nothing.
    addLogItem(const_cast<char*>(component), const_cast<char*>(text));
}

inline void logItem(const char* component, const std::string& text) {
    logItem(component, text.c_str());
}

}  // namespace QZ
