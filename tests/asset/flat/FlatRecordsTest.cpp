// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "FileLock.h"
#include "ManualClock.h"
#include "TestMachine.h"
#include "tavqz/AssetFlat.h"

namespace {

constexpr const char* UNSET = "00000000000000.000000+000";

std::string textOf(void (*get)(char*)) {
    char text[1024] = "untouched";
    get(text);
    return text;
}

// What every getter of a text or a date that the file keeps gives, by its name.
std::vector<std::pair<std::string, std::string>> allTexts() {
    std::vector<std::pair<std::string, std::string>> texts;
#define READ(record, field) texts.emplace_back(#record #field, textOf(get##record##field));
    TAVQZ_ASSET_TEXTS(READ)
    TAVQZ_ASSET_DATES(READ)
#undef READ
    return texts;
}

unsigned allNumbers() {
    unsigned sum = 0;
#define ADD(record, field) sum += get##record##field();
    TAVQZ_ASSET_BYTES(ADD)
    TAVQZ_ASSET_NUMBERS(ADD)
#undef ADD
    return sum;
}

// Calls every setter, and expects that each returns 0.
void setAll() {
#define SET_TEXT(record, field) EXPECT_EQ(set##record##field("text"), 0);
#define SET_DATE(record, field) EXPECT_EQ(set##record##field("2027-01-31"), 0);
#define SET_NUMBER(record, field) EXPECT_EQ(set##record##field(1), 0);
    TAVQZ_ASSET_TEXTS(SET_TEXT)
    TAVQZ_ASSET_DATES(SET_DATE)
    TAVQZ_ASSET_BYTES(SET_NUMBER)
    TAVQZ_ASSET_NUMBERS(SET_NUMBER)
#undef SET_TEXT
#undef SET_DATE
#undef SET_NUMBER
}

TEST(FlatRecords, KeepTheHighestNumber) {
    const TestMachine machine;
    EXPECT_EQ(setLeaseBuyout(4294967295U), 0);
    EXPECT_EQ(getLeaseBuyout(), 4294967295U);
}

TEST(FlatRecords, WriteTheFileWhenTheyAreRead) {
    const TestMachine machine;
    machine.writeAssetFile("OTHER=kept\n");
    EXPECT_EQ(textOf(getLeaseLessor), "");
    EXPECT_EQ(machine.assetFile(),
              "OTHER=kept\nLEASE.LRF=0\nLEASE.Term=0\nLEASE.Buyout=0\nLEASE.FMV=0\n"
              "LEASE.Lessor=\nLEASE.Payment=\nLEASE.StartDate=\nLEASE.EndDate=\n");
}

TEST(FlatRecords, CountMillisecondsInTheSixDigits) {
    const TestMachine machine;
    machine.writeAssetFile("LEASE.EndDate=2027-01-31T12:34:56.012+01:00\n");
    EXPECT_EQ(textOf(getLeaseEndDate), "20270131123456.000012+060");
}

TEST(FlatRecords, WriteAPlusBeforeANegativeOffset) {
    const TestMachine machine;
    machine.writeAssetFile("LEASE.EndDate=2027-01-31T12:34:56-01:00\n");
    EXPECT_EQ(textOf(getLeaseEndDate), "20270131123456.000000+-060");
    machine.writeAssetFile("LEASE.EndDate=2027-01-31T12:34:56-00:05\n");
    EXPECT_EQ(textOf(getLeaseEndDate), "20270131123456.000000+-005");
}

TEST(FlatRecords, GiveLongTextsWhole) {
    const TestMachine machine;
    const std::string text(100000, 'x');
    EXPECT_EQ(setLeaseLessor(text.c_str()), 0);
    std::string found(text.size() + 1, '#');
    getLeaseLessor(found.data());
    EXPECT_EQ(found, text + '\0');
}

// Of another machine's records no clock is set: the manual one would tell.
TEST(FlatRecords, SetAndReadTheClock) {
    const ScopedEnvironment zone("TZ", "UTC0");
    ManualClock clock(1800000000);
    const TestMachine machine;
    EXPECT_EQ(textOf(getCSDetailsDateTime), "20270115080000.000000+000");
    EXPECT_EQ(setCSDetailsDateTime("2001-01-01"), 0);
    EXPECT_EQ(clock.seconds(), 1800000000);
    const ScopedEnvironment own("TAVQZ_HOST_ROOT", nullptr);
    EXPECT_EQ(setCSDetailsDateTime("20270116080000.000000+000"), 0);
    EXPECT_EQ(clock.seconds(), 1800000000 + 86400);
}

TEST(FlatRecords, AreEmptyAndSetToNoAvailWithoutADataFolder) {
    const TestMachine machine;
    const ManualClock clock;
    machine.folder().write("file", "");
    const ScopedEnvironment unwritable("TAVQZ_DATA_DIR", machine.folder().file("file"));
    setAll();
    for (const auto& [name, text] : allTexts()) {
        if (name != "CSDetailsDateTime") {
            EXPECT_TRUE(text.empty() || text == UNSET) << name << " is " << text;
        }
    }
    EXPECT_EQ(allNumbers(), 0U);
    EXPECT_EQ(machine.folder().read("file"), "");
}

TEST(FlatRecords, AreReadWhereTheyCannotBeSaved) {
    const TestMachine machine;
    machine.writeAssetFile("LEASE.Lessor=Acme\nLEASE.Term=36\nLEASE.EndDate=2027-01-31\n");
    // No lock to write under can be had.
    std::filesystem::create_directory(machine.folder().file("data/asset.dat.lock"));
    EXPECT_EQ(setLeaseLessor("other"), 0);
    EXPECT_EQ(textOf(getLeaseLessor), "Acme");
    EXPECT_EQ(textOf(getLeaseEndDate), "20270131000000.000000+000");
    EXPECT_EQ(getLeaseTerm(), 36U);
    EXPECT_EQ(machine.assetFile(), "LEASE.Lessor=Acme\nLEASE.Term=36\nLEASE.EndDate=2027-01-31\n");
}

TEST(FlatRecords, AreEmptyWhereAnotherKeepsTheFileLocked) {
    const TestMachine machine;
    ManualClock clock;
    setAll();
    const std::string before = machine.assetFile();
    {
        const QZ::FileLock lock(machine.folder().file("data/asset.dat"), QZ::FileLock::Exclusive);
        for (const auto& [name, text] : allTexts()) {
            EXPECT_EQ(text, "") << name;
        }
        EXPECT_EQ(allNumbers(), 0U);
        EXPECT_EQ(getCSDetailsAssetIdStringAreaSize(), 0U);
        setAll();
        AssetIDinit();
    }
    EXPECT_GE(clock.sleptMilliseconds(), QZ::FileLock::LongestWaitMilliseconds);
    EXPECT_EQ(machine.assetFile(), before);
    EXPECT_EQ(textOf(getLeaseLessor), "text");
}

}  // namespace
