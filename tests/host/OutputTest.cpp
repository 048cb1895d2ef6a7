// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Output.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "BuildPaths.h"
#include "MofParser.h"
#include "MofText.h"
#include "TestServer.h"
#include "ValueMaker.h"

using namespace QZ;
using namespace Pegasus;
using Json = nlohmann::json;
using testing::HasSubstr;

namespace {

const CIMInstance& _everything() {
    static const CIMInstance instance = [] {
        TestServer server;
        return server.all("TEST_Everything").at(0);
    }();
    return instance;
}

std::vector<CIMInstance> _several() {
    TestServer server;
    return server.all("TEST_Several");
}

std::vector<CIMObjectPath> _paths() {
    return {CIMObjectPath("root/tavqz:TEST_Several.Number=2"),
            CIMObjectPath("root/tavqz:TEST_Empty.Id=\"a,\\\"b\"")};
}

const Schema& _schema() {
    static const Schema schema = Schema::load(TEST_SCHEMA);
    return schema;
}

}  // namespace

TEST(JsonOutput, KeepsTheTypeOfEveryValue) {
    const Json json = Json::parse(JsonOutput().instances({_everything()}));
    ASSERT_EQ(json.size(), 1U);
    EXPECT_EQ(json[0]["path"], "root/tavqz:TEST_Everything.Id=\"one\"");
    const Json& properties = json[0]["properties"];
    EXPECT_EQ(properties["Truth"], true);
    EXPECT_EQ(properties["U8"], 255);
    EXPECT_EQ(properties["S8"], -128);
    EXPECT_EQ(properties["U64"], UINT64_MAX);
    EXPECT_EQ(properties["S64"], INT64_MIN);
    EXPECT_EQ(properties["R32"], 0.1);
    EXPECT_EQ(properties["R64"], 1e300);
    EXPECT_EQ(properties["Letter"], "\xC3\xA9");
    EXPECT_EQ(properties["Text"], "a \"quoted\", \\ line\n\x1B[31m \xE2\x82\xAC");
    EXPECT_EQ(properties["Moment"], "20270131100203.000000+060");
    EXPECT_EQ(properties["Duration"], "00000003020100.000000:000");
    EXPECT_EQ(properties["Other"], "TEST_Several.Number=2");
    EXPECT_EQ(properties["Numbers"], Json({1, 2}));
    EXPECT_EQ(properties["Texts"], Json({"x", "y,z"}));
    EXPECT_EQ(properties["None"], Json::array());
    EXPECT_TRUE(properties["Nothing"].is_null());
    EXPECT_FALSE(properties.contains("NoText"));
}

TEST(JsonOutput, WritesEmbeddedObjectsAndOddReals) {
    CIMInstance instance("A");
    CIMInstance inner("B");
    inner.addProperty(CIMProperty("P", CIMValue(Uint8(1))));
    instance.addProperty(CIMProperty("I", CIMValue(inner)));
    instance.addProperty(CIMProperty("O", CIMValue(CIMObject(inner))));
    instance.addProperty(CIMProperty("R", CIMValue(Real64(1e308 * 10))));
    const Json properties = Json::parse(JsonOutput().instances({instance}))[0]["properties"];
    EXPECT_EQ(properties["I"], Json({{"class", "B"}, {"properties", {{"P", 1}}}}));
    EXPECT_EQ(properties["O"], properties["I"]);
    EXPECT_TRUE(properties["R"].is_null());
}

TEST(JsonOutput, WritesNamesAndClasses) {
    EXPECT_EQ(Json::parse(JsonOutput().names(_paths()))[0], "root/tavqz:TEST_Several.Number=2");
    EXPECT_EQ(JsonOutput().names({}), "[]\n");
    const Json classes = Json::parse(JsonOutput().classes(_schema()));
    const Json& first = classes[0];
    EXPECT_EQ(first["name"], "TEST_Everything");
    EXPECT_TRUE(first["superclass"].is_null());
    EXPECT_EQ(first["provider"], "TestProvider");
    EXPECT_EQ(first["properties"][0], Json({{"name", "Id"},
                                            {"type", "string"},
                                            {"array", false},
                                            {"key", true},
                                            {"writable", false}}));
}

