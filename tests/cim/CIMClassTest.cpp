// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMObject.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMQualifier flag(const char* name, bool value = true) {
    return CIMQualifier(CIMName(name), CIMValue(value));
}

CIMClass lampClass() {
    CIMClass cimClass(CIMName("Lamp"), CIMName("Light"));
    CIMProperty name(CIMName("Name"), CIMValue(CIMTYPE_STRING, false), 0, CIMName(),
                     CIMName("Light"));
    name.addQualifier(flag("Key"));
    CIMProperty watts(CIMName("Watts"), CIMValue(Uint16(60)));
    watts.addQualifier(flag("Key", false));
    cimClass.addQualifier(flag("Old")).addProperty(name).addProperty(watts);
    return cimClass;
}

TEST(CIMClass, KeepsWhatItIsMadeOf) {
    CIMClass cimClass = lampClass();
    EXPECT_EQ("Lamp", text(cimClass.getClassName().getString()));
    EXPECT_EQ("Light", text(cimClass.getSuperClassName().getString()));
    cimClass.setSuperClassName(CIMName("Thing"));
    EXPECT_EQ("Thing", text(cimClass.getSuperClassName().getString()));
    EXPECT_EQ(2U, cimClass.getPropertyCount());
    EXPECT_EQ(1U, cimClass.findProperty(CIMName("WATTS")));
    EXPECT_EQ(0U, cimClass.findQualifier(CIMName("OLD")));
    EXPECT_THROW(CIMClass{CIMName()}, UninitializedObjectException);
    EXPECT_THROW(CIMClass().getSuperClassName(), UninitializedObjectException);
}

TEST(CIMClass, KnowsItsKeys) {
    Array<CIMName> names(1, CIMName("Left"));
    lampClass().getKeyNames(names);
    ASSERT_EQ(1U, names.size());
    EXPECT_EQ("Name", text(names[0].getString()));
    EXPECT_TRUE(lampClass().hasKeys());
    EXPECT_FALSE(CIMClass(CIMName("Light")).hasKeys());
}

TEST(CIMClass, KnowsAssociationsAndAbstractClasses) {
    CIMClass cimClass = lampClass();
    EXPECT_FALSE(cimClass.isAssociation());
    EXPECT_FALSE(cimClass.isAbstract());
    cimClass.addQualifier(flag("ASSOCIATION")).addQualifier(flag("Abstract", false));
    EXPECT_TRUE(cimClass.isAssociation());
    EXPECT_FALSE(cimClass.isAbstract());
    CIMClass odd(CIMName("Odd"));
    odd.addQualifier(CIMQualifier(CIMName("Abstract"), CIMValue(String("TRUE"))));
    odd.addQualifier(CIMQualifier(CIMName("Association"), CIMValue(CIMTYPE_BOOLEAN, false)));
    EXPECT_FALSE(odd.isAbstract());
    EXPECT_FALSE(odd.isAssociation());
}

TEST(CIMClass, RefusesReferencesThatDoNotSayToWhat) {
    CIMClass cimClass = lampClass();
    const CIMValue nowhere(CIMTYPE_REFERENCE, false);
    EXPECT_THROW(cimClass.addProperty(CIMProperty(CIMName("Of"), nowhere)), TypeMismatchException);
    EXPECT_NO_THROW(cimClass.addProperty(CIMProperty(CIMName("Of"), nowhere, 0, CIMName("Room"))));
    CIMInstance instance(CIMName("Lamp"));
    EXPECT_NO_THROW(instance.addProperty(CIMProperty(CIMName("Of"), nowhere)));
    EXPECT_THROW(cimClass.addProperty(CIMProperty(CIMName("watts"), CIMValue(Uint16(1)))),
                 AlreadyExistsException);
}

TEST(CIMClass, BuildsInstancesWithItsDefaults) {
    const CIMInstance instance = lampClass().buildInstance(false, false, CIMPropertyList());
    EXPECT_EQ("Lamp", text(instance.getPath().toString()));
    ASSERT_EQ(2U, instance.getPropertyCount());
    EXPECT_TRUE(instance.getProperty(0).getValue().isNull());
    EXPECT_TRUE(instance.getProperty(1).getValue().equal(CIMValue(Uint16(60))));
    EXPECT_EQ(0U, instance.getQualifierCount());
    EXPECT_EQ(0U, instance.getProperty(0).getQualifierCount());
    EXPECT_TRUE(instance.getProperty(0).getClassOrigin().isNull());
}

