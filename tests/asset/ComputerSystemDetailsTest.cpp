// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ComputerSystemDetails.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "Clock.h"
#include "Error.h"
#include "TestMachine.h"

namespace QZ {
namespace {

class FixedClock : public Clock {
public:
    std::int64_t seconds() override { return now; }
    std::int64_t milliseconds() override { return now * 1000; }
    int setSeconds(std::int64_t time) override {
        ++timesSet;
        if (refusal == 0) {
            now = time;
        }
        return refusal;
    }
    void sleepMilliseconds(unsigned) override {}

    std::int64_t now = 1800000000;  // 2027-01-15T08:00:00Z
    int timesSet = 0;
    int refusal = 0;
};

// This machine, its data folder elsewhere: its clock may be set.
class OwnMachine {
public:
    OwnMachine() : _data("TAVQZ_DATA_DIR", _folder.path()), _root("TAVQZ_HOST_ROOT", nullptr) {}

private:
    TemporaryFolder _folder;
    ScopedEnvironment _data;
    ScopedEnvironment _root;
};

TEST(ComputerSystemDetails, ReadsAnEmptyFileAsEmptyTextsAndFivePairs) {
    const TestMachine machine;
    machine.writeAssetFile("");
    const ComputerSystemDetails details;
    EXPECT_EQ(details.getAssetNumber(), "");
    EXPECT_EQ(details.getOwnerName(), "");
    EXPECT_EQ(details.getLastInventoried(), DateTime());
    EXPECT_EQ(details.getKELPUpdateTime(), DateTime());
    EXPECT_EQ(details.getPersonalizedData(), ComputerSystemDetails::PersonalizedData(5));
}

TEST(ComputerSystemDetails, WritesEveryKeyBackInOrder) {
    const TestMachine machine;
    { const ComputerSystemDetails details; }
    EXPECT_EQ(machine.assetFile(),
              "USER.AssetNumber=\nUSER.AssetIdTag=\nUSER.Name=\nUSER.Phone=\nUSER.Position=\n"
              "USER.Department=\nUSER.LastInventoried=\nUSER.PurchaseDate=\nUSER.Location=\n"
              "USER.KELPProfile=\nUSER.KELPUpdateTime=\n"
              "USER.PersonalizedLabel1=\nUSER.PersonalizedData1=\n"
              "USER.PersonalizedLabel2=\nUSER.PersonalizedData2=\n"
              "USER.PersonalizedLabel3=\nUSER.PersonalizedData3=\n"
              "USER.PersonalizedLabel4=\nUSER.PersonalizedData4=\n"
              "USER.PersonalizedLabel5=\nUSER.PersonalizedData5=\n");
}

TEST(ComputerSystemDetails, GivesBackWhatItSaved) {
    const TestMachine machine;
    const DateTime purchased = DateTime::fromDay(2024, 3, 1);
    const DateTime inventoried = DateTime::fromParts(2026, 11, 2, 9, 15, 0, 0, 60);
    const DateTime updated = DateTime::fromParts(2026, 11, 3, 1, 2, 3, 4, 0);
    {
        ComputerSystemDetails details;
        details.setAssetNumber("A-17");
        details.setAssetIdTag("tag 4");
        details.setOwnerName("J\xC3\xB8rgen");
        details.setOwnerPhone("+45 1");
        details.setOwnerPosition("Operator");
        details.setOwnerDepartment("IT");
        details.setLastInventoried(inventoried);
        details.setSystemPurchaseDate(purchased);
        details.setSystemLocation("Row 4\nRack 2");
        details.setKELPProfile("profile");
        details.setKELPUpdateTime(updated);
    }
    const ComputerSystemDetails details;
    EXPECT_EQ(details.getAssetNumber(), "A-17");
    EXPECT_EQ(details.getAssetIdTag(), "tag 4");
    EXPECT_EQ(details.getOwnerName(), "J\xC3\xB8rgen");
    EXPECT_EQ(details.getOwnerPhone(), "+45 1");
    EXPECT_EQ(details.getOwnerPosition(), "Operator");
    EXPECT_EQ(details.getOwnerDepartment(), "IT");
    EXPECT_EQ(details.getLastInventoried(), inventoried);
    EXPECT_EQ(details.getSystemPurchaseDate(), purchased);
    EXPECT_EQ(details.getSystemLocation(), "Row 4\nRack 2");
    EXPECT_EQ(details.getKELPProfile(), "profile");
    EXPECT_EQ(details.getKELPUpdateTime(), updated);
}

TEST(ComputerSystemDetails, WritesOnlyThePairsThatItHolds) {
    const TestMachine machine;
    {
        ComputerSystemDetails details;
        details.setPersonalizedData({{"a", "1"}, {"b", "2"}, {"c", "3"}, {"d", "4"}, {"e", "5"}});
    }
    {
        ComputerSystemDetails details;
        details.setPersonalizedData({{"x", "8"}, {"y", "9"}});
    }
    const ComputerSystemDetails::PersonalizedData expected = {
        {"x", "8"}, {"y", "9"}, {"c", "3"}, {"d", "4"}, {"e", "5"}};
    EXPECT_EQ(ComputerSystemDetails().getPersonalizedData(), expected);
}

TEST(ComputerSystemDetails, NeverWritesASixthPair) {
    const TestMachine machine;
    {
        ComputerSystemDetails details;
        details.setPersonalizedData(ComputerSystemDetails::PersonalizedData(6, {"l", "d"}));
    }
    EXPECT_EQ(machine.assetFile().find("Label6"), std::string::npos);
    EXPECT_EQ(ComputerSystemDetails().getPersonalizedData().size(), 5U);
}

TEST(ComputerSystemDetails, KeepsTheDeploymentProfileInTheKelpProfile) {
    const TestMachine machine;
    ComputerSystemDetails details;
    const DateTime time = DateTime::fromDay(2027, 5, 1);
    details.setDeploymentProfile("spring");
    details.setDeploymentUpdateTime(time);
    EXPECT_EQ(details.getKELPProfile(), "spring");
    EXPECT_EQ(details.getKELPUpdateTime(), time);
    details.setKELPProfile("autumn");
    EXPECT_EQ(details.getDeploymentProfile(), "autumn");
    EXPECT_EQ(details.getDeploymentUpdateTime(), time);
}

TEST(ComputerSystemDetails, ReportsTheSizeOfTheStringArea) {
    const TestMachine machine;
    EXPECT_EQ(ComputerSystemDetails().getAssetIdStringAreaSize(), 1024U);
}

TEST(ComputerSystemDetails, TellsLocalTime) {
    const TestMachine machine;
    const ScopedEnvironment zone("TZ", "XXX-2");
    FixedClock clock;
    const ClockReplacement replacement(clock);
    EXPECT_EQ(ComputerSystemDetails().getDateTime().toString(), "2027-01-15T10:00:00+02:00");
}

TEST(ComputerSystemDetails, SetsTheClockToWholeSeconds) {
    const OwnMachine machine;
    FixedClock clock;
    const ClockReplacement replacement(clock);
    ComputerSystemDetails().setDateTime(DateTime::fromParts(2030, 1, 1, 0, 0, 1, 999, 60));
    EXPECT_EQ(clock.timesSet, 1);
    EXPECT_EQ(clock.now, 1893452401);
}

TEST(ComputerSystemDetails, LeavesTheClockAloneBeyond2037) {
    const OwnMachine machine;
    FixedClock clock;
    const ClockReplacement replacement(clock);
    ComputerSystemDetails().setDateTime(DateTime::fromDay(2038, 1, 1));
    EXPECT_EQ(clock.timesSet, 0);
    ComputerSystemDetails().setDateTime(DateTime::fromDay(2037, 12, 31));
    EXPECT_EQ(clock.timesSet, 1);
}

TEST(ComputerSystemDetails, NeverSetsTheClockToAnUnsetDate) {
    const OwnMachine machine;
    FixedClock clock;
    const ClockReplacement replacement(clock);
    ComputerSystemDetails().setDateTime(DateTime());
    EXPECT_EQ(clock.timesSet, 0);
}

TEST(ComputerSystemDetails, NeverSetsTheClockForAnotherMachine) {
    const TestMachine machine;
    FixedClock clock;
    const ClockReplacement replacement(clock);
    ComputerSystemDetails().setDateTime(DateTime::fromDay(2030, 1, 1));
    EXPECT_EQ(clock.timesSet, 0);
}

TEST(ComputerSystemDetails, SaysThatTheClockMayNotBeSet) {
    const OwnMachine machine;
    FixedClock clock;
    clock.refusal = EPERM;
    const ClockReplacement replacement(clock);
    ComputerSystemDetails details;
    EXPECT_THROW(details.setDateTime(DateTime::fromDay(2030, 1, 1)), Error);
}

}  // namespace
}  // namespace QZ
