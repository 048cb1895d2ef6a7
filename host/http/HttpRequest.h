// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Login.h"

namespace QZ {

// A request as it came, its body whole.
struct HttpRequest {
    std::string method;  // as sent: "POST"
    std::string target;  // "/cimom"
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    std::string peer;  // the client's address, without its port
    Caller caller;     // who was authenticated

    // The first header of that name, ignoring case; null where there is none.
    const std::string* header(std::string_view name) const;
};

}  // namespace QZ
