// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Access.h"

#include <utility>

#include "CommandLine.h"
#include "Credentials.h"
#include "CredentialsFile.h"
#include "OnePassword.h"
#include "PamPasswords.h"

namespace QZ {

namespace {

void _checkUser(const std::string& user) {
    if (user.find_first_not_of(
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-") !=
        std::string::npos) {
        throw UsageError("user: a name of letters, digits, \".\", \"_\" and \"-\" is expected");
    }
}

Authenticator::Limits _limits(const ServeRequest& request) {
    Authenticator::Limits limits;
    limits.pool.threads = request.limits.checks;
    limits.pool.waiting = request.limits.waitingChecks;
    limits.allowsPlain = request.allowsPlain;
    return limits;
}

}  // namespace

bool hasOneUser(const ServeRequest& request) {
    return request.access.credentialsFile.empty() && !request.access.usesPam;
}

Access::Access(const ServeRequest& request, Log log)
    : _log(std::move(log)),
      _madePassword(makePassword()),
      _wrong(std::make_shared<WrongPasswords>()),
      _current(_make(request)) {}

std::shared_ptr<Authenticator> Access::_make(const ServeRequest& request) {
    const AccessRequest& access = request.access;
    const RightGroups groups{access.readers, access.writers, access.subscribers};
    std::shared_ptr<PasswordSource> passwords;
    std::string userInfo;
    if (access.usesPam) {
        PamService service;
        service.folder = access.pamFolder;
        passwords = std::make_shared<PamPasswords>(service, groups, _log);
    } else if (!access.credentialsFile.empty()) {
        passwords = std::make_shared<CredentialsFile>(access.credentialsFile, _log);
    } else {
        _checkUser(request.user);
        const bool isMade = request.passwordFile.empty();
        passwords = std::make_shared<OnePassword>(
            request.user, isMade ? _madePassword : readPassword(request.passwordFile));
        userInfo = request.user + (isMade ? ":" + _madePassword : "") + "@";
    }
    auto made = std::make_shared<Authenticator>(std::move(passwords), groups, _limits(request),
                                                _log, _wrong);
    _userInfo = userInfo;
    return made;
}

std::optional<Verdict> Access::authenticate(const Login& login, const TakeVerdict& later) {
    std::shared_ptr<Authenticator> current;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        current = _current;
    }
    return current->authenticate(login, later);
}

void Access::renew(const ServeRequest& request) {
    std::shared_ptr<Authenticator> made = _make(request);
    const std::lock_guard<std::mutex> lock(_mutex);
    std::swap(_former, _current);
    std::swap(_current, made);
}

}  // namespace QZ
