// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassRepository.h"

#include <gmock/gmock.h>

#include "MofParser.h"

using namespace QZ;
using Pegasus::CIMFlavor;
using Pegasus::CIMQualifier;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* _qualifiers =
    "Qualifier Key : boolean = false, Scope(property);"
    "Qualifier Override : string, Scope(property), Flavor(Restricted);"
    "Qualifier Write : boolean = false, Scope(property);"
    "Qualifier Description : string, Scope(any);"
    "Qualifier Values : string[], Scope(property);"
    "Qualifier Abstract : boolean = false, Scope(class), Flavor(Restricted);"
    "Qualifier Association : boolean = false, Scope(association), Flavor(DisableOverride);"
    "Qualifier Fixed : string, Scope(any), Flavor(DisableOverride, ToSubclass, Translatable);"
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

const CIMQualifier& _qualifier(const QualifierList& list, const char* name) {
    const CIMQualifier* found = list.find(name);
    if (!found) {
        throw std::runtime_error(std::string("no qualifier ") + name);
    }
    return *found;
}

std::vector<std::string> _names(const std::vector<const ClassDeclaration*>& classes) {
    std::vector<std::string> names;
    names.reserve(classes.size());
    for (const ClassDeclaration* declared : classes) {
        names.push_back(declared->name);
    }
    return names;
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
                      "class B : a { uint8 Size; "
                      "[Override(\"Name\"), Description(\"new\")] string name; };");
    const ClassDeclaration* b = classes.find("B");
    EXPECT_EQ(b->superclass, "A");
    ASSERT_EQ(b->properties.size(), 3U);
    EXPECT_EQ(b->properties[0].name, "Text");
    EXPECT_EQ(b->properties[0].origin, "A");
    EXPECT_TRUE(b->properties[0].isPropagated);
    EXPECT_EQ(b->properties[1].name, "Size");
    EXPECT_EQ(b->properties[1].origin, "B");
    const PropertyDeclaration& name = b->properties[2];
    EXPECT_EQ(name.name, "name");
    EXPECT_EQ(name.origin, "A") << "who brought it in";
    EXPECT_FALSE(name.isPropagated);
    EXPECT_EQ(name.qualifiers.text("Description"), "new");
    EXPECT_TRUE(name.isKey()) << "a key stays a key";
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
    EXPECT_THAT(_refusal("[Terminal] class A {};"),
                HasSubstr("1:2: qualifier \"Terminal\" is not declared"));
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
    EXPECT_THAT(_refusal("class A { uint8 P; }; class B : A { [Override(\"P\")] string P; };"),
                HasSubstr("\"P\" has another type in A"));
}

TEST(ClassRepository, HandsQualifiersDownByTheirFlavor) {
    ClassRepository classes;
    _add(classes, std::string(_qualifiers) +
                      "[Abstract, Description(\"of A\"), Fixed(\"x\")] class A {"
                      "  [Key, Description(\"of P\"): Restricted] string P; };"
                      "class B : A {}; [Description(\"of C\")] class C : B {};");
    const ClassDeclaration* b = classes.find("B");
    EXPECT_FALSE(b->isAbstract()) << "that is restricted";
    EXPECT_EQ(b->qualifiers.text("Description"), "of A");
    EXPECT_TRUE(_qualifier(b->qualifiers, "Description").getPropagated());
    EXPECT_TRUE(b->find("P")->isKey());
    EXPECT_TRUE(_qualifier(b->find("P")->qualifiers, "Key").getPropagated());
    EXPECT_FALSE(b->find("P")->qualifiers.find("Description")) << "restricted where it stands";
    const ClassDeclaration* c = classes.find("C");
    EXPECT_EQ(c->qualifiers.text("Description"), "of C");
    EXPECT_FALSE(_qualifier(c->qualifiers, "Description").getPropagated());
    EXPECT_EQ(c->qualifiers.text("Fixed"), "x");
}

