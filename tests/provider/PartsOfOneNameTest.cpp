// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Two parts of one name, as no machine's list has them: this program's own list stands in the place
// of the machine's.

#include "PartInfoFactory.h"
#include "ProviderTest.h"

namespace QZ {

std::vector<PartInfo*> partinfos;

std::list<PartInfo*> PartInfoFactory::newList() {
    std::list<PartInfo*> parts;
    for (const char* serial : {"first", "second"}) {
        parts.push_back(new PartInfo("Corp", "Module", serial, "Memory0", ""));
    }
    return parts;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param)
void PartInfoFactory::deleteList(std::list<PartInfo*> parts) {
    for (const PartInfo* part : parts) {
        delete part;
    }
}

}  // namespace QZ

namespace {

constexpr const char* _class = "TAVIRA_SerialNumberInformation";

class PartsOfOneName : public ProviderTest {};

TEST_F(PartsOfOneName, AreTwoInstancesOfOneIdentifier) {
    const auto parts = enumerate(_class);
    ASSERT_EQ(parts.size(), 2U);
    EXPECT_EQ(valueText(parts[0], "Identifier"), valueText(parts[1], "Identifier"));
    EXPECT_EQ(valueText(parts[1], "SerialNumber"), "second");
    const auto all = names(_class);
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0], all[1]);
}

TEST_F(PartsOfOneName, AreGotAsTheFirstOfThem) {
    const auto parts = get(std::string(_class) +
                           ".Identifier=\"TAVIRA|CorvanaAgent|SerialNumberInformation Memory0\"");
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_EQ(valueText(parts[0], "SerialNumber"), "first");
}

}  // namespace
