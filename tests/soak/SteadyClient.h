// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// An honest client from 127.0.0.1, that asks for the lease again and again, a little later each
// time, over a connection that it keeps for a while.
class SteadyClient {
public:
    struct Result {
        std::vector<double> milliseconds;  // that each answer took
        std::vector<std::string> wrong;    // what came in place of an answer

        // That all but so many of a thousand were answered within.
        double within(std::size_t perThousand) const;
        void add(const Result& other);
    };

    SteadyClient(std::uint16_t port, std::string userInfo)
        : _port(port), _userInfo(std::move(userInfo)) {}

    Result run(const std::function<bool()>& goesOn) const;

private:
    const std::uint16_t _port;
    const std::string _userInfo;
};
