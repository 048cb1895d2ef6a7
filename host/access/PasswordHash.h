// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// Hashes as crypt(5) describes them. Each takes some milliseconds, on purpose.

// A new hash by yescrypt. Throws Error for a password that no hash can be made of: an empty one,
// one with a zero byte or beyond 512 bytes.
std::string hashPassword(const std::string& password);

// False for what cannot be a password either.
bool matchesHash(const std::string& password, const std::string& hash);

// Whether the text is a hash by a method that is still good.
bool isPasswordHash(const std::string& text);

// Whether the texts are equal, in a time that does not tell where they differ.
bool equalHashes(const std::string& left, const std::string& right);

}  // namespace QZ
