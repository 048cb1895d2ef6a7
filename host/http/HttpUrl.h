// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace QZ {

// A URL's parts, nothing decoded and nothing checked (RFC 3986, 3).
struct HttpUrl {
    std::string scheme;                   // in lower case
    std::optional<std::string> userInfo;  // what stands before the authority's last "@"
    std::string host;                     // an IPv6 address without its brackets
    bool isBracketed = false;
    std::string port;    // what stands behind the host, with its ":"
    std::string target;  // from the first "/" on; empty where there is none
};

// None where the text has no "://". A "[" that no "]" follows is the host's first character.
std::optional<HttpUrl> splitUrl(std::string_view text);

// The number of the port, the standard one where none is written; 0 for what is none from 1 to
// 65535.
std::uint16_t portOf(const HttpUrl& url, std::uint16_t standard);

// "host:port", with brackets around an IPv6 address.
std::string hostAndPort(const std::string& host, std::uint16_t port);

}  // namespace QZ
