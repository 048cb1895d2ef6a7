// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// What a line of a description may say. Both answer with the end of a sentence, "is no key" or "it
// is a number from 0 to 65535".

// Null for a key that there is.
const char* whyWrongKey(const std::string& key);

// Empty for a value that the key, one that there is, may have.
std::string whyWrongValue(const std::string& key, const std::string& value);
