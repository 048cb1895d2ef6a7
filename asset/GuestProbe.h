// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// The UUID that this machine has as an unprivileged Xen guest, asked of the guest probe library
// beside the working folder; empty where there is no such library or this is no guest.
//
// Loads the library for the call and lets it go again; the library's code runs in this process.
std::string ReadGuestUuid();

}  // namespace QZ
