// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Authenticator.h"
#include "CommandLine.h"

namespace QZ {

// Who may ask the server, by what it is told: the users of a credentials file, those of the system,
// or else one user with that password, who may all. Throws Error for want of what it needs.
std::unique_ptr<Authenticator> makeAuthenticator(
    const ServeRequest& request, const std::string& password,
    const std::function<void(const std::string& line)>& log);

// Whether there is one user with one password, rather than many.
bool hasOneUser(const ServeRequest& request);

}  // namespace QZ
