// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Login.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

TEST(Login, CountsAHostOfIpv6ByItsNetwork) {
    EXPECT_EQ("2001:db8:1:2::/64", clientOf("2001:db8:1:2:3:4:5:6"));
    EXPECT_EQ(clientOf("2001:db8:1:2::1"), clientOf("2001:db8:1:2:ffff::"));
    EXPECT_NE(clientOf("2001:db8:1:2::1"), clientOf("2001:db8:1:3::1"));
}

TEST(Login, CountsHostsOfOneLinkEachForItself) {
    EXPECT_NE(clientOf("fe80::1"), clientOf("fe80::2"));
}

TEST(Login, CountsAMappedAddressAsItself) {
    EXPECT_EQ("192.0.2.7", clientOf("::ffff:192.0.2.7"));
    EXPECT_EQ("192.0.2.7", clientOf("192.0.2.7"));
}

TEST(Login, CountsLocalUsersAsThemselves) {
    EXPECT_EQ("uid 1000", clientOf("uid 1000"));
}

}  // namespace
}  // namespace QZ
