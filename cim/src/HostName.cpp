// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "HostName.h"

#include <arpa/inet.h>
#include <net/if.h>
#include <strings.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace Pegasus {

static bool _isDigit(char c) {
    return c >= '0' && c <= '9';
}

static bool _isWord(char c) {
    return _isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

static bool _isPort(std::string_view text) {
    unsigned port = 0;
    for (const char c : text) {
        if (!_isDigit(c))
            return false;
        port = std::min(port * 10 + static_cast<unsigned>(c - '0'), 65536U);
    }
    return port <= 65535;
}

// Takes the part up to the next dot off the front of `text`; false if there is none.
static bool _nextLabel(std::string_view& text, bool& isLast, std::string_view& label) {
    const std::size_t dot = text.find('.');
    isLast = dot == std::string_view::npos;
    label = text.substr(0, dot);
    text.remove_prefix(isLast ? text.size() : dot + 1);
    return !label.empty();
}

static bool _isIpv4(std::string_view text) {
    bool isLast = false;
    for (int octet = 1; octet <= 4; ++octet) {
        std::string_view label;
        if (isLast || !_nextLabel(text, isLast, label) || label.size() > 3)
            return false;
        unsigned number = 0;
        for (const char c : label) {
            if (!_isDigit(c))
                return false;
            number = number * 10 + static_cast<unsigned>(c - '0');
        }
        if (number > 255)
            return false;
    }
    return isLast;
}

static bool _isName(std::string_view text) {
    std::string_view label;
    for (bool isLast = false; !isLast;) {
        if (!_nextLabel(text, isLast, label) || !_isWord(label[0]))
            return false;
        if (!std::all_of(label.begin(), label.end(), [](char c) { return _isWord(c) || c == '-'; }))
            return false;
    }
    return !std::all_of(label.begin(), label.end(), _isDigit);
}

static bool _isIpv6(std::string_view text) {
    std::string address(text);
    if (strncasecmp(address.c_str(), "fe80", 4) == 0) {
        const std::size_t percent = address.find('%');
        if (percent == std::string::npos || if_nametoindex(address.c_str() + percent + 1) == 0)
            return false;
        address.erase(percent);
    }
    in6_addr ignored;
    return inet_pton(AF_INET6, address.c_str(), &ignored) == 1;
}

bool isHostName(const String& text) {
    std::string plain;
    for (Uint32 i = 0; i < text.size(); ++i) {
        const Uint16 c = text[i];
        if (c == 0 || c > 127)
            return false;
        plain.push_back(static_cast<char>(c));
    }
    std::string_view rest(plain);
    const bool inBrackets = !rest.empty() && rest[0] == '[';
    if (inBrackets)
        rest.remove_prefix(1);
    const std::size_t end = std::min(rest.find(inBrackets ? ']' : ':'), rest.size());
    const std::string_view host = rest.substr(0, end);
    rest.remove_prefix(end);
    if (inBrackets) {
        if (rest.empty() || !_isIpv6(host))
            return false;
        rest.remove_prefix(1);
    } else if (!_isIpv4(host) && !_isName(host)) {
        return false;
    }
    return rest.empty() || (rest[0] == ':' && _isPort(rest.substr(1)));
}

}  // namespace Pegasus
