// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Login.h"

#include <arpa/inet.h>

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

}  // namespace QZ
