// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMIndication.h>
#include <Pegasus/Common/CIMInstance.h>
#include <gtest/gtest.h>

#include <type_traits>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMProperty property(const char* name, const char* value) {
    return CIMProperty(CIMName(name), CIMValue(String(value)));
}

CIMInstance lamp() {
    CIMInstance instance(CIMName("Lamp"));
    instance.addProperty(property("Name", "desk")).addProperty(property("Colour", "red"));
    return instance;
}

std::string value(const CIMConstInstance& instance, const char* name) {
    String found;
    instance.getProperty(instance.findProperty(CIMName(name))).getValue().get(found);
    return text(found);
}

TEST(CIMInstance, FindsPropertiesIgnoringCase) {
    const CIMInstance instance = lamp();
    EXPECT_EQ(2U, instance.getPropertyCount());
    EXPECT_EQ(1U, instance.findProperty(CIMName("cOLOUR")));
    EXPECT_EQ(PEG_NOT_FOUND, instance.findProperty(CIMName("Weight")));
    EXPECT_EQ("Lamp", text(instance.getClassName().getString()));
    EXPECT_EQ("Lamp", text(instance.getPath().toString()));
}

TEST(CIMInstance, HasEveryPropertyOnce) {
    CIMInstance instance = lamp();
    const auto again = [&] { instance.addProperty(property("COLOUR", "blue")); };
    EXPECT_THROW(again(), AlreadyExistsException);
    EXPECT_NE(std::string::npos, thrownMessage(again).find("property \"COLOUR\""));
    EXPECT_EQ(2U, instance.getPropertyCount());
    EXPECT_THROW(instance.addProperty(CIMProperty()), UninitializedObjectException);
}

TEST(CIMInstance, RefusesPositionsBehindTheLast) {
    CIMInstance instance = lamp();
    const CIMInstance reader = instance;
    EXPECT_THROW(instance.getProperty(2), IndexOutOfBoundsException);
    EXPECT_THROW(reader.getProperty(PEG_NOT_FOUND), IndexOutOfBoundsException);
    EXPECT_THROW(instance.removeProperty(2), IndexOutOfBoundsException);
    EXPECT_THROW(instance.getQualifier(0), IndexOutOfBoundsException);
    EXPECT_THROW(instance.removeQualifier(0), IndexOutOfBoundsException);
}

TEST(CIMInstance, RemovesProperties) {
    CIMInstance instance = lamp();
    instance.removeProperty(0);
    EXPECT_EQ(1U, instance.getPropertyCount());
    EXPECT_EQ(0U, instance.findProperty(CIMName("Colour")));
    EXPECT_NO_THROW(instance.addProperty(property("Name", "wall")));
}

TEST(CIMInstance, CopiesShareAndClonesDoNot) {
    CIMInstance original = lamp();
    CIMInstance copy = original;
    CIMConstInstance reader;
    reader = original;
    const CIMInstance clone = reader.clone();
    copy.getProperty(1).setValue(CIMValue(String("blue")));
    copy.addProperty(property("Weight", "heavy"));
    copy.setPath(CIMObjectPath("root/tavqz:lamp.Name=\"desk\""));
    EXPECT_EQ("blue", value(original, "Colour"));
    EXPECT_EQ("heavy", value(reader, "Weight"));
    EXPECT_EQ("root/tavqz:lamp.Name=\"desk\"", text(original.getPath().toString()));
    EXPECT_EQ("red", value(clone, "Colour"));
    EXPECT_EQ(2U, clone.getPropertyCount());
    EXPECT_EQ("Lamp", text(clone.getPath().toString()));
}

TEST(CIMInstance, SharesThePropertyThatItWasGiven) {
    CIMInstance instance(CIMName("Lamp"));
    CIMProperty name = property("Name", "desk");
    instance.addProperty(name);
    name.setValue(CIMValue(String("wall")));
    EXPECT_EQ("wall", value(instance, "Name"));
}

TEST(CIMInstance, GivesPropertiesToReadersReadOnly) {
    static_assert(
        std::is_same_v<CIMProperty, decltype(std::declval<CIMInstance>().getProperty(0))>);
    static_assert(std::is_same_v<CIMConstProperty,
                                 decltype(std::declval<const CIMInstance>().getProperty(0))>);
    static_assert(std::is_same_v<CIMIndication, CIMInstance>);
    static_assert(!std::is_convertible_v<CIMConstInstance, CIMInstance>);
    static_assert(!std::is_convertible_v<CIMObject, CIMInstance>);
    static_assert(std::is_convertible_v<CIMInstance, CIMObject>);
    static_assert(std::is_convertible_v<CIMInstance, CIMConstObject>);
    static_assert(std::is_convertible_v<CIMName, CIMInstance>);
}

