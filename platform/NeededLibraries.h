// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// The names of the libraries that a library of this program's word size is linked to, in its own
// order, without loading any: what a library runs when it is loaded cannot be undone. Empty where
// the file is missing, damaged or something else; the loader knows why better.
std::vector<std::string> neededLibraries(const std::string& file);

}  // namespace QZ
