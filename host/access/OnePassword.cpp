// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "OnePassword.h"

#include <utility>

#include "PasswordHash.h"

namespace QZ {

OnePassword::OnePassword(std::string user, std::string password)
    : _user(std::move(user)), _password(std::move(password)) {}

PasswordSource::Finding OnePassword::check(const Login& login) {
    const bool isUser = equalHashes(_user, login.user);
    return equalHashes(_password, login.password) && isUser ? Finding{Finding::Right, Rights::all()}
                                                            : Finding{};
}

std::optional<Rights> OnePassword::rightsOf(const std::string& user) {
    return user == _user ? std::optional<Rights>(Rights::all()) : std::nullopt;
}

}  // namespace QZ
