// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMProperty colour(const char* value = "red") {
    return CIMProperty(CIMName("Colour"), CIMValue(String(value)));
}

CIMQualifier key() {
    return CIMQualifier(CIMName("Key"), CIMValue(true));
}

std::string stringValue(const CIMConstProperty& property) {
    String value;
    property.getValue().get(value);
    return text(value);
}

TEST(CIMProperty, KeepsWhatItIsMadeOf) {
    const CIMProperty lamp(CIMName("Lamp"), CIMValue(CIMTYPE_REFERENCE, false), 0, CIMName("Bulb"),
                           CIMName("Room"), true);
    EXPECT_EQ("Lamp", text(lamp.getName().getString()));
    EXPECT_EQ(CIMTYPE_REFERENCE, lamp.getType());
    EXPECT_FALSE(lamp.isArray());
    EXPECT_EQ(0U, lamp.getArraySize());
    EXPECT_EQ("Bulb", text(lamp.getReferenceClassName().getString()));
    EXPECT_EQ("Room", text(lamp.getClassOrigin().getString()));
    EXPECT_TRUE(lamp.getPropagated());
    EXPECT_FALSE(colour().getPropagated());
    EXPECT_TRUE(colour().getClassOrigin().isNull());
}

TEST(CIMProperty, RefusesWhatCannotBeAProperty) {
    const CIMValue three(Array<Uint8>(3, Uint8(0)));
    EXPECT_NO_THROW(CIMProperty(CIMName("A"), three, 3));
    EXPECT_THROW(CIMProperty(CIMName("A"), three, 2), TypeMismatchException);
    EXPECT_THROW(CIMProperty(CIMName("A"), CIMValue(Uint8(1)), 1), TypeMismatchException);
    EXPECT_THROW(CIMProperty(CIMName("A"), CIMValue(CIMTYPE_REFERENCE, true)),
                 TypeMismatchException);
    EXPECT_THROW(CIMProperty(CIMName("A"), CIMValue(Uint8(1)), 0, CIMName("Bulb")),
                 TypeMismatchException);
    EXPECT_THROW(CIMProperty(CIMName(), CIMValue(Uint8(1))), UninitializedObjectException);
}

TEST(CIMProperty, CopiesShareAndClonesDoNot) {
    CIMProperty original = colour();
    original.addQualifier(key());
    CIMProperty copy = original;
    CIMConstProperty reader = original;
    CIMProperty clone = reader.clone();
    copy.setValue(CIMValue(String("blue")));
    copy.getQualifier(0).setPropagated(true);
    EXPECT_EQ("blue", stringValue(original));
    EXPECT_EQ("blue", stringValue(reader));
    EXPECT_EQ("red", stringValue(clone));
    EXPECT_EQ(1U, reader.getQualifier(0).getPropagated());
    EXPECT_EQ(0U, clone.getQualifier(0).getPropagated());
}

TEST(CIMProperty, KeepsItsTypeWhenTheValueIsSet) {
    CIMProperty property = colour();
    EXPECT_THROW(property.setValue(CIMValue(Uint8(1))), TypeMismatchException);
    EXPECT_THROW(property.setValue(CIMValue(Array<String>(1))), TypeMismatchException);
    property.setValue(CIMValue(CIMTYPE_STRING, false));
    EXPECT_TRUE(property.getValue().isNull());
    CIMProperty sized(CIMName("A"), CIMValue(Array<Uint8>(3, Uint8(0))), 3);
    EXPECT_THROW(sized.setValue(CIMValue(Array<Uint8>(2, Uint8(0)))), TypeMismatchException);
    EXPECT_EQ(3U, sized.getValue().getArraySize());
}

TEST(CIMProperty, ChangesItsNameOnlyWhileNoObjectHasIt) {
    CIMProperty property = colour();
    EXPECT_THROW(property.setName(CIMName()), UninitializedObjectException);
    property.setName(CIMName("Hue"));
    {
        CIMInstance lamp(CIMName("Lamp"));
        lamp.addProperty(property);
        EXPECT_THROW(property.setName(CIMName("Tint")), Exception);
        EXPECT_NO_THROW(property.setName(CIMName("HUE")));
        EXPECT_EQ(0U, lamp.findProperty(CIMName("hue")));
        CIMProperty own = lamp.getProperty(0).clone();
        EXPECT_NO_THROW(own.setName(CIMName("Tint")));
        const CIMInstance another = lamp.clone();
        lamp.removeProperty(0);
        EXPECT_NO_THROW(property.setName(CIMName("Tint")));
        lamp.addProperty(property);
    }
    EXPECT_NO_THROW(property.setName(CIMName("Shade")));
}

