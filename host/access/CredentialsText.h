// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Rights.h"

namespace QZ {

// A user of a credentials file: "name:hash:rights", a line each. Empty lines and those that begin
// with "#" are comments.
struct Credentials {
    std::string user;
    std::string hash;  // by crypt(5)
    Rights rights;
};

struct CredentialsText {
    struct BadLine {
        std::size_t number;  // from 1
        std::string reason;  // which does not repeat what may be a secret
    };

    std::vector<Credentials> users;
    std::vector<BadLine> badLines;
};

// Reads what is good of any text. Of a name that comes twice the first counts.
CredentialsText parseCredentials(const std::string& text);

// The same text with that user's line replaced or added.
std::string withUser(const std::string& text, const Credentials& user);

// The same text without any line of that user. None is there where nothing differs.
std::string withoutUser(const std::string& text, const std::string& user);

// Whether such a line can have that name: UTF-8 or not, without ":" and control characters, not
// beginning with "#", of up to 256 bytes.
bool isUserName(const std::string& name);

}  // namespace QZ
