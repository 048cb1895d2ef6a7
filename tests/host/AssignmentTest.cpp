// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Assignment.h"

#include <Pegasus/Common/CIMObjectPath.h>
#include <gmock/gmock.h>

#include "CommandLine.h"
#include "ScopedEnvironment.h"
#include "TestServer.h"
#include "ValueText.h"

using namespace QZ;
using namespace Pegasus;
using testing::AllOf;
using testing::HasSubstr;

namespace {

const ClassDeclaration& _settings() {
    static const Schema schema = Schema::load(TEST_SCHEMA);
    return *schema.classes.find("TEST_Settings");
}

std::string _text(const std::string& assignment) {
    return plainText(parseAssignment(_settings(), assignment).value);
}

std::string _refusal(const std::string& assignment) {
    try {
        parseAssignment(_settings(), assignment);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace

TEST(Assignment, ReadsValuesOfThePropertysType) {
    EXPECT_EQ(_text("u8=255"), "255");
    EXPECT_EQ(_text("S8=-128"), "-128");
    EXPECT_EQ(_text("U64=18446744073709551615"), "18446744073709551615");
    EXPECT_EQ(_text("S64=-9223372036854775808"), "-9223372036854775808");
    EXPECT_EQ(_text("R64=-0.5"), "-0.5");
    EXPECT_EQ(_text("Truth=TRUE"), "true");
    EXPECT_EQ(_text("Letter=\xC3\xA9"), "\xC3\xA9");
    EXPECT_EQ(_text("Other=TEST_Several.Number=1"), "TEST_Several.Number=1");
}

TEST(Assignment, TakesTextAsItIs) {
    EXPECT_EQ(_text("Text= a=b \n"), " a=b \n");
    EXPECT_EQ(_text("Text="), "");
    EXPECT_FALSE(parseAssignment(_settings(), "Text=").value.isNull());
}

TEST(Assignment, ReadsDatesInEachForm) {
    const ScopedEnvironment zone("TZ", "CET-1CEST,M3.5.0,M10.5.0/3");
    EXPECT_EQ(_text("Moment=2027-01-31"), "20270131000000.000000+060");
    EXPECT_EQ(_text("Moment=2027-07-01"), "20270701000000.000000+120");
    EXPECT_EQ(_text("Moment=2027-01-31T10:20:30-05:00"), "20270131102030.000000-300");
    EXPECT_EQ(_text("Moment=20270131102030.000000+060"), "20270131102030.000000+060");
}

TEST(Assignment, ClearsADateWithAnInterval) {
    CIMDateTime date("20270131102030.000000+060");
    parseAssignment(_settings(), "Moment=").value.get(date);
    EXPECT_TRUE(date.isInterval());
}

TEST(Assignment, RefusesValuesThatDoNotFit) {
    EXPECT_EQ(_refusal("U8=256"), "\"256\" is no value of U8: uint8 expected");
    for (const char* text :
         {"U8=-1", "U8=", "U8=1x", "U8= 1", "U8=+1", "S8=128", "U64=18446744073709551616",
          "S64=--1", "Truth=yes", "R64=", "R64=1e999", "Letter=ab", "Letter=", "Moment=tomorrow",
          "Moment=2027-02-30", "Moment=20271301000000.000000+060", "Text=\xFF",
          "Other=not a path"}) {
        EXPECT_THAT(_refusal(text), HasSubstr("is no value of")) << text;
    }
    EXPECT_THAT(_refusal("Numbers=1"), HasSubstr("arrays cannot be set"));
}

TEST(Assignment, SaysWhatMayBeWritten) {
    EXPECT_THAT(_refusal("Absent=1"),
                AllOf(HasSubstr("TEST_Settings has no property \"Absent\""),
                      HasSubstr("Writable properties of TEST_Settings: Truth, U8, S8")));
    EXPECT_THAT(_refusal("Fixed=1"),
                AllOf(HasSubstr("Fixed is read-only"), HasSubstr("Truth, U8, S8")));
    EXPECT_THAT(_refusal("Text"), HasSubstr("not of the form Property=value"));
    const Schema schema = Schema::load(TEST_SCHEMA);
    EXPECT_THROW(parseAssignment(*schema.classes.find("TEST_Empty"), "Id=1"), UsageError);
    EXPECT_THROW(parseAssignments(_settings(), {"U8=1", "u8=2"}), UsageError);
}

TEST(Assignment, SendsWhatIsReplacedTogetherAlong) {
    TestServer server;
    const CIMInstance current = server.all("TEST_Settings").at(0);
    const CIMInstance modified = modifiedInstance(
        _settings(), current, parseAssignments(_settings(), {"U8=7", "Second=new"}));
    ASSERT_EQ(modified.getPropertyCount(), 3U);
    EXPECT_EQ(modified.getPath(), current.getPath());
    EXPECT_EQ(plainText(modified.getProperty(modified.findProperty("U8")).getValue()), "7");
    EXPECT_EQ(plainText(modified.getProperty(modified.findProperty("First")).getValue()), "one");
    EXPECT_EQ(plainText(modified.getProperty(modified.findProperty("Second")).getValue()), "new");
    EXPECT_EQ(propertyNames(modified).toString(), String("U8, Second, First"));
}

TEST(Assignment, MakesNewInstancesWithTheirKeys) {
    const CIMInstance created = createdInstance(_settings(), {"id=x", "Fixed=y", "U8=4"});
    EXPECT_EQ(created.getClassName(), CIMName("TEST_Settings"));
    ASSERT_EQ(created.getPropertyCount(), 3U);
    EXPECT_EQ(created.getProperty(0).getName(), CIMName("Id"));
    EXPECT_EQ(created.getProperty(2).getValue(), CIMValue(Uint8(4)));
    try {
        createdInstance(_settings(), {"U8=4"});
        FAIL() << "without its key";
    } catch (const UsageError& error) {
        EXPECT_THAT(error.what(), HasSubstr("TEST_Settings needs its key Id"));
    }
    EXPECT_THROW(createdInstance(_settings(), {"Id=x", "ID=y"}), UsageError);
    EXPECT_THROW(createdInstance(_settings(), {"Id=x", "Absent=y"}), UsageError);
}