TEST(ClassRepository, ResolvesFlavors) {
    ClassRepository classes;
    _add(classes,
         std::string(_qualifiers) +
             "[fixed(\"x\"), Description(\"y\"): Translatable DisableOverride] class A {};");
    const CIMQualifier& fixed = _qualifier(classes.find("A")->qualifiers, "Fixed");
    EXPECT_EQ(fixed.getName(), Pegasus::CIMName("Fixed"));
    EXPECT_TRUE(fixed.getFlavor().equal(CIMFlavor::TOSUBCLASS + CIMFlavor::TRANSLATABLE));
    const CIMQualifier& description = _qualifier(classes.find("A")->qualifiers, "Description");
    EXPECT_TRUE(description.getFlavor().equal(CIMFlavor::TOSUBCLASS + CIMFlavor::TRANSLATABLE));
    const QualifierDeclaration* declared = classes.findQualifier("description");
    ASSERT_TRUE(declared);
    EXPECT_TRUE(declared->flavor.equal(CIMFlavor::DEFAULTS)) << "what nothing says holds";
    EXPECT_EQ(declared->scope, unsigned(SCOPE_ANY));
    EXPECT_EQ(classes.findQualifier("Abstract")->scope, unsigned(SCOPE_CLASS));
    EXPECT_FALSE(classes.findQualifier("Abstract")->flavor.hasFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_EQ(classes.findQualifier("Other"), nullptr);
}

TEST(ClassRepository, RefusesQualifiersWhereTheyMayNotStandOrChange) {
    EXPECT_THAT(_refusal("class A { [Abstract] uint8 P; };"),
                HasSubstr("1:12: qualifier \"Abstract\" may not stand here"));
    EXPECT_THAT(_refusal("[Key] class A {};"), HasSubstr("\"Key\" may not stand here"));
    EXPECT_THAT(_refusal("[Fixed(\"x\")] class A {}; [Fixed(\"y\")] class B : A {};"),
                HasSubstr("1:27: qualifier \"Fixed\" may not be changed here"));
    EXPECT_EQ(_refusal("[Fixed(\"x\")] class A {}; [Fixed(\"x\")] class B : A {};"), "accepted");
    EXPECT_EQ(_refusal("[Association] class A { [Key] A ref P; };"), "accepted");
    EXPECT_THAT(_refusal("[Association(false)] class A {};"), HasSubstr("may not stand here"));
}

TEST(ClassRepository, WantsOverrideForWhatIsDeclaredAnew) {
    EXPECT_THAT(_refusal("class A { uint8 P; }; class B : A { uint8 p; };"),
                HasSubstr("1:43: \"p\" is in A already: qualifier Override expected"));
    EXPECT_THAT(_refusal("class A { [Override(\"P\")] uint8 P; };"),
                HasSubstr("\"P\" overrides nothing"));
    EXPECT_EQ(_refusal("class A { uint8 P; }; class B : A { [Override(\"P\")] uint8 P; };"
                       "class C : B { [Override(\"P\")] uint8 P; };"),
              "accepted");
}

TEST(ClassRepository, KeepsADefaultThatIsNotGivenAnew) {
    ClassRepository classes;
    _add(classes, std::string(_qualifiers) +
                      "class A { uint8 P = 3; uint8 Q = 4; };"
                      "class B : A { [Override(\"P\")] uint8 P; [Override(\"Q\")] uint8 Q = 5; };");
    const ClassDeclaration* b = classes.find("B");
    EXPECT_EQ(b->find("P")->defaultValue, Pegasus::CIMValue(Pegasus::Uint8(3)));
    EXPECT_EQ(b->find("Q")->defaultValue, Pegasus::CIMValue(Pegasus::Uint8(5)));
}

TEST(ClassRepository, FindsWhatLiesBelowAClass) {
    ClassRepository classes;
    _add(classes, "class A {}; class B : A {}; class C : b {}; class D {}; class E : A {};");
    EXPECT_THAT(_names(classes.subclasses("a", false)), ElementsAre("B", "E"));
    EXPECT_THAT(_names(classes.subclasses("A", true)), ElementsAre("B", "C", "E"));
    EXPECT_THAT(_names(classes.subclasses("C", true)), IsEmpty());
    EXPECT_THAT(_names(classes.subclasses("", false)), ElementsAre("A", "D"));
    EXPECT_THAT(_names(classes.subclasses("", true)), ElementsAre("A", "B", "C", "D", "E"));
    EXPECT_TRUE(classes.isKindOf(*classes.find("C"), "a"));
    EXPECT_TRUE(classes.isKindOf(*classes.find("C"), "C"));
    EXPECT_FALSE(classes.isKindOf(*classes.find("A"), "C"));
    EXPECT_FALSE(classes.isKindOf(*classes.find("D"), "A"));
}
