// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ServeRequest.h"

namespace QZ {

// Reads a configuration file of "serve": lines "key = value", empty ones, and comments that begin
// with "#". Throws UsageError with the file's name and the number of the line that makes no sense.
ServeValues parseServeConfig(const std::string& text, const std::string& file);

// What the command line and its file, which is read, say together: of a key that both have the
// command line counts. Throws UsageError as above, and Error for a file that cannot be read.
ServeValues readServeValues(const ServeArguments& arguments);

}  // namespace QZ
