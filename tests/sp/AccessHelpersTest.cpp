// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/AccessHelpers.h"

#include <gtest/gtest.h>

#include <string>

#include "ManualClock.h"
#include "ScopedEnvironment.h"

namespace {

class SysTime : public testing::Test {
protected:
    ScopedEnvironment _zone{"TZ", "XXX-2"};
    // 2027-01-31 21:04:05 UTC.
    ManualClock _clock{1801429445};
};

TEST_F(SysTime, IsTheLocalTime) {
    char buffer[64];
    EXPECT_EQ(getSysTime(buffer, sizeof buffer), buffer);
    EXPECT_STREQ(buffer, "31 Jan 27 23:04:05");
}

TEST_F(SysTime, WritesEachNumberWithTwoDigits) {
    char buffer[64];
    _clock.setSeconds(1804201447);  // 2027-03-04 23:04:07 UTC
    EXPECT_STREQ(getSysTime(buffer, sizeof buffer), "05 Mar 27 01:04:07");
}

TEST_F(SysTime, FitsItsEighteenCharactersAndTheirNul) {
    char buffer[20] = {};
    buffer[19] = '#';
    getSysTime(buffer, 19);
    EXPECT_STREQ(buffer, "31 Jan 27 23:04:05");
    EXPECT_EQ(buffer[19], '#');
}

TEST_F(SysTime, IsEmptyWhereItDoesNotFit) {
    std::string buffer(20, '#');
    EXPECT_EQ(getSysTime(buffer.data(), 18), buffer.data());
    EXPECT_STREQ(buffer.c_str(), "");
    EXPECT_EQ(buffer.substr(18), "##");
}

TEST_F(SysTime, LeavesABufferWithoutRoomAlone) {
    for (const int size : {0, -1}) {
        char buffer[] = "##";
        EXPECT_EQ(getSysTime(buffer, size), buffer);
        EXPECT_STREQ(buffer, "##");
    }
}

TEST(ByteHelpers, ReadLittleEndianNumbersAtAnOffset) {
    unsigned char bytes[] = {0xEE, 0x12, 0x34, 0x56, 0xF8, 0xEE};
    EXPECT_EQ(getUShortFromBufferLSBFirst(bytes, 1), 0x3412);
    EXPECT_EQ(getULongFromBufferLSBFirst(bytes, 1), 0xF8563412U);
}

TEST(ByteHelpers, ReadBigEndianNumbersAtAnOffset) {
    unsigned char bytes[] = {0xEE, 0xF8, 0x56, 0x34, 0x12, 0xEE};
    EXPECT_EQ(getULongFromBufferMSBFirst(bytes, 1), 0xF8563412U);
}

TEST(ByteHelpers, KeepTheHighestBitOfEachByte) {
    unsigned char bytes[] = {0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(getUShortFromBufferLSBFirst(bytes, 0), 0xFFFF);
    EXPECT_EQ(getULongFromBufferLSBFirst(bytes, 0), 0xFFFFFFFFU);
    EXPECT_EQ(getULongFromBufferMSBFirst(bytes, 0), 0xFFFFFFFFU);
}

// A long would have 64 bits on some machines only.
static_assert(sizeof(getULongFromBufferLSBFirst(nullptr, 0)) == 4);
static_assert(sizeof(getULongFromBufferMSBFirst(nullptr, 0)) == 4);
static_assert(sizeof(getUShortFromBufferLSBFirst(nullptr, 0)) == 2);

std::string digitsOf(std::string bytes, int offset, int count) {
    std::string out(9, '#');
    bytesToString(reinterpret_cast<unsigned char*>(bytes.data()), offset, count,
                  reinterpret_cast<unsigned char*>(out.data()));
    return out;
}

TEST(ByteHelpers, WriteTwoDigitsPerByteWithoutNul) {
    EXPECT_EQ(digitsOf("\x01\x9A\xBC\xDE\xF0", 1, 4), "9ABCDEF0#");
}

TEST(ByteHelpers, WriteNothingForNoBytes) {
    EXPECT_EQ(digitsOf("\x01\x9A", 1, 0), "#########");
    EXPECT_EQ(digitsOf("\x01\x9A", 1, -1), "#########");
}

TEST(LogStubs, DoNothing) {
    unsigned char data = 7;
    char name[] = "name";
    openLog();
    initLog(name);
    IncrementLibraryUsageCount();
    EXPECT_EQ(dumpdata(&data), 0);
    closeLog();
    EXPECT_EQ(data, 7);
    EXPECT_STREQ(name, "name");
}

}  // namespace
