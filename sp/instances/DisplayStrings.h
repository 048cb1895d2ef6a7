// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ResourceString.h"

namespace QZ {

// The text of the product's message catalogue under that key, in the user's language. Looked up
// afresh at each call.
ResourceString localizedText(const std::wstring& key);

}  // namespace QZ
