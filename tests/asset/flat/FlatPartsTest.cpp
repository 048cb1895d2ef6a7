// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <list>
#include <string>

#include "Machines.h"
#include "PartInfoFactory.h"
#include "TestMachine.h"
#include "tavqz/AssetFlat.h"

namespace {

constexpr int HIGHEST = std::numeric_limits<int>::max();
constexpr int LOWEST = std::numeric_limits<int>::min();

// The parts are the process's: each test reads its own first.
class FlatParts : public testing::Test {
protected:
    FlatParts() { writeMachines(_machines.path()); }

    // From now on.
    void beOn(const std::string& machine) {
        setenv("TAVQZ_HOST_ROOT", _machines.file(machine).c_str(), 1);
    }

    static std::string textOf(void (*get)(char*, int), int index) {
        char text[1024] = "untouched";
        get(text, index);
        return text;
    }

    static std::string part(int index) {
        std::string all;
#define APPEND(field) all.append(textOf(getPI##field, index)).append("|");
        TAVQZ_PART_TEXTS(APPEND)
#undef APPEND
        return all;
    }

    TestMachine _bare;
    TemporaryFolder _machines;
};

TEST_F(FlatParts, AreAsManyAsTheListHas) {
    beOn("rack-server");
    AssetIDinit();
    std::list<QZ::PartInfo*> parts = QZ::PartInfoFactory::newList();
    EXPECT_EQ(getPICount(), int(parts.size()));
    EXPECT_GT(getPICount(), 10);
    QZ::PartInfoFactory::deleteList(parts);
}

TEST_F(FlatParts, ComeInTheListsOrder) {
    beOn("rack-server");
    AssetIDinit();
    std::list<QZ::PartInfo*> parts = QZ::PartInfoFactory::newList();
    int index = 0;
    for (const QZ::PartInfo* expected : parts) {
        std::string all;
        std::string text;
#define APPEND(field)           \
    expected->get##field(text); \
    all.append(text).append("|");
        TAVQZ_PART_TEXTS(APPEND)
#undef APPEND
        EXPECT_EQ(part(index++), all);
    }
    QZ::PartInfoFactory::deleteList(parts);
}

// That the old ones are freed is seen where leaks are looked for.
TEST_F(FlatParts, AreReplacedByASecondInitialisation) {
    beOn("rack-server");
    AssetIDinit();
    const int before = getPICount();
    beOn("old-server");
    EXPECT_EQ(part(0), "System|Example Corp|Example Server 2U -[EX2100-7A]-|EXS2100417|04|");
    AssetIDinit();
    EXPECT_NE(getPICount(), before);
    EXPECT_NE(part(0), "System|Example Corp|Example Server 2U -[EX2100-7A]-|EXS2100417|04|");
    EXPECT_EQ(textOf(getPITag, 0), "System");
}

TEST_F(FlatParts, AreEmptyTextBeyondTheList) {
    beOn("rack-server");
    AssetIDinit();
    const int count = getPICount();
    for (const int index : {count, count + 1, HIGHEST, -1, LOWEST}) {
        EXPECT_EQ(part(index), "|||||") << index;
    }
    EXPECT_EQ(getPICount(), count);
}

TEST_F(FlatParts, TakeANullBuffer) {
    AssetIDinit();
#define WITH_NULL(field) getPI##field(nullptr, 0);
    TAVQZ_PART_TEXTS(WITH_NULL)
#undef WITH_NULL
    EXPECT_EQ(textOf(getPITag, 0), "System");
}

TEST_F(FlatParts, AreReadWhereTheRecordCannotBeSaved) {
    beOn("rack-server");
    _bare.folder().write("data/file", "");
    const ScopedEnvironment unwritable("TAVQZ_DATA_DIR", _bare.folder().file("data/file"));
    AssetIDinit();
    EXPECT_GT(getPICount(), 10);
}

}  // namespace
