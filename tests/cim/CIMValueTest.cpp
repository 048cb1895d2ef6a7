// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

using namespace Pegasus;

namespace {

// One value per type; the second differs from the first.
template <class T>
T _first();
template <class T>
T _second();
#define SAMPLES(TYPE, FIRST, SECOND) \
    template <>                      \
    TYPE _first<TYPE>() {            \
        return FIRST;                \
    }                                \
    template <>                      \
    TYPE _second<TYPE>() {           \
        return SECOND;               \
    }
SAMPLES(Boolean, true, false)
SAMPLES(Uint8, 200, 1)
SAMPLES(Sint8, -100, 1)
SAMPLES(Uint16, 65000, 1)
SAMPLES(Sint16, -30000, 1)
SAMPLES(Uint32, 4000000000U, 1)
SAMPLES(Sint32, -2000000000, 1)
SAMPLES(Uint64, 18446744073709551615ULL, 1)
SAMPLES(Sint64, -9000000000000000000LL, 1)
SAMPLES(Real32, 1.5F, 2.5F)
SAMPLES(Real64, 0.1, 2.5)
SAMPLES(Char16, Char16(0x20ac), Char16('a'))
SAMPLES(String, "text", "other")
SAMPLES(CIMDateTime, CIMDateTime(String("20270131000000.000000+060")),
        CIMDateTime(String("20270201000000.000000+060")))
SAMPLES(CIMObjectPath, CIMObjectPath("root/tavqz:A.K=\"v\""), CIMObjectPath("root/tavqz:B.K=\"v\""))
SAMPLES(CIMObject, CIMObject(CIMInstance(CIMName("A"))), CIMObject(CIMInstance(CIMName("B"))))
SAMPLES(CIMInstance, CIMInstance(CIMName("A")), CIMInstance(CIMName("B")))
#undef SAMPLES

template <class T>
constexpr CIMType _type = CIMTYPE_BOOLEAN;
#define TAVQZ_X(TYPE, PASSED, CODE) \
    template <>                     \
    constexpr CIMType _type<TYPE> = CODE;
TAVQZ_CIM_TYPES(TAVQZ_X)
#undef TAVQZ_X

template <class T>
class CIMValueOf : public testing::Test {};

using AllTypes =
    testing::Types<Boolean, Uint8, Sint8, Uint16, Sint16, Uint32, Sint32, Uint64, Sint64, Real32,
                   Real64, Char16, String, CIMDateTime, CIMObjectPath, CIMObject, CIMInstance>;
TYPED_TEST_SUITE(CIMValueOf, AllTypes);

}  // namespace

TYPED_TEST(CIMValueOf, GivesBackItsValue) {
    const CIMValue value(_first<TypeParam>());
    EXPECT_EQ(value.getType(), _type<TypeParam>);
    EXPECT_FALSE(value.isArray());
    EXPECT_FALSE(value.isNull());
    EXPECT_EQ(value.getArraySize(), 0U);
    TypeParam out = _second<TypeParam>();
    value.get(out);
    EXPECT_EQ(CIMValue(out), value);
    EXPECT_NE(CIMValue(_second<TypeParam>()), value);
}

TYPED_TEST(CIMValueOf, GivesBackItsArray) {
    Array<TypeParam> in;
    in.append(_first<TypeParam>());
    in.append(_second<TypeParam>());
    const CIMValue value(in);
    EXPECT_EQ(value.getType(), _type<TypeParam>);
    EXPECT_TRUE(value.isArray());
    EXPECT_EQ(value.getArraySize(), 2U);
    Array<TypeParam> out;
    value.get(out);
    EXPECT_EQ(CIMValue(out), value);
    in.remove(1);
    EXPECT_NE(CIMValue(in), value);
}

TYPED_TEST(CIMValueOf, IsSet) {
    CIMValue value;
    value.set(_first<TypeParam>());
    EXPECT_EQ(value, CIMValue(_first<TypeParam>()));
    value.set(Array<TypeParam>(2, _second<TypeParam>()));
    EXPECT_EQ(value, CIMValue(Array<TypeParam>(2, _second<TypeParam>())));
}