TEST(CIMClass, BuildsInstancesWithQualifiersAndOriginsOnRequest) {
    const CIMClass cimClass = lampClass();
    CIMInstance instance = cimClass.buildInstance(true, true, CIMPropertyList());
    EXPECT_EQ(1U, instance.getQualifierCount());
    EXPECT_EQ(1U, instance.getProperty(0).getQualifierCount());
    EXPECT_EQ("Light", text(instance.getProperty(0).getClassOrigin().getString()));
    instance.getProperty(1).setValue(CIMValue(Uint16(1)));
    instance.getQualifier(0).setValue(CIMValue(false));
    EXPECT_TRUE(cimClass.identical(lampClass()));
}

TEST(CIMClass, BuildsInstancesWithTheListedProperties) {
    Array<CIMName> names(1, CIMName("watts"));
    names.append(CIMName("Unknown"));
    const CIMInstance instance = lampClass().buildInstance(false, false, CIMPropertyList(names));
    ASSERT_EQ(1U, instance.getPropertyCount());
    EXPECT_EQ("Watts", text(instance.getProperty(0).getName().getString()));
    EXPECT_EQ(0U, lampClass()
                      .buildInstance(false, false, CIMPropertyList(Array<CIMName>()))
                      .getPropertyCount());
}

TEST(CIMClass, IsIdenticalInAllThatItHas) {
    EXPECT_TRUE(lampClass().identical(lampClass().clone()));
    CIMClass other = lampClass();
    other.setSuperClassName(CIMName("Thing"));
    EXPECT_FALSE(lampClass().identical(other));
    other = lampClass();
    other.removeProperty(1);
    EXPECT_FALSE(lampClass().identical(other));
}

TEST(CIMObject, HoldsAClassOrAnInstance) {
    const CIMObject fromClass = lampClass();
    const CIMObject fromInstance = CIMInstance(CIMName("Lamp"));
    EXPECT_TRUE(fromClass.isClass());
    EXPECT_FALSE(fromClass.isInstance());
    EXPECT_TRUE(fromInstance.isInstance());
    EXPECT_FALSE(fromInstance.isClass());
    EXPECT_FALSE(CIMObject().isClass() || CIMObject().isInstance());
    EXPECT_EQ("Light", text(CIMClass(fromClass).getSuperClassName().getString()));
    EXPECT_THROW(CIMInstance{fromClass}, DynamicCastFailedException);
    EXPECT_THROW(CIMClass{fromInstance}, DynamicCastFailedException);
    EXPECT_THROW(CIMInstance{CIMObject()}, DynamicCastFailedException);
    EXPECT_THROW(CIMConstClass{CIMConstObject(fromInstance)}, DynamicCastFailedException);
    EXPECT_TRUE(CIMObject(CIMInstance()).isUninitialized());
}

TEST(CIMObject, SharesWithWhatItWasMadeFrom) {
    CIMInstance instance(CIMName("Lamp"));
    CIMObject object = instance;
    const CIMConstObject reader = instance;
    CIMObject clone = object.clone();
    object.addProperty(CIMProperty(CIMName("Watts"), CIMValue(Uint16(60))));
    EXPECT_EQ(1U, instance.getPropertyCount());
    EXPECT_EQ(1U, reader.getPropertyCount());
    EXPECT_EQ(0U, clone.getPropertyCount());
    EXPECT_TRUE(clone.isInstance());
    EXPECT_TRUE(object.identical(reader));
    EXPECT_FALSE(object.identical(clone));
    EXPECT_FALSE(CIMObject(CIMClass(CIMName("Lamp"))).identical(clone));
    object.instanceFilter(false, false, CIMPropertyList(Array<CIMName>()));
    EXPECT_EQ(0U, instance.getPropertyCount());
}

}  // namespace
