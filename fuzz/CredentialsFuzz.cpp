// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cstdint>
#include <cstdlib>
#include <string>

#include "CredentialsText.h"

// Whatever the file holds: a user that it names is there alone, and is gone once he is taken out.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace QZ;
    std::string text(reinterpret_cast<const char*>(data), size);
    const CredentialsText before = parseCredentials(text);
    for (const Credentials& user : before.users) {
        text = withUser(text, {user.user, user.hash, Rights::all()});
    }
    const CredentialsText after = parseCredentials(text);
    if (after.users.size() != before.users.size()) {
        std::abort();
    }
    for (const Credentials& user : after.users) {
        text = withoutUser(text, user.user);
        if (!(user.rights == Rights::all())) {
            std::abort();
        }
    }
    if (!parseCredentials(text).users.empty()) {
        std::abort();
    }
    return 0;
}
