// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Authenticator.h"

#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "Error.h"
#include "LogText.h"

namespace QZ {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

// For who finds all places taken.
constexpr seconds BUSY_TIME{2};

// Rounded up: who comes back then is not too early.
Verdict _tooOften(milliseconds wait) {
    return {Verdict::TooOften, {}, std::chrono::duration_cast<seconds>(wait + milliseconds(999))};
}

Verdict _accepted(Caller caller) {
    return {Verdict::Accepted, std::move(caller), seconds(0)};
}

Verdict _busy() {
    return {Verdict::Busy, {}, BUSY_TIME};
}

}  // namespace

// What a check that is under way needs; it outlives the authenticator where the check does.
class Authenticator::Core {
public:
    Core(std::shared_ptr<PasswordSource> passwords, RightGroups groups, const Limits& limits,
         Log log, std::shared_ptr<WrongPasswords> wrong)
        : _passwords(std::move(passwords)),
          _groups(std::move(groups)),
          _log(std::move(log)),
          _wrong(wrong ? std::move(wrong) : std::make_shared<WrongPasswords>()),
          _remembered(limits.remembered) {}

    std::string digestOf(const Login& login) const { return _digest.of(login); }

    // A verdict that needs no check, or none: the check is the caller's to start where `isFirst`
    // says so, else one of the same login is under way.
    std::optional<Verdict> begin(const std::string& digest, const Login& login,
                                 const TakeVerdict& later, bool& isFirst) {
        const std::uint64_t revision = _passwords->revision();
        const std::lock_guard<std::mutex> lock(_mutex);
        if (const auto caller = _remembered.find(digest, revision)) {
            return _accepted(*caller);
        }
        const auto pending = _pending.find(digest);
        isFirst = pending == _pending.end();
        if (!isFirst) {
            pending->second.push_back(later);
            return std::nullopt;
        }
        if (login.hasPassword) {
            const milliseconds wait = _wrong->begin(login.peer, login.user);
            if (wait.count() > 0) {
                return _tooOften(wait);
            }
        }
        _pending[digest].push_back(later);
        return std::nullopt;
    }

    // On a thread of the pool.
    void check(const std::string& digest, const Login& login) noexcept {
        const std::uint64_t revision = _passwords->revision();
        Verdict verdict = _busy();
        try {
            verdict = login.hasPassword ? _checkPassword(login)
                      : !login.certificateName.empty()
                          ? _checkCertificate(login.certificateName)
                          : _accepted(localCaller(*login.localUser, _groups));
        } catch (const std::exception& error) {
            _log("cannot check " + textForLog(login.user) + ": " + error.what());
        }
        for (const TakeVerdict& take : _end(digest, login, verdict, revision)) {
            take(verdict);
        }
    }

    // There is no place for the check, or none any more: who else waits for it by now is told, too.
    void giveUp(const std::string& digest, const Login& login) noexcept {
        for (const TakeVerdict& take : _end(digest, login, _busy(), 0)) {
            take(_busy());
        }
    }

private:
    Verdict _checkCertificate(const std::string& user) {
        const std::optional<Rights> rights = _passwords->rightsOf(user);
        return rights ? _accepted({user, *rights, Caller::Certificate}) : Verdict{};
    }

    Verdict _checkPassword(const Login& login) {
        const PasswordSource::Finding finding = _passwords->check(login);
        switch (finding.state) {
            case PasswordSource::Finding::Right:
                return _accepted({login.user, finding.rights, Caller::Password});
            case PasswordSource::Finding::Wrong:
                return {Verdict::Refused, {}, seconds(0)};
            default:
                return _busy();
        }
    }

    // Draws the conclusions; who waits for the verdict.
    std::vector<TakeVerdict> _end(const std::string& digest, const Login& login,
                                  const Verdict& verdict, std::uint64_t revision) {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (verdict.kind == Verdict::Accepted) {
            _remembered.add(digest, verdict.caller, revision);
        }
        if (login.hasPassword) {
            _count(login, verdict);
        }
        return std::move(_pending.extract(digest).mapped());
    }

    void _count(const Login& login, const Verdict& verdict) {
        if (verdict.kind == Verdict::Accepted) {
            _wrong->succeed(login.peer, login.user);
        } else if (verdict.kind == Verdict::Busy) {
            _wrong->takeBack(login.peer, login.user);
        } else {
            _log("wrong password for " + textForLog(login.user) + " from " + login.peer +
                 ", number " + std::to_string(_wrong->count(login.peer, login.user)));
        }
    }

    const std::shared_ptr<PasswordSource> _passwords;
    const RightGroups _groups;
    const Log _log;
    const LoginDigest _digest;
    std::mutex _mutex;
    const std::shared_ptr<WrongPasswords> _wrong;
    Remembered _remembered;
    std::map<std::string, std::vector<TakeVerdict>> _pending;  // by digest
};

Authenticator::Authenticator(std::shared_ptr<PasswordSource> passwords, RightGroups groups,
                             Limits limits, Log log, std::shared_ptr<WrongPasswords> wrong)
    : _allowsPlain(limits.allowsPlain),
      _core(std::make_shared<Core>(std::move(passwords), std::move(groups), limits, std::move(log),
                                   std::move(wrong))),
      _pool(limits.pool) {}

Authenticator::~Authenticator() = default;

std::optional<Verdict> Authenticator::authenticate(const Login& login,
                                                   const TakeVerdict& later) noexcept {
    if (!login.isEncrypted && !_allowsPlain && !isOfThisMachine(login)) {
        return Verdict{Verdict::TooPlain, {}, seconds(0)};
    }
    if (!login.hasPassword && login.certificateName.empty() && !login.localUser) {
        return Verdict{};
    }
    try {
        return _start(login, later);
    } catch (const std::exception&) {
        return _busy();
    }
}

std::optional<Verdict> Authenticator::_start(const Login& login, const TakeVerdict& later) {
    const std::string digest = _core->digestOf(login);
    bool isFirst = false;
    std::optional<Verdict> verdict = _core->begin(digest, login, later, isFirst);
    if (verdict || !isFirst) {
        return verdict;
    }
    bool hasPlace = false;
    try {
        hasPlace = _pool.submit(
            clientOf(login.peer), [core = _core, digest, login] { core->check(digest, login); },
            [core = _core, digest, login] { core->giveUp(digest, login); });
    } catch (const std::bad_alloc&) {
        // As if there were no place.
    }
    if (!hasPlace) {
        _core->giveUp(digest, login);
    }
    return std::nullopt;
}

}  // namespace QZ
