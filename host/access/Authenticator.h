// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "CheckPool.h"
#include "GroupRights.h"
#include "Login.h"
#include "PasswordSource.h"
#include "Remembered.h"
#include "WrongPasswords.h"

namespace QZ {

// Says who asks: by a password that a source knows, on a few threads of its own; by a certificate
// for one of that source's users; or by what the kernel says of a local client. Who was let in is
// remembered for a short time; wrong passwords are counted and slowed. Any thread may call.
class Authenticator {
public:
    struct Limits {
        CheckPool::Limits pool;
        Remembered::Limits remembered;
        bool allowsPlain = false;  // of other machines
    };
    using Log = std::function<void(const std::string& line)>;

    // The groups are for local clients. Wrong passwords are counted with those that others counted
    // there before, where that is given. Throws Error where the system has no threads or random
    // numbers to give.
    Authenticator(std::shared_ptr<PasswordSource> passwords, RightGroups groups, Limits limits,
                  Log log, std::shared_ptr<WrongPasswords> wrong = nullptr);
    // Those whose checks wait are told that it is busy.
    ~Authenticator();

    // As Authenticate in Login.h. A password counts where one is sent, before a certificate, and
    // that before a local client's user. What fails for want of memory is answered with Busy.
    std::optional<Verdict> authenticate(const Login& login, const TakeVerdict& later) noexcept;

private:
    class Core;

    std::optional<Verdict> _start(const Login& login, const TakeVerdict& later);

    const bool _allowsPlain;
    std::shared_ptr<Core> _core;
    CheckPool _pool;
};

}  // namespace QZ
