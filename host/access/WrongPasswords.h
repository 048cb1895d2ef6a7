// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <mutex>
#include <string>

#include "Attempts.h"

namespace QZ {

// Slows who guesses: a user's password from an address, or any users' from there. Any thread.
class WrongPasswords {
public:
    struct Limits {
        Attempts::Limits ofUser;
        // Many may share an address: more are free, and nobody is kept out for long.
        Attempts::Limits ofAddress{30, std::chrono::seconds(1), std::chrono::seconds(10)};
    };

    WrongPasswords() : WrongPasswords(Limits()) {}
    explicit WrongPasswords(const Limits& limits)
        : _ofUser(limits.ofUser), _ofAddress(limits.ofAddress) {}

    // As those of Attempts. Of the address a right password takes its own attempt back alone: who
    // has one could go on guessing others.
    std::chrono::milliseconds begin(const std::string& peer, const std::string& user);
    void succeed(const std::string& peer, const std::string& user);
    void takeBack(const std::string& peer, const std::string& user);
    unsigned count(const std::string& peer, const std::string& user) const;

private:
    mutable std::mutex _mutex;
    Attempts _ofUser;
    Attempts _ofAddress;  // of no user
};

}  // namespace QZ
