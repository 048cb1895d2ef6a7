// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "BuildPaths.h"
#include "tavqz/AssetMembers.h"

namespace {

using Names = std::set<std::string>;

// The interface's functions as its lists of members have them.
Names listed() {
    Names names{"AssetIDinit", "getPICount", "packI", "packS", "packAI", "packAS"};
#define GETTER(record, field) names.insert("get" #record #field);
#define GETTER_AND_SETTER(record, field) GETTER(record, field) names.insert("set" #record #field);
#define PART_GETTER(field) names.insert("getPI" #field);
#define PAIR(field) GETTER_AND_SETTER(CSDetailsPersonalizedData, field)
    TAVQZ_ASSET_TEXTS(GETTER_AND_SETTER)
    TAVQZ_ASSET_DATES(GETTER_AND_SETTER)
    TAVQZ_ASSET_BYTES(GETTER_AND_SETTER)
    TAVQZ_ASSET_NUMBERS(GETTER_AND_SETTER)
    TAVQZ_ASSET_TEXTS_READ_ONLY(GETTER)
    TAVQZ_ASSET_NUMBERS_READ_ONLY(GETTER)
    TAVQZ_PART_TEXTS(PART_GETTER)
    TAVQZ_PERSONALIZED_TEXTS(PAIR)
    return names;
}

// What the linker is told to export as the flat interface: a name a line, under that heading.
Names mapped() {
    std::ifstream lines(TAVQZ_SOURCE_DIR "/provider/exports.map");
    EXPECT_TRUE(lines.is_open());
    Names names;
    bool isFlat = false;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string name;
        words >> name;
        if (name == "#") {
            isFlat = line.find("The flat interface") != std::string::npos;
        } else if (isFlat) {
            names.insert(name.substr(0, name.find(';')));
        }
    }
    return names;
}

// The module's functions (T) that are called as those of the interface are. A name that the
// compiler decorated does not look so.
Names exported() {
    std::ifstream lines(MODULE_EXPORTS);
    EXPECT_TRUE(lines.is_open());
    const std::regex flat("AssetIDinit|[gs]et(CSDetails|Lease|Warranty|PI)[A-Z].*|pack[A-Z].*");
    Names names;
    for (std::string name; lines >> name;) {
        std::string kind;
        lines >> kind;
        lines.ignore(256, '\n');
        if (std::regex_match(name, flat)) {
            EXPECT_EQ(kind, "T") << name;
            names.insert(name);
        }
    }
    return names;
}

TEST(FlatExports, AreWhatTheListsOfMembersSay) {
    EXPECT_THAT(exported(), testing::ContainerEq(listed()));
}

TEST(FlatExports, AreWhatTheLinkerIsTold) {
    EXPECT_THAT(mapped(), testing::ContainerEq(listed()));
}

TEST(FlatExports, AreSeventyFive) {
    EXPECT_EQ(listed().size(), 75U);
}

}  // namespace
