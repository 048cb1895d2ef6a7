// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassRepository.h"

#include <gmock/gmock.h>

#include "MofParser.h"

using namespace QZ;
using testing::HasSubstr;

namespace {

constexpr const char* _qualifiers =
    "Qualifier Key : boolean = false, Scope(property);"
    "Qualifier Write : boolean = false, Scope(property);"
    "Qualifier Description : string, Scope(any);"
    "Qualifier Values : string[], Scope(property);"
    "Qualifier ValueMap : string[], Scope(property);\n";

void _add(ClassRepository& classes, const std::string& text) {
    classes.add(parseMof(text, "f.mof"));
}

std::string _refusal(const std::string& text) {
    ClassRepository classes;
    _add(classes, _qualifiers);
    try {
        _add(classes, text);
    } catch (const MofError& error) {
        return error.what();
    }
    return "accepted";
}

}  // namespace

TEST(ClassRepository, FindsClassesAndPropertiesIgnoringCase) {
    ClassRepository classes;
    _add(classes, std::string(_qualifiers) +
                      "class A { [Key] string Name; [Write(true), Key(false)] uint8 Size = 3; };");
    const ClassDeclaration* found = classes.find("a");
    ASSERT_TRUE(found);
    EXPECT_TRUE(found->find("NAME")->isKey());
    EXPECT_FALSE(found->find("name")->isWritable());
    EXPECT_TRUE(found->find("size")->isWritable());
    EXPECT_FALSE(found->find("size")->isKey());
    EXPECT_EQ(found->find("size")->defaultValue, Pegasus::CIMValue(Pegasus::Uint8(3)));
    EXPECT_EQ(found->find("other"), nullptr);
    EXPECT_EQ(classes.find("B"), nullptr);
}

TEST(ClassRepository, InheritsPropertiesFirst) {
    ClassRepository classes;
    _add(classes, std::string(_qualifiers) +
                      "class A { [Key] string Name; string Text; };"
                      "class B : a { uint8 Size; [Description(\"new\")] string name; };");
    const ClassDeclaration* b = classes.find("B");
    ASSERT_EQ(b->properties.size(), 3U);
    EXPECT_EQ(b->superclass, "A");
    EXPECT_EQ(b->properties[0].name, "name");
    EXPECT_EQ(b->properties[0].origin, "B");
    EXPECT_EQ(b->properties[0].text("Description"), "new");
    EXPECT_TRUE(b->properties[0].isKey()) << "a key stays a key";
    EXPECT_EQ(b->properties[1].origin, "A");
    EXPECT_EQ(b->properties[2].name, "Size");
}

TEST(ClassRepository, KnowsWhatCodesMean) {
    ClassRepository classes;
    _add(classes, std::string(_qualifiers) +
                      "class A { [ValueMap{\"1\", \"3\"}, Values{\"one\", \"three\"}] uint8 P; };");
    const PropertyDeclaration* property = classes.find("A")->find("P");
    EXPECT_EQ(property->meaning("3"), "three");
    EXPECT_EQ(property->meaning("2"), "");
}

TEST(ClassRepository, RefusesWhatIsNotDeclared) {
    EXPECT_THAT(_refusal("class A : B {};"), HasSubstr("1:7: superclass \"B\" is not declared"));
    EXPECT_THAT(_refusal("[Abstract] class A {};"),
                HasSubstr("1:2: qualifier \"Abstract\" is not declared"));
    EXPECT_THAT(_refusal("class A { [Units(\"x\")] uint8 P; };"), HasSubstr("is not declared"));
}

TEST(ClassRepository, RefusesWhatIsSaidTwice) {
    EXPECT_THAT(_refusal("class A {}; class a {};"), HasSubstr("class \"a\" is declared twice"));
    EXPECT_THAT(_refusal("class A { uint8 P; string p; };"), HasSubstr("\"p\" is declared twice"));
    EXPECT_THAT(_refusal("class A { [Key, key] uint8 P; };"), HasSubstr("is given twice"));
    EXPECT_THAT(_refusal("Qualifier Key : boolean, Scope(any);"), HasSubstr("is declared twice"));
}

TEST(ClassRepository, RefusesValuesOfTheWrongType) {
    EXPECT_THAT(_refusal("class A { uint8 P = 256; };"), HasSubstr("type uint8 expected"));
    EXPECT_THAT(_refusal("class A { [Key(\"x\")] uint8 P; };"), HasSubstr("boolean expected"));
    EXPECT_THAT(_refusal("[Description] class A {};"), HasSubstr("needs a value"));
    EXPECT_THAT(_refusal("class A { uint8 P; }; class B : A { string P; };"),
                HasSubstr("\"P\" has another type in A"));
}
