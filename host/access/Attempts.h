// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace QZ {

// Counts wrong passwords by client address and user, and says how long to wait before the next.
// Time is Clock's. One thread at a time.
class Attempts {
public:
    struct Limits {
        unsigned free = 3;                      // before the first wait
        std::chrono::milliseconds first{1000};  // then twice as long after each
        std::chrono::milliseconds longest{60'000};
        std::chrono::milliseconds memory{15 * 60'000};  // without another attempt
        std::size_t entries = 4096;  // beyond, who comes first to be let in is forgotten
    };

    Attempts() : Attempts(Limits()) {}
    explicit Attempts(Limits limits) : _limits(limits) {}

    // Zero: the attempt is under way, and counts as a wrong one until it is taken back. Else it is
    // none, and does not count; so long from now on it may be one.
    std::chrono::milliseconds begin(const std::string& peer, const std::string& user);

    // The password was right: nothing of that user from there counts any more.
    void succeed(const std::string& peer, const std::string& user);

    // Nothing was found out about the password.
    void takeBack(const std::string& peer, const std::string& user);

    // Wrong ones, with those that are under way.
    unsigned count(const std::string& peer, const std::string& user) const;

    std::size_t size() const { return _entries.size(); }

private:
    using Key = std::pair<std::string, std::string>;
    struct Entry {
        unsigned count = 0;
        std::int64_t openAt = 0;
        std::int64_t last = 0;
    };

    std::chrono::milliseconds _waitAfter(unsigned count) const;
    void _makeRoom(std::int64_t now);

    const Limits _limits;
    std::map<Key, Entry> _entries;
};

}  // namespace QZ
