// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Placeholders.h"

#include <gtest/gtest.h>

#include "Pseudonyms.h"

namespace QZ {
namespace {

TEST(Placeholders, AreWhatStandsWhereNothingWasPut) {
    for (const char* text : {"Unknown",
                             "UNKNOWN",
                             "None",
                             "(none)",
                             "Not Specified",
                             "Not Available",
                             "N/A",
                             "n/a",
                             "To Be Filled By O.E.M.",
                             "To be filled by O.E.M.",
                             "Default string",
                             "NO DIMM",
                             "Not Present",
                             "<BAD INDEX>",
                             "System Serial Number",
                             "Base Board Serial Number",
                             "No Asset Tag",
                             "Asset Tag:",
                             "SerNum0",
                             "A1_SerNum12",
                             "A1_AssetTagNum0",
                             "Asset-1234567890",
                             "0123456789",
                             "1234567890",
                             "00000000",
                             "0000-0000",
                             "FFFFFFFF",
                             "xxxxxxxx",
                             "........",
                             "",
                             "    ",
                             "localhost",
                             "uninitialized"}) {
        EXPECT_TRUE(isPlaceholder(text)) << text;
    }
}

TEST(Placeholders, AreNoNumbersThatHoldThem) {
    for (const char* text : {"Unknown-4711", "NONE0815", "00000001", "EXS2100417", "Serial 4711",
                             "Asset Tag 4711", "1234567891", "web01", "NA21", "OEM4711"}) {
        EXPECT_FALSE(isPlaceholder(text)) << text;
    }
}

TEST(SecretIn, IsTheTextWithoutWhatPadsIt) {
    EXPECT_EQ(secretIn("\t TAB 1234\r\n"), "TAB 1234");
    EXPECT_EQ(secretIn(std::string("\0TAB-1\0\0", 8)), "TAB-1");
    EXPECT_EQ(secretIn("\xC3\xA9tage"), "\xC3\xA9tage");
    for (const char* none : {"", " ", "X", "XY", " X12 ", " Unknown\n"}) {
        EXPECT_EQ(secretIn(none), "") << none;
    }
}

}  // namespace
}  // namespace QZ