TEST(CIMProperty, KeepsQualifiersInOrderAndOnce) {
    CIMProperty property = colour();
    property.addQualifier(key()).addQualifier(CIMQualifier(CIMName("Write"), CIMValue(false)));
    EXPECT_EQ(2U, property.getQualifierCount());
    EXPECT_EQ(1U, property.findQualifier(CIMName("WRITE")));
    EXPECT_EQ(PEG_NOT_FOUND, property.findQualifier(CIMName("Read")));
    EXPECT_THROW(property.addQualifier(CIMQualifier(CIMName("KEY"), CIMValue(true))),
                 AlreadyExistsException);
    EXPECT_THROW(property.addQualifier(CIMQualifier()), UninitializedObjectException);
    EXPECT_THROW(property.getQualifier(2), IndexOutOfBoundsException);
    EXPECT_THROW(property.removeQualifier(2), IndexOutOfBoundsException);
    property.removeQualifier(0);
    EXPECT_EQ(0U, property.findQualifier(CIMName("Write")));
}

TEST(CIMProperty, IsIdenticalInAllThatItHas) {
    EXPECT_TRUE(colour().identical(colour()));
    EXPECT_FALSE(colour().identical(colour("blue")));
    EXPECT_FALSE(colour().identical(CIMProperty(CIMName("Hue"), CIMValue(String("red")))));
    CIMProperty other = colour();
    other.setPropagated(true);
    EXPECT_FALSE(colour().identical(other));
    other = colour();
    other.setClassOrigin(CIMName("Room"));
    EXPECT_FALSE(colour().identical(other));
    other = colour();
    other.addQualifier(key());
    EXPECT_FALSE(colour().identical(other));
    EXPECT_TRUE(other.identical(other.clone()));
}

TEST(CIMProperty, SaysThatAnEmptyHandleIsUninitialized) {
    CIMProperty empty;
    EXPECT_TRUE(empty.isUninitialized());
    EXPECT_FALSE(colour().isUninitialized());
    EXPECT_THROW(empty.getName(), UninitializedObjectException);
    EXPECT_THROW(empty.getValue(), UninitializedObjectException);
    EXPECT_THROW(empty.setValue(CIMValue(true)), UninitializedObjectException);
    EXPECT_THROW(empty.addQualifier(key()), UninitializedObjectException);
    EXPECT_THROW(empty.clone(), UninitializedObjectException);
    EXPECT_THROW(colour().identical(empty), UninitializedObjectException);
}

TEST(CIMQualifier, CopiesShareAndClonesDoNot) {
    CIMQualifier original(CIMName("Key"), CIMValue(true), CIMFlavor(CIMFlavor::DEFAULTS));
    CIMQualifier copy = original;
    const CIMQualifier clone = CIMConstQualifier(original).clone();
    EXPECT_TRUE(original.identical(clone));
    copy.setValue(CIMValue(false));
    copy.setName(CIMName("Lock"));
    copy.unsetFlavor(CIMFlavor(CIMFlavor::TOSUBCLASS));
    EXPECT_EQ("Lock", text(original.getName().getString()));
    EXPECT_TRUE(original.getValue().equal(CIMValue(false)));
    EXPECT_TRUE(original.getFlavor().equal(CIMFlavor(CIMFlavor::OVERRIDABLE)));
    EXPECT_EQ("Key", text(clone.getName().getString()));
    EXPECT_EQ(CIMTYPE_BOOLEAN, clone.getType());
    EXPECT_FALSE(clone.isArray());
    EXPECT_FALSE(original.identical(clone));
}

TEST(CIMQualifier, ChangesItsNameOnlyWhileNothingHasIt) {
    CIMQualifier qualifier = key();
    CIMProperty property = colour();
    property.addQualifier(qualifier);
    EXPECT_THROW(qualifier.setName(CIMName("Lock")), Exception);
    property.removeQualifier(0);
    EXPECT_NO_THROW(qualifier.setName(CIMName("Lock")));
    EXPECT_THROW(CIMQualifier(CIMName(), CIMValue(true)), UninitializedObjectException);
    EXPECT_THROW(CIMQualifier().getName(), UninitializedObjectException);
    EXPECT_TRUE(CIMConstQualifier().isUninitialized());
}

TEST(CIMFlavor, IsASetOfFlags) {
    CIMFlavor flavor;
    EXPECT_TRUE(flavor.equal(CIMFlavor::NONE));
    flavor.addFlavor(CIMFlavor::DEFAULTS);
    EXPECT_TRUE(flavor.hasFlavor(CIMFlavor::OVERRIDABLE));
    EXPECT_TRUE(flavor.hasFlavor(CIMFlavor::TOSUBELEMENTS));
    EXPECT_FALSE(flavor.hasFlavor(CIMFlavor::OVERRIDABLE + CIMFlavor::RESTRICTED));
    flavor.removeFlavor(CIMFlavor::ENABLEOVERRIDE);
    EXPECT_TRUE(flavor.equal(CIMFlavor::TOSUBCLASS));
    EXPECT_EQ("", text(CIMFlavor().toString()));
    EXPECT_EQ("OVERRIDABLE TOSUBCLASS TRANSLATABLE",
              text((CIMFlavor::DEFAULTS + CIMFlavor::TRANSLATABLE).toString()));
    EXPECT_EQ("TOINSTANCE DISABLEOVERRIDE RESTRICTED",
              text((CIMFlavor::RESTRICTED + CIMFlavor::DISABLEOVERRIDE + CIMFlavor::TOINSTANCE)
                       .toString()));
}

}  // namespace
