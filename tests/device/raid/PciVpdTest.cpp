// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PciVpd.h"

#include <gtest/gtest.h>

#include "RaidParts.h"

using namespace QZ;

TEST(PciVpd, TellsWhatABoardTells) {
    const PciVpd vpd =
        decodePciVpd(pciVpd("Example RAID 8i", std::string(" 03-25420-09A") + '\0', "SV53300001"));
    EXPECT_EQ("Example RAID 8i", vpd.product);
    EXPECT_EQ("03-25420-09A", vpd.partNumber);
    EXPECT_EQ("SV53300001", vpd.serialNumber);
    EXPECT_EQ("", vpd.manufacturer);
}

TEST(PciVpd, TakesWholeFieldsOfWhatIsCutOff) {
    const std::string whole = pciVpd("Example", "PN-1", "SN-1");
    const PciVpd vpd = decodePciVpd(whole.substr(0, whole.find("SN-1") + 2));
    EXPECT_EQ("PN-1", vpd.partNumber);
    EXPECT_EQ("", vpd.serialNumber);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ("", decodePciVpd(whole.substr(0, length)).manufacturer) << length;
}

TEST(PciVpd, EndsAtTheEndTag) {
    const PciVpd vpd = decodePciVpd(pciVpd("Example", "PN-1", "") + pciVpd("Other", "PN-2", ""));
    EXPECT_EQ("Example", vpd.product);
    EXPECT_EQ("PN-1", vpd.partNumber);
}

TEST(PciVpd, PassesOverResourcesThatItDoesNotKnow) {
    using namespace std::string_literals;
    // A small one of two bytes, and writable fields.
    const PciVpd vpd =
        decodePciVpd("\x22zz\x91\x07\x00PN\x04NOT!"s + pciVpd("Example", "PN-1", ""));
    EXPECT_EQ("PN-1", vpd.partNumber);
    EXPECT_EQ("", decodePciVpd("").product);
    EXPECT_EQ("", decodePciVpd(std::string(300, '\xFF')).product);
}
