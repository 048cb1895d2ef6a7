// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ListenerUrl.h"

#include "Error.h"
#include "HttpUrl.h"

namespace QZ {

namespace {

constexpr const char* HOST_CHARACTERS =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_";
constexpr const char* ADDRESS_CHARACTERS = "abcdefABCDEF0123456789:.";

[[noreturn]] void _fail(const std::string& text) {
    throw Error("a listener's URL has the form http://host:port/path, not \"" + text + "\"");
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
    const std::optional<HttpUrl> parts = splitUrl(text);
    if (!parts || (parts->scheme != "http" && parts->scheme != "https")) {
        _fail(text);
    }
    ListenerUrl url;
    url.isSecure = parts->scheme == "https";
    url.host = parts->host;
    url.port = portOf(*parts, url.isSecure ? 5989 : 5988);
    url.target = parts->target.empty() ? url.target : parts->target;
    const char* const allowed = parts->isBracketed ? ADDRESS_CHARACTERS : HOST_CHARACTERS;
    if (parts->userInfo || url.host.empty() || url.port == 0 ||
        url.host.find_first_not_of(allowed) != std::string::npos || !_isTarget(url.target)) {
        _fail(text);
    }
    return url;
}

}  // namespace QZ
