// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

// A request that is wrong in one way, and what the server has to say to it.
struct BadInput {
    const char* name;
    std::string bytes;
    std::string status;  // of HTTP: the answer begins so
    std::string text;    // somewhere in the answer
};

// As a user who may read: "user:password".
std::vector<BadInput> badInput(const std::string& userInfo);
