// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Whom a hostile client attacks, as whom, and where it comes from.
struct Target {
    std::uint16_t port = 0;
    std::string userInfo;  // "user:password" that is let in
    const char* from = "127.0.0.2";
};

struct HostileResult {
    std::uint64_t times = 0;         // that it did its worst
    std::vector<std::string> wrong;  // what it was told that it should not have been
    std::string text;                // more about it
};

// One kind of them: does its worst until it is told to end.
struct HostileClient {
    const char* name;
    // Those who hold connections use up what is one address's own: the others come from elsewhere.
    const char* from;
    HostileResult (*run)(const Target& target, const std::function<bool()>& goesOn);
};

const std::vector<HostileClient>& hostileClients();
