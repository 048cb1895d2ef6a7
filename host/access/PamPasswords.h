// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "GroupRights.h"
#include "PasswordSource.h"

namespace QZ {

// Whom PAM is asked as.
struct PamService {
    std::string name = "tavqz";
    std::string folder;  // of its file; empty: where the system keeps them
};

// The users whose passwords PAM takes and whose accounts it finds valid; their rights come from
// their groups. Where the process is not root, what the service's modules can find out is the
// modules' affair: pam_unix knows the passwords of its own user only.
class PamPasswords final : public PasswordSource {
public:
    using Log = std::function<void(const std::string& line)>;

    PamPasswords(PamService service, RightGroups groups, Log log);

    // pam_unix takes two seconds for a refusal.
    Finding check(const Login& login) override;
    // Of a user whom the system knows; whether his account is valid is not asked.
    std::optional<Rights> rightsOf(const std::string& user) override;

private:
    const PamService _service;
    const RightGroups _groups;
    const Log _log;
};

}  // namespace QZ
