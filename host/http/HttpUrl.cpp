// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HttpUrl.h"

#include <algorithm>
#include <charconv>

namespace QZ {

namespace {

void _takeScheme(std::string_view text, HttpUrl& url) {
    for (const char c : text) {
        url.scheme += c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    }
}

void _takeAuthority(std::string_view text, HttpUrl& url) {
    // The last one: a password in which somebody forgot to encode it would else end up in the
    // host's name, and in messages.
    const std::size_t at = text.rfind('@');
    if (at != std::string_view::npos) {
        url.userInfo = text.substr(0, at);
        text.remove_prefix(at + 1);
    }
    const std::size_t bracket = text.find(']');
    url.isBracketed = !text.empty() && text[0] == '[' && bracket != std::string_view::npos;
    const std::size_t end = url.isBracketed ? bracket + 1 : std::min(text.find(':'), text.size());
    url.host = url.isBracketed ? text.substr(1, bracket - 1) : text.substr(0, end);
    url.port = text.substr(end);
}

}  // namespace

std::optional<HttpUrl> splitUrl(std::string_view text) {
    const std::size_t colon = text.find("://");
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    HttpUrl url;
    _takeScheme(text.substr(0, colon), url);
    text.remove_prefix(colon + 3);
    const std::size_t slash = std::min(text.find('/'), text.size());
    _takeAuthority(text.substr(0, slash), url);
    url.target = text.substr(slash);
    return url;
}

std::uint16_t portOf(const HttpUrl& url, std::uint16_t standard) {
    if (url.port.empty()) {
        return standard;
    }
    std::uint16_t port = 0;
    const char* const end = url.port.data() + url.port.size();
    const auto [stop, error] = std::from_chars(url.port.data() + 1, end, port);
    return url.port[0] == ':' && error == std::errc() && stop == end ? port : std::uint16_t(0);
}

std::string hostAndPort(const std::string& host, std::uint16_t port) {
    const bool isV6 = host.find(':') != std::string::npos;
    return (isV6 ? "[" + host + "]" : host) + ":" + std::to_string(port);
}

}  // namespace QZ
