// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// Whom a hostile client attacks, and as whom; it comes from 127.0.0.2.
struct Target {
    std::uint16_t port = 0;
    std::string userInfo;  // "user:password" that is let in
};

// One kind of them: does its worst until it is told to end. How often it did is counted.
struct HostileClient {
    const char* name;
    std::uint64_t (*run)(const Target& target, const std::function<bool()>& goesOn);
};

const std::vector<HostileClient>& hostileClients();
