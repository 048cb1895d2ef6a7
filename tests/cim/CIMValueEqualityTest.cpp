// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Pegasus;

namespace {

template <class T>
String _text(const T& x) {
    return CIMValue(x).toString();
}

template <class T>
CIMValue _pair(const T& x, const T& y) {
    Array<T> array;
    array.append(x);
    array.append(y);
    return CIMValue(array);
}

}  // namespace

TEST(CIMValueEquality, NeedsTheSameType) {
    EXPECT_NE(CIMValue(Uint32(5)), CIMValue(Uint16(5)));
    EXPECT_NE(CIMValue(Uint32(5)), CIMValue(Array<Uint32>(1, 5U)));
    EXPECT_FALSE(CIMValue(Uint32(5)).typeCompatible(CIMValue(Sint32(5))));
    EXPECT_TRUE(CIMValue(Uint32(5)).typeCompatible(CIMValue(CIMTYPE_UINT32, false)));
    EXPECT_FALSE(CIMValue(Uint32(5)).typeCompatible(CIMValue(CIMTYPE_UINT32, true)));
}

TEST(CIMValueEquality, DistinguishesNulls) {
    EXPECT_EQ(CIMValue(CIMTYPE_UINT32, false), CIMValue(CIMTYPE_UINT32, false));
    EXPECT_NE(CIMValue(CIMTYPE_UINT32, false), CIMValue(CIMTYPE_UINT16, false));
    EXPECT_NE(CIMValue(CIMTYPE_UINT32, false), CIMValue(Uint32(0)));
    EXPECT_NE(CIMValue(), CIMValue(false));
    // The size is a declaration, not a value.
    EXPECT_EQ(CIMValue(CIMTYPE_UINT32, true), CIMValue(CIMTYPE_UINT32, true, 3));
}

TEST(CIMValueEquality, IsThatOfTheType) {
    EXPECT_NE(CIMValue(String("a")), CIMValue(String("A")));
    EXPECT_EQ(CIMValue(CIMDateTime(String("20200101000000.000000+000"))),
              CIMValue(CIMDateTime(String("20200101010000.000000+060"))));
    EXPECT_THROW((void)(CIMValue(CIMDateTime()) ==
                        CIMValue(CIMDateTime(String("20200101000000.000000+000")))),
                 TypeMismatchException);
    const Real64 nan = std::numeric_limits<Real64>::quiet_NaN();
    EXPECT_NE(CIMValue(nan), CIMValue(nan));
    EXPECT_NE(_pair<Uint32>(1, 2), _pair<Uint32>(2, 1));
}

TEST(CIMValueEquality, ComparesInstancesByContent) {
    CIMInstance instance(CIMName("A"));
    const CIMValue before(instance);
    EXPECT_EQ(before, CIMValue(instance.clone()));
    instance.addProperty(CIMProperty(CIMName("P"), CIMValue(Uint32(1))));
    EXPECT_NE(before, CIMValue(instance));
}

TEST(CIMValueText, IsPlain) {
    EXPECT_EQ(_text(true), "TRUE");
    EXPECT_EQ(_text(false), "FALSE");
    EXPECT_EQ(_text(Uint8(200)), "200");
    EXPECT_EQ(_text(Sint8(-5)), "-5");
    EXPECT_EQ(_text(Uint64(18446744073709551615ULL)), "18446744073709551615");
    EXPECT_EQ(_text(std::numeric_limits<Sint64>::min()), "-9223372036854775808");
    EXPECT_EQ(_text(Char16('A')), "A");
    EXPECT_EQ(_text(String("a\"b")), "a\"b");
    EXPECT_EQ(_text(CIMDateTime()), "00000000000000.000000:000");
    EXPECT_EQ(_text(CIMObjectPath("root/tavqz:A.K=\"v\"")), "root/tavqz:A.K=\"v\"");
    EXPECT_EQ(_text(CIMInstance(CIMName("A"))), "A");
    EXPECT_EQ(_text(CIMObject(CIMInstance(CIMName("A")))), "A");
}

TEST(CIMValueText, GivesRealsInFull) {
    EXPECT_EQ(_text(Real32(1.5)), "1.5000000000000000e+00");
    EXPECT_EQ(_text(Real32(0.1F)), "1.0000000149011612e-01");
    EXPECT_EQ(_text(Real64(0.1)), "1.0000000000000001e-01");
    EXPECT_EQ(_text(Real64(-1e300)), "-1.0000000000000001e+300");
    EXPECT_EQ(_text(std::numeric_limits<Real64>::infinity()), "inf");
}

TEST(CIMValueText, EndsEachElementWithABlank) {
    EXPECT_EQ(_text(Array<Uint32>()), "");
    EXPECT_EQ(_pair<Uint32>(1, 2).toString(), "1 2 ");
    EXPECT_EQ(_pair<Boolean>(true, false).toString(), "TRUE FALSE ");
    EXPECT_EQ(_pair<String>("a", "b,c").toString(), "a b,c ");
    EXPECT_EQ(_pair<Uint8>(65, 66).toString(), "65 66 ");
    EXPECT_EQ(_pair<Char16>('a', 'b').toString(), "a b ");
}

TEST(CIMValueText, IsEmptyForNull) {
    EXPECT_EQ(CIMValue().toString(), "");
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, false).toString(), "");
    EXPECT_EQ(CIMValue(CIMTYPE_STRING, true, 4).toString(), "");
}
