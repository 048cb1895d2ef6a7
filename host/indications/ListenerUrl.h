// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace QZ {

// Where a listener takes alerts.
struct ListenerUrl {
    bool isSecure = false;
    std::string host;  // an IPv6 address without its brackets
    std::uint16_t port = 0;
    std::string target = "/";
};

// Reads "http://host:port/path"; "https" as well. Left out, the port is 5988 or 5989. Throws Error
// with a sentence for anything else, a user or a password too: the destination is for all to read.
ListenerUrl parseListenerUrl(const std::string& text);

}  // namespace QZ
