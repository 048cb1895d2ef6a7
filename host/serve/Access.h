// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "Authenticator.h"
#include "ServeRequest.h"

namespace QZ {

// Whether there is one user with one password, rather than many.
bool hasOneUser(const ServeRequest& request);

// Who may ask the server, by what it was told last: the users of a credentials file, those of the
// system, or else one user with one password, who may all.
class Access {
public:
    using Log = std::function<void(const std::string& line)>;

    // Throws UsageError for a user's name that makes no sense, Error for want of what it needs.
    Access(const ServeRequest& request, Log log);

    // As Authenticate in Login.h. Any thread.
    std::optional<Verdict> authenticate(const Login& login, const TakeVerdict& later);

    // From now on as that request says; throws as above, then all stays as it was. One thread at a
    // time.
    void renew(const ServeRequest& request);

    // "user:password@" for a URL, without the password where that is in a file: it is known to who
    // needs it, and stands in no log. Empty where there are many users.
    std::string userInfo() const { return _userInfo; }

private:
    std::shared_ptr<Authenticator> _make(const ServeRequest& request);

    const Log _log;
    const std::string _madePassword;
    const std::shared_ptr<WrongPasswords> _wrong;
    std::string _userInfo;
    std::mutex _mutex;
    std::shared_ptr<Authenticator> _current;
    // Whom it was asked about before; until it says so it is not let go.
    std::shared_ptr<Authenticator> _former;
};

}  // namespace QZ
