// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassConversion.h"

#include <gtest/gtest.h>

#include "MofParser.h"
#include "MofText.h"

using namespace QZ;
using namespace Pegasus;

namespace {

const ClassRepository& _classes() {
    static const ClassRepository classes = [] {
        ClassRepository result;
        result.add(parseMof(R"(
            Qualifier Key : boolean = false, Scope(property);
            Qualifier Override : string, Scope(property), Flavor(Restricted);
            Qualifier Description : string, Scope(any), Flavor(Translatable);
            Qualifier ValueMap : string[], Scope(property);
            class A { [Key, Description("an id")] string Id; uint8 P[3]; uint16 Q = 7; A ref R; };
            [Description("of B")]
            class B : A { [Override("Q"), ValueMap{"1", "2"}] uint16 Q; datetime When; };)",
                            "f.mof"));
        return result;
    }();
    return classes;
}

}  // namespace

TEST(ClassConversion, TellsOwnFromInherited) {
    const CIMClass made = makeCimClass(*_classes().find("B"));
    EXPECT_EQ(made.getClassName(), CIMName("B"));
    EXPECT_EQ(made.getSuperClassName(), CIMName("A"));
    ASSERT_EQ(made.getPropertyCount(), 5U);
    const CIMConstProperty id = made.getProperty(0);
    EXPECT_TRUE(id.getPropagated());
    EXPECT_EQ(id.getClassOrigin(), CIMName("A"));
    EXPECT_TRUE(id.getQualifier(id.findQualifier("Key")).getPropagated());
    const CIMConstProperty q = made.getProperty(3);
    EXPECT_FALSE(q.getPropagated());
    EXPECT_EQ(q.getClassOrigin(), CIMName("A"));
    EXPECT_EQ(q.getValue(), CIMValue(Uint16(7)));
    EXPECT_FALSE(q.getQualifier(q.findQualifier("ValueMap")).getPropagated());
    EXPECT_EQ(made.getProperty(4).getClassOrigin(), CIMName("B"));
}

TEST(ClassConversion, KeepsTypesOfPropertiesWithoutADefault) {
    const CIMClass made = makeCimClass(*_classes().find("A"));
    EXPECT_TRUE(made.getProperty(1).isArray());
    EXPECT_EQ(made.getProperty(1).getArraySize(), 3U);
    EXPECT_EQ(made.getProperty(1).getType(), CIMTYPE_UINT8);
    EXPECT_TRUE(made.getProperty(1).getValue().isNull());
    EXPECT_EQ(made.getProperty(3).getType(), CIMTYPE_REFERENCE);
    EXPECT_EQ(made.getProperty(3).getReferenceClassName(), CIMName("A"));
}

TEST(ClassConversion, SharesNothingWithTheRepository) {
    CIMClass made = makeCimClass(*_classes().find("B"));
    made.getQualifier(0).setValue(CIMValue(String("changed")));
    EXPECT_EQ(_classes().find("B")->qualifiers.text("Description"), "of B");
}

TEST(ClassConversion, ComesBackAsItWas) {
    for (const auto& declared : _classes().classes()) {
        const ClassDeclaration back = makeDeclaration(makeCimClass(*declared));
        EXPECT_EQ(mofClass(back), mofClass(*declared));
        ASSERT_EQ(back.properties.size(), declared->properties.size());
        for (std::size_t i = 0; i < back.properties.size(); ++i) {
            EXPECT_EQ(back.properties[i].origin, declared->properties[i].origin);
            EXPECT_EQ(back.properties[i].isKey(), declared->properties[i].isKey());
            EXPECT_EQ(back.properties[i].referenceClass, declared->properties[i].referenceClass);
        }
        EXPECT_TRUE(makeCimClass(back).identical(makeCimClass(*declared)));
    }
}

TEST(ClassConversion, TakesWhatHasNoOriginForTheClassesOwn) {
    CIMClass bare("C");
    bare.addProperty(CIMProperty("P", CIMValue(Uint8(1))));
    const ClassDeclaration declared = makeDeclaration(bare);
    EXPECT_EQ(declared.superclass, "");
    EXPECT_EQ(declared.properties[0].origin, "C");
    EXPECT_FALSE(declared.properties[0].isPropagated);
}