TEST(CIMInstance, KeepsItsClassWhateverItsPath) {
    CIMInstance instance = lamp();
    EXPECT_THROW(instance.setPath(CIMObjectPath("Bulb.Name=\"desk\"")), TypeMismatchException);
    EXPECT_THROW(instance.setPath(CIMObjectPath()), UninitializedObjectException);
    EXPECT_EQ("Lamp", text(instance.getPath().toString()));
    EXPECT_THROW(CIMInstance{CIMName()}, UninitializedObjectException);
}

TEST(CIMInstance, IsIdenticalInAllThatItHas) {
    EXPECT_TRUE(lamp().identical(lamp()));
    EXPECT_TRUE(lamp().identical(lamp().clone()));
    CIMInstance other = lamp();
    other.setPath(CIMObjectPath("Lamp.Name=\"desk\""));
    EXPECT_FALSE(lamp().identical(other));
    other = lamp();
    other.addQualifier(CIMQualifier(CIMName("Old"), CIMValue(true)));
    EXPECT_FALSE(lamp().identical(other));
    other = lamp();
    other.removeProperty(1);
    EXPECT_FALSE(lamp().identical(other));
    other.addProperty(property("Colour", "blue"));
    EXPECT_FALSE(lamp().identical(other));
    CIMInstance swapped(CIMName("Lamp"));
    swapped.addProperty(property("Colour", "red")).addProperty(property("Name", "desk"));
    EXPECT_FALSE(lamp().identical(swapped));
}

TEST(CIMInstance, BuildsItsPathFromTheKeysOfItsClass) {
    CIMClass cimClass(CIMName("Lamp"));
    EXPECT_EQ("Lamp", text(lamp().buildPath(cimClass).toString()));
    CIMProperty name = property("NAME", "");
    name.addQualifier(CIMQualifier(CIMName("Key"), CIMValue(true)));
    cimClass.addProperty(name).addProperty(property("Colour", ""));
    EXPECT_EQ("Lamp.NAME=\"desk\"", text(lamp().buildPath(cimClass).toString()));
    CIMInstance nameless(CIMName("Lamp"));
    EXPECT_THROW(nameless.buildPath(cimClass), Exception);
}

TEST(CIMInstance, LosesWhatAClientDidNotAskFor) {
    CIMInstance instance = lamp();
    instance.addQualifier(CIMQualifier(CIMName("Old"), CIMValue(true)));
    for (Uint32 i = 0; i < 2; ++i) {
        instance.getProperty(i).setClassOrigin(CIMName("Lamp"));
        instance.getProperty(i).addQualifier(CIMQualifier(CIMName("Read"), CIMValue(true)));
    }
    CIMInstance kept = instance.clone();
    kept.instanceFilter(true, true, CIMPropertyList());
    EXPECT_TRUE(kept.identical(instance));
    Array<CIMName> names(1, CIMName("COLOUR"));
    instance.instanceFilter(false, false, CIMPropertyList(names));
    ASSERT_EQ(1U, instance.getPropertyCount());
    EXPECT_EQ("red", value(instance, "Colour"));
    EXPECT_EQ(0U, instance.getQualifierCount());
    EXPECT_EQ(0U, instance.getProperty(0).getQualifierCount());
    EXPECT_TRUE(instance.getProperty(0).getClassOrigin().isNull());
    kept.instanceFilter(true, true, CIMPropertyList(Array<CIMName>()));
    EXPECT_EQ(0U, kept.getPropertyCount());
}

TEST(CIMInstance, SaysThatAnEmptyHandleIsUninitialized) {
    CIMInstance empty;
    EXPECT_TRUE(empty.isUninitialized());
    EXPECT_FALSE(lamp().isUninitialized());
    EXPECT_THROW(empty.getPath(), UninitializedObjectException);
    EXPECT_THROW(empty.getClassName(), UninitializedObjectException);
    EXPECT_THROW(empty.findProperty(CIMName("A")), UninitializedObjectException);
    EXPECT_THROW(empty.addProperty(property("A", "b")), UninitializedObjectException);
    EXPECT_THROW(empty.setPath(CIMObjectPath("Lamp")), UninitializedObjectException);
    EXPECT_THROW(empty.clone(), UninitializedObjectException);
    EXPECT_THROW(empty.identical(lamp()), UninitializedObjectException);
    EXPECT_THROW(lamp().identical(empty), UninitializedObjectException);
}

}  // namespace
