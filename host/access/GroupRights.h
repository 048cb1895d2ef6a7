// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>

#include "Login.h"

namespace QZ {

// The Unix groups whose members have each right.
struct RightGroups {
    std::string readers = "tavqz-readers";
    std::string writers = "tavqz-writers";
    std::string subscribers = "tavqz-subscribers";
};

// None for a user whom the system does not know. Asks the system's databases, which may lie on
// another machine: it may take its time.
std::optional<Rights> rightsOfUser(const std::string& user, const RightGroups& groups);

// A local user's name, and his rights: all for root and for the user that this process runs as. A
// user without a name goes by his number, and has no rights but those.
Caller localCaller(uid_t user, const RightGroups& groups);

}  // namespace QZ
