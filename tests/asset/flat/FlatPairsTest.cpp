// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "TestMachine.h"
#include "tavqz/AssetFlat.h"

namespace {

constexpr unsigned HIGHEST = std::numeric_limits<unsigned>::max();
constexpr const char* TWO_PAIRS =
    "USER.PersonalizedLabel1=Cost centre\n"
    "USER.PersonalizedData1=70-1144\n"
    "USER.PersonalizedLabel5=On call\n"
    "USER.PersonalizedData5=storage\n";

// "LABEL=DATA"
std::string pair(unsigned index) {
    char label[1024] = "untouched";
    char data[1024] = "untouched";
    EXPECT_EQ(getCSDetailsPersonalizedDataLabel(label, index), label);
    EXPECT_EQ(getCSDetailsPersonalizedDataData(data, index), data);
    return std::string(label) + "=" + data;
}

bool has(const TestMachine& machine, const std::string& line) {
    return ("\n" + machine.assetFile()).find("\n" + line + "\n") != std::string::npos;
}

TEST(FlatPairs, AreThoseOfTheFile) {
    const TestMachine machine;
    machine.writeAssetFile(TWO_PAIRS);
    AssetIDinit();
    EXPECT_EQ(pair(0), "Cost centre=70-1144");
    EXPECT_EQ(pair(1), "=");
    EXPECT_EQ(pair(4), "On call=storage");
}

TEST(FlatPairs, AreStoredInTheirPlace) {
    const TestMachine machine;
    AssetIDinit();
    EXPECT_EQ(setCSDetailsPersonalizedDataLabel("Shelf", 2), 0);
    EXPECT_EQ(setCSDetailsPersonalizedDataData("7", 2), 0);
    EXPECT_EQ(pair(2), "Shelf=7");
    EXPECT_TRUE(has(machine, "USER.PersonalizedLabel3=Shelf"));
    EXPECT_TRUE(has(machine, "USER.PersonalizedData3=7"));
    EXPECT_TRUE(has(machine, "USER.PersonalizedLabel2="));
}

TEST(FlatPairs, AreReadFromTheFileByInitialisationAlone) {
    const TestMachine machine;
    AssetIDinit();
    machine.writeAssetFile(TWO_PAIRS);
    EXPECT_EQ(pair(0), "=");
    AssetIDinit();
    EXPECT_EQ(pair(0), "Cost centre=70-1144");
    machine.writeAssetFile("");
    AssetIDinit();
    EXPECT_EQ(pair(0), "=");
    EXPECT_EQ(pair(4), "=");
}

TEST(FlatPairs, AreStoredAllFiveByASetter) {
    const TestMachine machine;
    AssetIDinit();
    machine.writeAssetFile(TWO_PAIRS);
    EXPECT_EQ(setCSDetailsPersonalizedDataData("7", 2), 0);
    EXPECT_TRUE(has(machine, "USER.PersonalizedLabel1="));
    EXPECT_TRUE(has(machine, "USER.PersonalizedData3=7"));
    EXPECT_TRUE(has(machine, "USER.PersonalizedData5="));
}

TEST(FlatPairs, AreFive) {
    const TestMachine machine;
    machine.writeAssetFile(TWO_PAIRS);
    AssetIDinit();
    for (const unsigned index : {5U, 6U, 0x80000000U, HIGHEST}) {
        EXPECT_EQ(pair(index), "=") << index;
        const std::string before = machine.assetFile();
        EXPECT_EQ(setCSDetailsPersonalizedDataLabel("x", index), 0);
        EXPECT_EQ(setCSDetailsPersonalizedDataData("x", index), 0);
        EXPECT_EQ(machine.assetFile(), before);
        EXPECT_EQ(pair(index), "=") << index;
    }
    EXPECT_EQ(pair(4), "On call=storage");
}

TEST(FlatPairs, TakeNull) {
    const TestMachine machine;
    machine.writeAssetFile(TWO_PAIRS);
    AssetIDinit();
    EXPECT_EQ(getCSDetailsPersonalizedDataLabel(nullptr, 0), nullptr);
    EXPECT_EQ(getCSDetailsPersonalizedDataData(nullptr, 9), nullptr);
    EXPECT_EQ(setCSDetailsPersonalizedDataLabel(nullptr, 0), 0);
    EXPECT_EQ(setCSDetailsPersonalizedDataData(nullptr, 0), 0);
    EXPECT_EQ(pair(0), "Cost centre=70-1144");
}

TEST(FlatPairs, AreKeptInMemoryWhereTheyCannotBeStored) {
    const TestMachine machine;
    AssetIDinit();
    machine.folder().write("file", "");
    const ScopedEnvironment unwritable("TAVQZ_DATA_DIR", machine.folder().file("file"));
    EXPECT_EQ(setCSDetailsPersonalizedDataLabel("Shelf", 0), 0);
    EXPECT_EQ(pair(0), "Shelf=");
}

}  // namespace
