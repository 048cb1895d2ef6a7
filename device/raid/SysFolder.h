// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace QZ {

// Devices as the kernel shows them: folders of attributes, one small file for each. What is not
// there, cannot be read or comes and goes meanwhile counts as missing; nothing here throws but for
// want of memory.

// The path of an entry of a folder.
std::string pathIn(const std::string& folder, const std::string& name);

// An attribute's text without the white space and zeros around it; empty where there is none.
std::string readAttribute(const std::string& folder, const std::string& name);

// An attribute of bytes, as it is.
std::string readBytes(const std::string& folder, const std::string& name);

// An attribute that is a number to that base, with or without a leading "0x".
std::optional<unsigned> readNumber(const std::string& folder, const std::string& name, int base);

bool hasEntry(const std::string& folder, const std::string& name);

// The names in a folder, numbers in them by value: "sda2" before "sda10".
std::vector<std::string> entriesOf(const std::string& folder);

}  // namespace QZ
