// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofParser.h"

#include <gmock/gmock.h>

#include "TemporaryFolder.h"

using namespace QZ;

namespace {

std::string _refusal(const std::string& text) {
    try {
        parseMof(text, "f.mof");
    } catch (const MofError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace

TEST(MofParser, ReadsAClass) {
    const MofDocument document = parseMof(R"(
        [Description("what " "it is"), Abstract]
        class A_B : A_Base {
            [Key] string Name;
            uint32 Sizes[4] = {1, 2};
            sint8 Level = -5;
            A_B ref Other;
        };)",
                                          "f.mof");
    ASSERT_EQ(document.classes.size(), 1U);
    const MofClass& declared = document.classes[0];
    EXPECT_EQ(declared.name, "A_B");
    EXPECT_EQ(declared.superclass, "A_Base");
    ASSERT_EQ(declared.qualifiers.size(), 2U);
    EXPECT_EQ(declared.qualifiers[0].value->text, "what it is");
    EXPECT_FALSE(declared.qualifiers[1].value);
    ASSERT_EQ(declared.properties.size(), 4U);
    EXPECT_EQ(declared.properties[0].type, Pegasus::CIMTYPE_STRING);
    EXPECT_EQ(declared.properties[1].arraySize, 4U);
    EXPECT_TRUE(declared.properties[1].isArray);
    EXPECT_EQ(declared.properties[1].defaultValue.elements.size(), 2U);
    EXPECT_TRUE(declared.properties[2].defaultValue.negative);
    EXPECT_EQ(declared.properties[2].defaultValue.number, 5U);
    EXPECT_EQ(declared.properties[3].type, Pegasus::CIMTYPE_REFERENCE);
    EXPECT_EQ(declared.properties[3].referenceClass, "A_B");
}

TEST(MofParser, ReadsAnInstance) {
    const MofDocument document = parseMof(R"(instance of A_B {
        Name = "x"; Flag = TRUE; Ratio = -1.5; None = NULL; Letter = 'q'; List = {}; };)",
                                          "f.mof");
    ASSERT_EQ(document.instances.size(), 1U);
    const MofInstance& instance = document.instances[0];
    EXPECT_EQ(instance.className, "A_B");
    EXPECT_EQ(instance.find("NAME")->text, "x");
    EXPECT_EQ(instance.find("Flag")->number, 1U);
    EXPECT_EQ(instance.find("Ratio")->text, "1.5");
    EXPECT_TRUE(instance.find("Ratio")->negative);
    EXPECT_EQ(instance.find("None")->kind, MofLiteral::Null);
    EXPECT_EQ(instance.find("Letter")->number, unsigned('q'));
    EXPECT_EQ(instance.find("List")->kind, MofLiteral::Array);
    EXPECT_EQ(instance.find("Absent"), nullptr);
}

TEST(MofParser, ReadsQualifierDeclarationsAndSkipsPragmas) {
    const MofDocument document = parseMof(
        "#pragma locale (\"en_US\")\n"
        "Qualifier Values : string[] = {\"a\"}, Scope(property, method), Flavor(Translatable);",
        "f.mof");
    ASSERT_EQ(document.qualifiers.size(), 1U);
    EXPECT_EQ(document.qualifiers[0].name, "Values");
    EXPECT_TRUE(document.qualifiers[0].isArray);
}

TEST(MofParser, ReadsScopesAndFlavors) {
    const MofDocument document = parseMof(
        "Qualifier A : boolean, Scope(Class, ASSOCIATION, property);"
        "Qualifier B : boolean, Scope(any), Flavor(Restricted, DisableOverride, Translatable);"
        "[B(true): EnableOverride ToSubclass, A] class C {};",
        "f.mof");
    EXPECT_EQ(document.qualifiers[0].scope,
              unsigned(SCOPE_CLASS | SCOPE_ASSOCIATION | SCOPE_PROPERTY));
    EXPECT_FALSE(document.qualifiers[0].flavor.isOverridable);
    EXPECT_FALSE(document.qualifiers[0].flavor.isToSubclass);
    EXPECT_EQ(document.qualifiers[1].scope, unsigned(SCOPE_ANY));
    EXPECT_EQ(document.qualifiers[1].flavor.isToSubclass, false);
    EXPECT_EQ(document.qualifiers[1].flavor.isOverridable, false);
    EXPECT_EQ(document.qualifiers[1].flavor.isTranslatable, true);
    const std::vector<MofQualifier>& given = document.classes[0].qualifiers;
    EXPECT_EQ(given[0].flavor.isOverridable, true);
    EXPECT_EQ(given[0].flavor.isToSubclass, true);
    EXPECT_FALSE(given[0].flavor.isTranslatable);
    EXPECT_FALSE(given[1].flavor.isOverridable);
    EXPECT_EQ(_refusal("Qualifier A : boolean, Scope(house);"),
              "f.mof:1:30: a scope expected, found \"house\"");
    EXPECT_EQ(_refusal("[A: Sweet] class C {};"), "f.mof:1:5: a flavor expected, found \"Sweet\"");
}

TEST(MofParser, SaysWhereAndWhatWasExpected) {
    EXPECT_EQ(_refusal("class A {\n  string B\n};"), "f.mof:3:1: \";\" expected, found \"}\"");
    EXPECT_EQ(_refusal("class A { strin B; };"), "f.mof:1:11: a type expected, found \"strin\"");
    EXPECT_EQ(_refusal("class A {"),
              "f.mof:1:10: a property or \"}\" expected, found the end of the file");
    EXPECT_EQ(_refusal("class A { uint8 B = ; };"), "f.mof:1:21: a value expected, found \";\"");
    EXPECT_EQ(_refusal("class A { uint8 B = -\"x\"; };"),
              "f.mof:1:22: a number expected, found a string");
    EXPECT_EQ(_refusal("klass A {};"),
              "f.mof:1:1: a class, an instance, a qualifier or #pragma expected, found \"klass\"");
    EXPECT_EQ(_refusal("instance of A { B = 1; b = 2; };"), "f.mof:1:24: \"b\" is given twice");
    EXPECT_EQ(_refusal("class A { uint8 B[0]; };"),
              "f.mof:1:19: a size from 1 to 4294967295 expected");
}

TEST(MofParser, RefusesWhatItWouldHaveToSkip) {
    EXPECT_EQ(_refusal("class A { uint32 Reset(); };"),
              "f.mof:1:23: a property expected, methods are not supported");
    EXPECT_EQ(_refusal("#pragma include (\"b.mof\")"),
              "f.mof:1:9: #pragma include is not supported");
    EXPECT_NE(_refusal("instance of A as $B { };"), "accepted");
    EXPECT_NE(_refusal("[Key] instance of A { };"), "accepted");
}

TEST(MofParser, ReadsFilesAndNamesThoseItCannot) {
    TemporaryFolder folder;
    EXPECT_EQ(parseMofFile(folder.write("a.mof", "class A {};")).classes.size(), 1U);
    EXPECT_THROW(parseMofFile(folder.path()), Error);
    try {
        parseMofFile(folder.file("missing.mof"));
        FAIL();
    } catch (const Error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("missing.mof: No such file"));
    }
}
