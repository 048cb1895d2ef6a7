// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PciNames.h"

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

using namespace QZ;

namespace {

const char* const _list =
    "# Who makes what.\n"
    "1000  Example Chips\n"
    "\t005d  EX3108 RAID-on-chip\n"
    "\t\t1028 1f43  Eight-Port RAID Card\n"
    "1028  Example Corp\n";

const PciNumbers _board = {0x1000, 0x005d, 0x1028, 0x1f43};

}  // namespace

TEST(PciNames, KnowsWhatTheListHas) {
    const TemporaryFolder folder;
    PciNames names(folder.write("pci.ids", _list));
    EXPECT_EQ("Example Corp", names.vendor(0x1028));
    EXPECT_EQ("EX3108 RAID-on-chip", names.device(_board));
    EXPECT_EQ("Eight-Port RAID Card", names.subsystem(_board));
}

TEST(PciNames, AreEmptyForWhatItDoesNotHave) {
    const TemporaryFolder folder;
    PciNames names(folder.write("pci.ids", _list));
    EXPECT_EQ("", names.vendor(0x8086));
    EXPECT_EQ("", names.device({0x1000, 0x0001, 0, 0}));
    EXPECT_EQ("", names.subsystem({0x1000, 0x005d, 0x1028, 0x0001}));
}

TEST(PciNames, SurviveAListThatIsNone) {
    const TemporaryFolder folder;
    PciNames names(folder.write("pci.ids", "1000  Example Chips\nno number\n\xFF\n"));
    EXPECT_EQ("", names.vendor(0x1000));
    EXPECT_EQ("", names.device(_board));
}
