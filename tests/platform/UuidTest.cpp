// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Uuid.h"

#include <gtest/gtest.h>

using namespace QZ;

namespace {

std::vector<unsigned char> counting(std::size_t size) {
    std::vector<unsigned char> bytes(size);
    for (std::size_t index = 0; index < size; ++index)
        bytes[index] = static_cast<unsigned char>(index * 17);
    return bytes;
}

}  // namespace

TEST(Uuid, ShowsItsBytesInOrderInUpperCase) {
    EXPECT_EQ("00112233-4455-6677-8899-AABBCCDDEEFF", Uuid(counting(16)).toString());
}

TEST(Uuid, HasNoTextWhenBytesAreMissing) {
    EXPECT_EQ("", Uuid({}).toString());
    EXPECT_EQ("", Uuid(counting(15)).toString());
}

TEST(Uuid, IgnoresBytesBeyond) {
    EXPECT_EQ(Uuid(counting(16)).toString(), Uuid(counting(17)).toString());
}

TEST(Uuid, HasNoTextWithoutAnIdentity) {
    for (const unsigned filler : {0x00U, 0xFFU}) {
        std::vector<unsigned char> bytes(16, static_cast<unsigned char>(filler));
        EXPECT_EQ("", Uuid(bytes).toString());
        bytes[15] = 0x5A;
        EXPECT_NE("", Uuid(bytes).toString());
    }
}
