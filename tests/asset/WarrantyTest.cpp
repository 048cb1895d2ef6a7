// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Warranty.h"

#include <gtest/gtest.h>

#include "TestMachine.h"

namespace QZ {
namespace {

TEST(Warranty, WritesItsDefaultsIntoAnEmptyFile) {
    const TestMachine machine;
    machine.writeAssetFile("");
    { const Warranty warranty; }
    EXPECT_EQ(machine.assetFile(),
              "WARRANTY.Duration=0\nWARRANTY.DurationUnit=0\nWARRANTY.EndDate=\nWARRANTY.Cost=\n");
}

TEST(Warranty, GivesBackWhatItSaved) {
    const TestMachine machine;
    {
        Warranty warranty;
        warranty.setDuration(36);
        warranty.setDurationUnit(255);
        warranty.setEndDate(DateTime::fromDay(2028, 6, 30));
        warranty.setCost("included");
    }
    const Warranty warranty;
    EXPECT_EQ(warranty.getDuration(), 36);
    EXPECT_EQ(warranty.getDurationUnit(), 255);
    EXPECT_EQ(warranty.getEndDate(), DateTime::fromDay(2028, 6, 30));
    EXPECT_EQ(warranty.getCost(), "included");
}

TEST(Warranty, LeavesTheOtherRecordsKeysAlone) {
    const TestMachine machine;
    machine.writeAssetFile("# by hand\nLEASE.Lessor=Acme\nSITE.Room=4\n");
    { const Warranty warranty; }
    EXPECT_EQ(machine.assetFile().rfind("# by hand\nLEASE.Lessor=Acme\nSITE.Room=4\nWARRANTY.", 0),
              0U);
}

}  // namespace
}  // namespace QZ
