// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "tavqz/AssetFlat.h"

namespace {

// What a pack function wrote up to the address that it returned, after which nothing may change;
// at an odd address, for items are not aligned.
class Packed {
public:
    template <class Pack, class Value>
    Packed(Pack pack, Value value) {
        char* const start = _room + 1;
        std::memset(_room, UNTOUCHED, sizeof _room);
        _end = static_cast<const char*>(pack(start, value));
        _bytes.assign(static_cast<const char*>(start), _end);
    }

    const std::string& bytes() const { return _bytes; }
    bool leftTheRestAlone() const {
        for (const char* at = _end; at != _room + sizeof _room; ++at) {
            if (*at != UNTOUCHED) {
                return false;
            }
        }
        return _room[0] == UNTOUCHED;
    }

private:
    static constexpr char UNTOUCHED = '#';

    char _room[256];
    const char* _end;
    std::string _bytes;
};

// Numbers in the machine's byte order, one behind the other.
std::string numbers(const std::vector<std::int32_t>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(std::int32_t)};
}

TEST(Packing, WritesAnInteger) {
    for (const int value : {0, 7, -1, INT32_MAX, INT32_MIN}) {
        const Packed packed(packI, value);
        EXPECT_EQ(packed.bytes(), numbers({0, value}));
        EXPECT_TRUE(packed.leftTheRestAlone());
    }
}

TEST(Packing, WritesATextWithItsLengthAndANul) {
    const Packed packed(packS, std::string("abc"));
    EXPECT_EQ(packed.bytes(), numbers({1, 3}) + std::string("abc\0", 4));
    EXPECT_TRUE(packed.leftTheRestAlone());
    EXPECT_EQ(Packed(packS, std::string()).bytes(), numbers({1, 0}) + std::string(1, '\0'));
}

TEST(Packing, KeepsANulInsideAText) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(Packed(packS, text).bytes(), numbers({1, 3}) + text + std::string(1, '\0'));
}

TEST(Packing, WritesAnArrayOfIntegersAsItems) {
    const Packed packed(packAI, std::vector<int>{5, -6});
    EXPECT_EQ(packed.bytes(), numbers({2, 2, 0, 5, 0, -6}));
    EXPECT_TRUE(packed.leftTheRestAlone());
    EXPECT_EQ(Packed(packAI, std::vector<int>()).bytes(), numbers({2, 0}));
}

TEST(Packing, WritesAnArrayOfTextsAsItems) {
    const Packed packed(packAS, std::vector<std::string>{"ab", ""});
    EXPECT_EQ(packed.bytes(), numbers({3, 2, 1, 2}) + std::string("ab\0", 3) + numbers({1, 0}) +
                                  std::string(1, '\0'));
    EXPECT_EQ(packed.bytes().size(), 28U);
    EXPECT_TRUE(packed.leftTheRestAlone());
    EXPECT_EQ(Packed(packAS, std::vector<std::string>()).bytes(), numbers({3, 0}));
}

TEST(Packing, ChainsItems) {
    char room[64];
    const void* const written = packI(packAS(packS(packI(room, 1), "x"), {"y"}), 2);
    const char* const end = static_cast<const char*>(written);
    EXPECT_EQ(std::string(static_cast<const char*>(room), end),
              numbers({0, 1, 1, 1}) + std::string("x\0", 2) + numbers({3, 1, 1, 1}) +
                  std::string("y\0", 2) + numbers({0, 2}));
}

}  // namespace