TEST(CsvOutput, QuotesWhatNeedsIt) {
    const std::string text = CsvOutput().instances({_everything()});
    EXPECT_THAT(text, HasSubstr("path,Id,Truth,U8"));
    EXPECT_THAT(text, HasSubstr("\"root/tavqz:TEST_Everything.Id=\"\"one\"\"\",one,true,255,-128"));
    EXPECT_THAT(text, HasSubstr(",\"a \"\"quoted\"\", \\ line\n\x1B[31m \xE2\x82\xAC\","));
    EXPECT_THAT(text, HasSubstr("\"x, y,z\""));
    EXPECT_TRUE(text.size() > 2 && text.substr(text.size() - 2) == "\r\n");
}

TEST(CsvOutput, LeavesAbsentPropertiesEmpty) {
    CIMInstance first("A");
    first.addProperty(CIMProperty("P", CIMValue(Uint8(1))));
    CIMInstance second("A");
    second.addProperty(CIMProperty("Q", CIMValue(Uint8(2))));
    EXPECT_EQ(CsvOutput().instances({first, second}), "path,P,Q\r\nA,1,\r\nA,,2\r\n");
    EXPECT_EQ(CsvOutput().instances({}), "path\r\n");
    EXPECT_THAT(CsvOutput().names(_paths()), HasSubstr("path\r\nroot/tavqz:TEST_Several"));
    EXPECT_THAT(CsvOutput().classes(_schema()),
                HasSubstr("TEST_Everything,Numbers,uint8[],false,false,TestProvider\r\n"));
}

TEST(MofOutput, WritesInstancesThatReadBackEqual) {
    const std::string text = MofOutput().instances({_everything()});
    const MofDocument document = parseMof(text, "f.mof");
    ASSERT_EQ(document.instances.size(), 1U);
    const MofInstance& read = document.instances[0];
    EXPECT_EQ(read.className, "TEST_Everything");
    ASSERT_EQ(read.properties.size(), _everything().getPropertyCount());
    for (Uint32 i = 0; i < _everything().getPropertyCount(); ++i) {
        const CIMConstProperty property = _everything().getProperty(i);
        const MofAssignment& assignment = read.properties[i];
        EXPECT_EQ(assignment.name, make_string(property.getName().getString()));
        EXPECT_TRUE(makeValue(document, assignment.value, property.getType(), property.isArray()) ==
                    property.getValue())
            << assignment.name;
    }
}

TEST(MofOutput, WritesNamesAsTheirKeys) {
    const MofDocument document = parseMof(MofOutput().names(_paths()), "f.mof");
    ASSERT_EQ(document.instances.size(), 2U);
    EXPECT_EQ(document.instances[0].find("Number")->number, 2U);
    EXPECT_EQ(document.instances[1].find("Id")->text, "a,\"b");
}

TEST(MofOutput, WritesClassesThatReadBackTheSame) {
    Schema shipped = Schema::load(TAVQZ_SOURCE_DIR "/schema");
    const std::string text = MofOutput().classes(shipped);
    const MofDocument document = parseMof(text, "f.mof");
    ASSERT_EQ(document.classes.size(), shipped.classes.classes().size());
    EXPECT_THAT(text, HasSubstr("[Write,\n     DisplayName(\"Lessor\")"));
    EXPECT_THAT(text, HasSubstr("class TAVIRA_LeaseExpirationEvent : CIM_AlertIndication {"));
    EXPECT_THAT(text, HasSubstr("uint32 AssetIDStringArea = 1024;"));
}

TEST(TableOutput, PutsNarrowInstancesInLines) {
    EXPECT_EQ(TableOutput().instances(_several()),
              "Number  Name\n"
              "------  ------\n"
              "1       first\n"
              "2       second\n");
    EXPECT_EQ(TableOutput().instances({}), "");
}

TEST(TableOutput, PutsWideInstancesInBlocks) {
    const std::string text = TableOutput().instances({_everything()});
    EXPECT_THAT(text, HasSubstr("TEST_Everything\nId        one\nTruth     true\n"));
    EXPECT_THAT(text, HasSubstr("Nothing   null\n"));
}

TEST(TableOutput, LetsNothingSteerTheTerminal) {
    const std::string text = TableOutput().instances({_everything()});
    EXPECT_THAT(text, HasSubstr("\\n\\x1B[31m"));
    EXPECT_EQ(text.find('\x1B'), std::string::npos);
    EXPECT_THAT(TableOutput().names({CIMObjectPath("A.K=\"\x1B\"")}), HasSubstr("\\x1B"));
}

TEST(TableOutput, ListsClasses) {
    EXPECT_THAT(TableOutput().classes(_schema()),
                HasSubstr("TEST_Several                TestProvider         Number\n"));
}
