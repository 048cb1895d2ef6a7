// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruList.h"

#include <gtest/gtest.h>

#include <optional>

#include "RepeatableRandom.h"
#include "Text.h"
#include "Units.h"
#include "tavqz/AccessHelpers.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string>& _lines() {
    static std::vector<std::string> lines;
    return lines;
}

}  // namespace

// In the place of the silent one.
void addLogItem(char* tag, char* text) {
    _lines().push_back(std::string(tag) + ": " + text);
}

namespace {

CIMInstance _fru(const char* name, const char* number, const char* source) {
    return fruOf({{"Name", name}, {"FRUNumber", number}, {"ElementName", source}});
}

// The rules of the merge, word for word.
class PlainList {
public:
    void append(const CIMInstance& unit) { units.push_back(unit); }

    bool insert(const CIMInstance& candidate) {
        const auto name = text(candidate, "Name");
        const auto number = text(candidate, "FRUNumber");
        const auto source = text(candidate, "ElementName");
        if (!name || !number || !source)
            return false;
        for (const CIMInstance& listed : units) {
            const bool sameName = text(listed, "Name").value_or("") == *name;
            const bool sameNumber = text(listed, "FRUNumber").value_or("") == *number;
            const bool sameSource = text(listed, "ElementName").value_or("") == *source;
            if (sameNumber && !sameName)
                return false;
            if (sameName && sameNumber && !sameSource)
                return false;
        }
        units.push_back(candidate);
        return true;
    }

    std::vector<CIMInstance> units;

private:
    static std::optional<std::string> text(const CIMInstance& unit, const char* name) {
        const std::string found = textOf(unit, name);
        return found == "-" ? std::nullopt : std::optional(found);
    }
};

}  // namespace

TEST(FruList, HidesAGatheredUnitBehindAStoredOneOfItsNumber) {
    FruList list;
    list.append(_fru("Fan", "39M4", "GETFRU"));
    EXPECT_FALSE(_insert(list, _fru("Fan", "39M4", "IPMI")));
    EXPECT_FALSE(_insert(list, _fru("Pump", "39M4", "GETFRU")));
    EXPECT_TRUE(_insert(list, _fru("Fan", "39M5", "IPMI")));
    EXPECT_THAT(textsOf(list.getUnits(), "FRUNumber"), ElementsAre("39M4", "39M5"));
}

TEST(FruList, KeepsTheFirstOfTwoGatherers) {
    FruList list;
    EXPECT_TRUE(_insert(list, _fru("Disk", "1", "IPMI")));
    EXPECT_FALSE(_insert(list, _fru("Disk", "1", "RAID")));
    EXPECT_THAT(textsOf(list.getUnits(), "ElementName"), ElementsAre("IPMI"));
}

TEST(FruList, KeepsEqualUnitsEachTime) {
    FruList list;
    EXPECT_TRUE(_insert(list, _fru("Disk", "1", "RAID")));
    EXPECT_TRUE(_insert(list, _fru("Disk", "1", "RAID")));
    EXPECT_EQ(2U, list.getUnits().size());
}

TEST(FruList, DropsACandidateThatLacksOneOfTheThree) {
    FruList list;
    EXPECT_FALSE(_insert(list, fruOf({{"FRUNumber", "1"}, {"ElementName", "MPA"}})));
    EXPECT_FALSE(_insert(list, fruOf({{"Name", "Fan"}, {"ElementName", "MPA"}})));
    EXPECT_FALSE(_insert(list, fruOf({{"Name", "Fan"}, {"FRUNumber", "1"}})));
    EXPECT_THAT(list.getUnits(), IsEmpty());
}

TEST(FruList, TakesWhatAStoredUnitLacksForEmpty) {
    FruList list;
    list.append(fruOf({{"FRUNumber", "1"}, {"ElementName", "GETFRU"}}));
    EXPECT_TRUE(_insert(list, _fru("", "1", "GETFRU")));
    EXPECT_FALSE(_insert(list, _fru("Fan", "1", "GETFRU")));
    FruList other;
    other.append(fruOf({{"Name", "Fan"}, {"ElementName", "GETFRU"}}));
    EXPECT_FALSE(_insert(other, _fru("Pump", "", "IPMI")));
    EXPECT_TRUE(_insert(other, _fru("Pump", "1", "IPMI")));
}

TEST(FruList, AppendsStoredUnitsWithoutAQuestion) {
    FruList list;
    list.append(_fru("Fan", "1", "GETFRU"));
    list.append(_fru("Pump", "1", "GETFRU"));
    EXPECT_EQ(2U, list.getUnits().size());
    EXPECT_FALSE(_insert(list, _fru("Fan", "1", "GETFRU")));
}

TEST(FruList, TellsTextsApartByEveryCodeUnit) {
    FruList list;
    list.append(_fru("Fan", "a", "GETFRU"));
    EXPECT_TRUE(_insert(list, _fru("Fan", "A", "IPMI")));
    EXPECT_TRUE(_insert(list, _fru("Fan", "a ", "IPMI")));
    // Halves of characters have no UTF-8 that tells them apart.
    for (const Uint16 half : {Uint16(0xD800), Uint16(0xD801)}) {
        CIMInstance unit = fruOf({{"Name", "Fan"}, {"ElementName", "IPMI"}});
        const Char16 unpaired(half);
        unit.addProperty(CIMProperty(CIMName("FRUNumber"), CIMValue(String(&unpaired, 1))));
        EXPECT_TRUE(_insert(list, unit));
        unit.getProperty(0).setValue(CIMValue(String("Pump")));
        EXPECT_FALSE(_insert(list, unit));
    }
}

TEST(FruList, SaysWhatBecameOfACandidate) {
    FruList list;
    _lines().clear();
    _insert(list, _fru("Fan", "1", "IPMI"));
    _insert(list, _fru("Pump", "1", "IPMI"));
    _insert(list, fruOf({{"Name", "Fan"}}));
    EXPECT_THAT(_lines(), ElementsAre("FRUProvider::_insert: returning true",
                                      "FRUProvider::_insert: returning false"));
}

TEST(FruList, AgreesWithThePlainRulesOnRandomLists) {
    auto random = repeatableRandom(9);
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    const char* const texts[] = {"", "a", "b", "A"};
    for (int round = 0; round < 5000; ++round) {
        FruList list;
        PlainList plain;
        // Few texts, so that most meet; one property in eight is missing.
        const unsigned stored = below(6);
        const unsigned variety = 1 + below(4);
        for (unsigned i = 0; i < stored + 12; ++i) {
            CIMInstance unit("TAVIRA_FRU");
            for (const char* const name : {"Name", "FRUNumber", "ElementName"}) {
                if (below(8) != 0) {
                    unit.addProperty(
                        CIMProperty(CIMName(name), CIMValue(String(texts[below(variety)]))));
                }
            }
            if (i < stored) {
                list.append(unit);
                plain.append(unit);
            } else {
                ASSERT_EQ(plain.insert(unit), _insert(list, unit)) << "round " << round;
            }
        }
        ASSERT_EQ(plain.units.size(), list.getUnits().size());
        for (std::size_t i = 0; i < plain.units.size(); ++i)
            ASSERT_TRUE(plain.units[i].identical(list.getUnits()[i])) << "round " << round;
    }
}
