// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Access.h"

#include "CredentialsFile.h"
#include "OnePassword.h"
#include "PamPasswords.h"

namespace QZ {

bool hasOneUser(const ServeRequest& request) {
    return request.access.credentialsFile.empty() && !request.access.usesPam;
}

std::unique_ptr<Authenticator> makeAuthenticator(
    const ServeRequest& request, const std::string& password,
    const std::function<void(const std::string& line)>& log) {
    const AccessRequest& access = request.access;
    const RightGroups groups{access.readers, access.writers, access.subscribers};
    std::shared_ptr<PasswordSource> passwords;
    if (access.usesPam) {
        PamService service;
        service.folder = access.pamFolder;
        passwords = std::make_shared<PamPasswords>(service, groups, log);
    } else if (!access.credentialsFile.empty()) {
        passwords = std::make_shared<CredentialsFile>(access.credentialsFile, log);
    } else {
        passwords = std::make_shared<OnePassword>(request.user, password);
    }
    return std::make_unique<Authenticator>(std::move(passwords), groups, Authenticator::Limits(),
                                           log);
}

}  // namespace QZ
