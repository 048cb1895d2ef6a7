// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

// The names that the library offers to others.
std::vector<std::string> _exported() {
    std::ifstream lines(RAID_EXPORTS);
    std::vector<std::string> names;
    for (std::string name, rest; lines >> name && std::getline(lines, rest);)
        names.push_back(name);
    return names;
}

}  // namespace

TEST(RaidModule, ExportsItsEntryAlone) {
    EXPECT_THAT(_exported(), testing::ElementsAre("PegasusCreateProvider"));
}
