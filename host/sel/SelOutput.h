// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "SelEvent.h"

namespace QZ {

// The log in a format: "json", "csv", else a table for people, with the texts of the catalogue for
// the language of the environment. What has no text is shown as its bytes.
std::string selText(const std::vector<SelEvent>& events, const std::string& format);

// The bytes alone: a line for each record, or in the format "json" or "csv" beside its number.
std::string selBytes(const std::vector<SelEvent>& events, const std::string& format);

}  // namespace QZ
