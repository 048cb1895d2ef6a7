// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

// What a server's process takes of the machine at a moment.
struct ServerGauge {
    std::size_t kilobytes = 0;  // in memory
    std::size_t threads = 0;
    std::size_t descriptors = 0;

    // All zero where there is no such process, or none of ours.
    static ServerGauge of(pid_t process);

    std::string text() const;
    // Each the larger one.
    ServerGauge most(const ServerGauge& other) const;
};
