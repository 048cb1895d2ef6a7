// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruImport.h"

#include <gmock/gmock.h>

#include "CimText.h"
#include "Error.h"

using namespace QZ;
using namespace Pegasus;
using testing::IsEmpty;

namespace {

CIMInstance _unit(const std::string& number, const std::string& name) {
    CIMInstance unit("TAVIRA_FRU");
    const std::string texts[] = {number, "7", "Acme", name};
    for (std::size_t i = 0; i < 4; ++i) {
        unit.addProperty(CIMProperty(CIMName(fruColumns()[i]), CIMValue(make_String(texts[i]))));
    }
    unit.addProperty(CIMProperty(CIMName("Note"), CIMValue(Uint8(5))));
    unit.setPath(CIMObjectPath(String("TAVIRA_FRU.FRUNumber=\"") + make_String(number) +
                               String("\",IdentifyingNumber=\"7\",Vendor=\"Acme\"")));
    return unit;
}

std::vector<std::string> _texts(const std::string& text) {
    std::vector<std::string> texts;
    for (const FruChange& change : planImport({_unit("1", "Fan")}, text)) {
        texts.push_back(change.text);
    }
    return texts;
}

std::string _refusal(const std::string& text) {
    try {
        planImport({}, text);
    } catch (const Error& error) {
        return error.what();
    }
    return "none";
}

const std::string _header = "FRUNumber,IdentifyingNumber,Vendor,Name\n";

}  // namespace

TEST(FruImport, ChangesNothingForWhatWasExported) {
    const std::vector<CIMInstance> units = {_unit("1", "Fan"), _unit("2", "a \"b\", c\nd")};
    EXPECT_THAT(planImport(units, exportFrus(units)), IsEmpty());
}

TEST(FruImport, AddsWhatIsNotRecorded) {
    const std::vector<FruChange> changes = planImport({}, _header + "1,7,Acme,Fan\n");
    ASSERT_EQ(1U, changes.size());
    EXPECT_TRUE(changes[0].isNew);
    EXPECT_EQ(4U, changes[0].unit.getPropertyCount());
    EXPECT_EQ("add FRUNumber=\"1\",IdentifyingNumber=\"7\",Vendor=\"Acme\" Name: \"\" -> \"Fan\"",
              changes[0].text);
}

TEST(FruImport, ChangesTheCellsOfARowAndKeepsTheRest) {
    const std::vector<FruChange> changes = planImport({_unit("1", "Fan")}, _header + "1,7,Acme,\n");
    ASSERT_EQ(1U, changes.size());
    EXPECT_FALSE(changes[0].isNew);
    const CIMInstance& unit = changes[0].unit;
    EXPECT_EQ("", make_string(unit.getProperty(unit.findProperty("Name")).getValue().toString()));
    EXPECT_NE(PEG_NOT_FOUND, unit.findProperty("Note"));
    EXPECT_EQ(_unit("1", "").getPath(), unit.getPath());
    EXPECT_EQ("edit FRUNumber=\"1\",IdentifyingNumber=\"7\",Vendor=\"Acme\" Name: \"Fan\" -> \"\"",
              changes[0].text);
}

TEST(FruImport, LeavesAColumnAloneThatTheFileDoesNotHave) {
    EXPECT_THAT(_texts("FRUNumber,IdentifyingNumber,Vendor\n1,7,Acme\n"), IsEmpty());
}

TEST(FruImport, TakesColumnsInAnyOrderAndLetterCase) {
    EXPECT_THAT(_texts("name,VENDOR,identifyingnumber,FruNumber\nFan,Acme,7,1\n"), IsEmpty());
}

TEST(FruImport, SkipsRowsOfEmptyCells) {
    EXPECT_THAT(_texts(_header + ",,,\n1,7,Acme,Fan\n,,,\n"), IsEmpty());
}

TEST(FruImport, RefusesAFileOfAnotherForm) {
    EXPECT_EQ("line 1: there is no header", _refusal(""));
    EXPECT_EQ("line 1: there is no column \"Serial\"", _refusal("FRUNumber,Serial\n"));
    EXPECT_EQ("line 1: there is no column Vendor", _refusal("FRUNumber,IdentifyingNumber,Name\n"));
    EXPECT_EQ("line 1: the column \"vendor\" is there twice",
              _refusal("Vendor,vendor,FRUNumber,IdentifyingNumber\n"));
    EXPECT_EQ("line 2: 3 cells under 4 columns", _refusal(_header + "1,7,Acme\n"));
    EXPECT_EQ("line 3: a second FRUNumber=\"1\",IdentifyingNumber=\"7\",Vendor=\"Acme\"",
              _refusal(_header + "1,7,Acme,a\n1,7,Acme,b\n"));
    EXPECT_EQ("line 2: a quote that is never closed", _refusal(_header + "\"1\n"));
}
