// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// Where a model lies: its *.mof files, by their paths and in the order of their names. Throws Error
// where the folder cannot be read or has none.
std::vector<std::string> modelFiles(const std::string& folder);

// Those of a folder inside it, which may be missing and may have none.
std::vector<std::string> innerModelFiles(const std::string& folder, const char* inner);

}  // namespace QZ
