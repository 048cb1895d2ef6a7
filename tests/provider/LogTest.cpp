// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// What the provider says of itself, and in which order. This program's own addLogItem stands in the
// place of the silent one.

#include <gmock/gmock.h>

#include "ProviderTest.h"
#include "tavqz/AccessHelpers.h"

using namespace Pegasus;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

std::vector<std::pair<std::string, std::string>>& _lines() {
    static std::vector<std::pair<std::string, std::string>> lines;
    return lines;
}

}  // namespace

void addLogItem(char* tag, char* text) {
    _lines().emplace_back(tag, text);
}

namespace {

class Log : public ProviderTest {
protected:
    Log() { _lines().clear(); }

    // The texts since the last look, all under the provider's name.
    static std::vector<std::string> texts() {
        EXPECT_THAT(_lines(), Each(Pair("AssetIDProvider", ::testing::_)));
        std::vector<std::string> result;
        for (const auto& line : _lines()) {
            result.push_back(line.second);
        }
        _lines().clear();
        return result;
    }
};

TEST_F(Log, FramesEveryOperation) {
    enumerate("TAVIRA_Lease");
    EXPECT_THAT(texts(), ElementsAre("enumerateInstances() exiting"));
    names("TAVIRA_Lease");
    EXPECT_THAT(texts(),
                ElementsAre("enumerateInstanceNames() entered", "enumerateInstances() exiting",
                            "enumerateInstanceNames() exiting"));
    get("TAVIRA_Lease");
    EXPECT_THAT(texts(), ElementsAre("getInstance() entered", "enumerateInstances() exiting",
                                     "getInstance() exiting"));
}

TEST_F(Log, TellsOfTheProvidersMakingAndEnd) {
    auto* other = new QZ::AssetIDProvider;
    ASSERT_FALSE(_lines().empty());
    EXPECT_THAT(_lines().back(), Pair("AssetIDProvider", "constructor exiting"));
    _lines().clear();
    other->terminate();
    ASSERT_FALSE(_lines().empty());
    EXPECT_THAT(_lines().front(), Pair("AssetIDProvider", "destructor entering"));
    EXPECT_THAT(_lines().back(), Pair("AssetIDProvider", "destructor exiting"));
}

TEST_F(Log, TellsWhyARecordWasNotSaved) {
    std::filesystem::remove_all(machine.folder().file("data"));
    enumerate("TAVIRA_Lease");
    const std::vector<std::string> said = texts();
    ASSERT_EQ(said.size(), 2U);
    EXPECT_NE(said[0].find("asset.dat"), std::string::npos) << said[0];
    EXPECT_EQ(said[1], "enumerateInstances() exiting");
}

}  // namespace
