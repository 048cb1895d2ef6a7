// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Login.h"

struct evp_md_st;

namespace QZ {

// What of a login tells it from all others, without giving its password away: a hash with a key
// that only this process has. Throws Error where the system has no random numbers for the key, or
// no SHA-256. Any thread.
class LoginDigest {
public:
    LoginDigest();

    std::string of(const Login& login) const;

private:
    struct FreeHash {
        void operator()(evp_md_st* hash) const;
    };

    std::string _key;
    // Looked up once: to look it up costs more than to hash a login.
    std::unique_ptr<evp_md_st, FreeHash> _hash;
};

// The callers that were let in a short time ago, by the digests of their logins. Time is Clock's.
// One thread at a time.
class Remembered {
public:
    struct Limits {
        std::chrono::milliseconds time{60'000};
        std::size_t callers = 1024;
    };

    explicit Remembered(Limits limits) : _limits(limits) {}

    // The revision is that of the passwords: what an older one let in is forgotten.
    void add(const std::string& digest, const Caller& caller, std::uint64_t revision);
    std::optional<Caller> find(const std::string& digest, std::uint64_t revision);

private:
    struct Entry {
        Caller caller;
        std::int64_t until;
        std::uint64_t revision;
    };

    void _makeRoom(std::int64_t now);

    const Limits _limits;
    std::map<std::string, Entry> _entries;
};

}  // namespace QZ
