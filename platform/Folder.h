// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

bool isFolder(const std::string& path);

// Makes a folder in one that stands, for its owner alone; one that stands is left as it is. Says
// why that failed, nothing where the folder stands.
std::string makeFolder(const std::string& path);

}  // namespace QZ
