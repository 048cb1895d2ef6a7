// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Login.h"

#include <arpa/inet.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace QZ {

bool isOfThisMachine(const Login& login) {
    return login.localUser || isLoopback(login.peer);
}

bool isLoopback(const std::string& address) {
    in_addr v4{};
    in6_addr v6{};
    constexpr in_addr_t NETWORK = 127;
    return (inet_pton(AF_INET, address.c_str(), &v4) == 1 && ntohl(v4.s_addr) >> 24U == NETWORK) ||
           (inet_pton(AF_INET6, address.c_str(), &v6) == 1 && IN6_IS_ADDR_LOOPBACK(&v6));
}

std::string clientOf(const std::string& peer) {
    in6_addr address{};
    if (inet_pton(AF_INET6, peer.c_str(), &address) != 1 || IN6_IS_ADDR_LINKLOCAL(&address)) {
        return peer;
    }
    char text[INET6_ADDRSTRLEN] = "";
    if (IN6_IS_ADDR_V4MAPPED(&address)) {
        return inet_ntop(AF_INET, &address.s6_addr[12], text, sizeof text);
    }
    std::fill(std::begin(address.s6_addr) + 8, std::end(address.s6_addr), std::uint8_t(0));
    return std::string(inet_ntop(AF_INET6, &address, text, sizeof text)) + "/64";
}

}  // namespace QZ
