// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "PasswordSource.h"

namespace QZ {

// One user with one password, who may all.
class OnePassword final : public PasswordSource {
public:
    OnePassword(std::string user, std::string password);

    Finding check(const Login& login) override;
    std::optional<Rights> rightsOf(const std::string& user) override;

private:
    const std::string _user;
    const std::string _password;
};

}  // namespace QZ
