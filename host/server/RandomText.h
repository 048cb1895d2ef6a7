// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

namespace QZ {

// So many random bytes, at most 256, as hexadecimal digits: a text that nobody can guess. Throws
// Error where the system has none.
std::string randomText(std::size_t bytes);

}  // namespace QZ