TYPED_TEST(CIMValueOf, LeavesTheArgumentWhereItIsNull) {
    const CIMValue value(_type<TypeParam>, false);
    EXPECT_TRUE(value.isNull());
    TypeParam out = _second<TypeParam>();
    value.get(out);
    EXPECT_EQ(CIMValue(out), CIMValue(_second<TypeParam>()));

    const CIMValue array(_type<TypeParam>, true, 3);
    EXPECT_TRUE(array.isNull());
    EXPECT_EQ(array.getArraySize(), 3U);
    Array<TypeParam> outs(1, _second<TypeParam>());
    array.get(outs);
    EXPECT_EQ(outs.size(), 1U);
}

TYPED_TEST(CIMValueOf, GivesNoOtherType) {
    const CIMValue value(_first<TypeParam>());
    Array<TypeParam> array;
    EXPECT_THROW(value.get(array), TypeMismatchException);
    TypeParam out = _second<TypeParam>();
    EXPECT_THROW(CIMValue(Array<TypeParam>()).get(out), TypeMismatchException);
    // Not even where it is null.
    EXPECT_THROW(CIMValue(_type<TypeParam>, true).get(out), TypeMismatchException);
    const bool isString = _type<TypeParam> == CIMTYPE_STRING;
    const CIMValue other = isString ? CIMValue(Uint32(1)) : CIMValue(String("1"));
    EXPECT_THROW(other.get(out), TypeMismatchException);
}

TEST(CIMValue, DoesNotWiden) {
    Uint32 out = 7;
    EXPECT_THROW(CIMValue(Uint16(1)).get(out), TypeMismatchException);
    EXPECT_EQ(out, 7U);
}

TEST(CIMValue, StartsAsANullBoolean) {
    const CIMValue value;
    EXPECT_TRUE(value.isNull());
    EXPECT_FALSE(value.isArray());
    EXPECT_EQ(value.getType(), CIMTYPE_BOOLEAN);
    EXPECT_EQ(value.getArraySize(), 0U);
    EXPECT_EQ(value, CIMValue(CIMTYPE_BOOLEAN, false));
}

TEST(CIMValue, TakesAnArraySizeForArraysOnly) {
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, false, 5).getArraySize(), 0U);
}

TEST(CIMValue, IsClearedAndMadeNull) {
    CIMValue value(Uint32(5));
    value.clear();
    EXPECT_EQ(value, CIMValue());
    value.setNullValue(CIMTYPE_REAL64, true, 2);
    EXPECT_EQ(value.getType(), CIMTYPE_REAL64);
    EXPECT_TRUE(value.isArray());
    EXPECT_TRUE(value.isNull());
    EXPECT_EQ(value.getArraySize(), 2U);
}

TEST(CIMValue, CopiesAreIndependent) {
    CIMValue original(Uint32(1));
    const CIMValue copy(original);
    original.set(Uint32(2));
    EXPECT_EQ(copy, CIMValue(Uint32(1)));
    original.assign(copy);
    EXPECT_EQ(original, CIMValue(Uint32(1)));
}

TEST(CIMValue, DoesNotChangeWithTheInstanceItWasMadeFrom) {
    CIMInstance instance(CIMName("A"));
    const CIMValue value(instance);
    Array<CIMInstance> instances(1, instance);
    const CIMValue array(instances);
    const CIMProperty property(CIMName("P"), CIMValue(Uint32(1)));
    instance.addProperty(property);

    CIMInstance out;
    value.get(out);
    EXPECT_EQ(out.getPropertyCount(), 0U);
    out.addProperty(property);
    CIMInstance again;
    value.get(again);
    EXPECT_EQ(again.getPropertyCount(), 0U);

    array.get(instances);
    EXPECT_EQ(instances[0].getPropertyCount(), 0U);
}

TEST(CIMValue, RefusesHandlesWithoutObject) {
    CIMValue value(Uint32(5));
    EXPECT_THROW(value.set(CIMInstance()), UninitializedObjectException);
    EXPECT_THROW(value.set(CIMObject()), UninitializedObjectException);
    EXPECT_THROW(CIMValue(Array<CIMInstance>(1, CIMInstance())), UninitializedObjectException);
    EXPECT_THROW(CIMValue(Array<CIMObject>(1, CIMObject())), UninitializedObjectException);
    EXPECT_EQ(value, CIMValue(Uint32(5)));
}
