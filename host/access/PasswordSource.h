// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Login.h"

namespace QZ {

// Somebody who knows passwords. Any thread may call.
class PasswordSource {
public:
    struct Finding {
        enum State {
            Right,
            Wrong,
            Unknown
        };  // Unknown: it could not be found out, the log says why

        State state = Wrong;
        Rights rights;  // when Right
    };

    virtual ~PasswordSource() = default;

    // Takes the time it takes: seconds, for a wrong password. Never throws but for want of memory.
    virtual Finding check(const Login& login) = 0;

    // What somebody may do who has proved otherwise who it is; none where that is no user. As slow,
    // and as safe.
    virtual std::optional<Rights> rightsOf(const std::string& user) = 0;

    // Another number when what it found before may not hold any more. Takes no time.
    virtual std::uint64_t revision() { return 0; }
};

}  // namespace QZ
