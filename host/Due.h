// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Commands.h"
#include "Operations.h"

namespace QZ {

// The days of "90d" or "90". Throws UsageError for anything else.
int parseDays(const std::string& text);

// What runs out within so many days, worst first: a line each for people, else in the format "json"
// or "csv". An end date's own day still counts, so that it is 0 days away. The status is what
// monitoring plug-ins end with: 0 nothing is due, 1 something is, 2 something has run out.
CommandResult listDue(Operations& server, int within, const std::string& format);

}  // namespace QZ
