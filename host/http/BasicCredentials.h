// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace QZ {

struct BasicCredentials {
    std::string user;
    std::string password;
};

// Reads the value of an Authorization header of the Basic scheme (RFC 7617). None for another
// scheme, and for what is no base64 of a user, a colon and a password.
std::optional<BasicCredentials> parseBasicCredentials(std::string_view header);

// The value of such a header.
std::string basicAuthorization(const BasicCredentials& credentials);

// Whether the texts are equal, in a time that does not tell where they differ.
bool equalSecrets(std::string_view left, std::string_view right);

}  // namespace QZ
