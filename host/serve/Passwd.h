// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "CommandLine.h"

namespace QZ {

// Gives a user of a credentials file a password, which is read from standard input, or forgets the
// user. Throws UsageError for a name or rights that make no sense, Error where the password or the
// file does not do, or there is nobody to forget.
ExitStatus changePassword(const PasswdRequest& request);

}  // namespace QZ
