// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ListenerUrl.h"

#include <charconv>

#include "Error.h"
#include "MofSyntax.h"

namespace QZ {

namespace {

constexpr const char* HOST_CHARACTERS =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_";
constexpr const char* ADDRESS_CHARACTERS = "abcdefABCDEF0123456789:.";

[[noreturn]] void _fail(const std::string& text) {
    throw Error("a listener's URL has the form http://host:port/path, not \"" + text + "\"");
}

std::uint16_t _port(const std::string& digits, const std::string& text) {
    std::uint16_t port = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, port);
    if (error != std::errc() || stop != end || port == 0) {
        _fail(text);
    }
    return port;
}

// What may stand in a request line as it is.
bool _isTarget(const std::string& target) {
    for (const char c : target) {
        if (c <= ' ' || c > '~' || c == '"' || c == '#') {
            return false;
        }
    }
    return true;
}

}  // namespace

ListenerUrl parseListenerUrl(const std::string& text) {
    const std::size_t colon = text.find("://");
    if (colon == std::string::npos) {
        _fail(text);
    }
    ListenerUrl url;
    const std::string scheme = text.substr(0, colon);
    url.isSecure = sameName(scheme, "https");
    url.port = url.isSecure ? 5989 : 5988;
    const std::size_t begin = colon + 3;
    const std::size_t slash = std::min(text.find('/', begin), text.size());
    std::string authority = text.substr(begin, slash - begin);
    if (slash != text.size()) {
        url.target = text.substr(slash);
    }
    const bool isV6 = !authority.empty() && authority[0] == '[';
    const std::size_t hostEnd = isV6 ? authority.find(']') : authority.find(':');
    url.host = isV6 && hostEnd != std::string::npos ? authority.substr(1, hostEnd - 1)
                                                    : authority.substr(0, hostEnd);
    const std::size_t portAt = isV6 && hostEnd != std::string::npos ? hostEnd + 1 : hostEnd;
    if (portAt < authority.size()) {
        if (authority[portAt] != ':') {
            _fail(text);
        }
        url.port = _port(authority.substr(portAt + 1), text);
    }
    const char* const allowed = isV6 ? ADDRESS_CHARACTERS : HOST_CHARACTERS;
    if ((!url.isSecure && !sameName(scheme, "http")) || url.host.empty() ||
        url.host.find_first_not_of(allowed) != std::string::npos || !_isTarget(url.target)) {
        _fail(text);
    }
    return url;
}

}  // namespace QZ
