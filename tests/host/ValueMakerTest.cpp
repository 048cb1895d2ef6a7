// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ValueMaker.h"

#include <Pegasus/Common/CIMObjectPath.h>
#include <gtest/gtest.h>

#include "MofParser.h"

using namespace QZ;
using namespace Pegasus;

namespace {

// The value of "P = TEXT;" for a property of that type, null value for a refusal.
CIMValue _value(const std::string& text, CIMType type, bool isArray = false) {
    const MofDocument document = parseMof("instance of A { P = " + text + "; };", "f.mof");
    return makeValue(document, *document.instances[0].find("P"), type, isArray);
}

template <class T>
T _get(const CIMValue& value) {
    T result = T();
    value.get(result);
    return result;
}

}  // namespace

TEST(ValueMaker, KeepsIntegersWithinTheirType) {
    EXPECT_EQ(_get<Uint8>(_value("255", CIMTYPE_UINT8)), 255);
    EXPECT_EQ(_get<Sint8>(_value("-128", CIMTYPE_SINT8)), -128);
    EXPECT_EQ(_get<Uint64>(_value("18446744073709551615", CIMTYPE_UINT64)), UINT64_MAX);
    EXPECT_EQ(_get<Sint64>(_value("-9223372036854775808", CIMTYPE_SINT64)), INT64_MIN);
    EXPECT_EQ(_get<Uint16>(_value("-0", CIMTYPE_UINT16)), 0);

    EXPECT_THROW(_value("256", CIMTYPE_UINT8), MofError);
    EXPECT_THROW(_value("-1", CIMTYPE_UINT8), MofError);
    EXPECT_THROW(_value("128", CIMTYPE_SINT8), MofError);
    EXPECT_THROW(_value("-129", CIMTYPE_SINT8), MofError);
    EXPECT_THROW(_value("65536", CIMTYPE_UINT16), MofError);
    EXPECT_THROW(_value("-32769", CIMTYPE_SINT16), MofError);
    EXPECT_THROW(_value("4294967296", CIMTYPE_UINT32), MofError);
    EXPECT_THROW(_value("2147483648", CIMTYPE_SINT32), MofError);
    EXPECT_THROW(_value("9223372036854775808", CIMTYPE_SINT64), MofError);
    EXPECT_THROW(_value("-9223372036854775809", CIMTYPE_SINT64), MofError);
}

TEST(ValueMaker, MakesRealsOfNumbers) {
    EXPECT_EQ(_get<Real32>(_value("-0.5", CIMTYPE_REAL32)), -0.5F);
    EXPECT_EQ(_get<Real64>(_value("2", CIMTYPE_REAL64)), 2.0);
    EXPECT_THROW(_value("1.0e39", CIMTYPE_REAL32), MofError);
    EXPECT_THROW(_value("1.0e309", CIMTYPE_REAL64), MofError);
    EXPECT_THROW(_value("1.5", CIMTYPE_UINT8), MofError);
}

TEST(ValueMaker, MakesTextsDatesAndPaths) {
    EXPECT_EQ(_get<String>(_value("\"x\"", CIMTYPE_STRING)), String("x"));
    EXPECT_EQ(_get<CIMDateTime>(_value("\"20270131000000.000000+060\"", CIMTYPE_DATETIME)),
              CIMDateTime("20270131000000.000000+060"));
    EXPECT_EQ(_get<CIMObjectPath>(_value("\"A.K=1\"", CIMTYPE_REFERENCE)), CIMObjectPath("A.K=1"));
    EXPECT_EQ(_get<Char16>(_value("'\\xD800'", CIMTYPE_CHAR16)), Char16(0xD800));
    EXPECT_THROW(_value("\"yesterday\"", CIMTYPE_DATETIME), MofError);
    EXPECT_THROW(_value("\"no path\"", CIMTYPE_REFERENCE), MofError);
    EXPECT_THROW(_value("\"1\"", CIMTYPE_UINT8), MofError);
    EXPECT_THROW(_value("true", CIMTYPE_STRING), MofError);
}

TEST(ValueMaker, MakesArraysAndNulls) {
    const CIMValue array = _value("{1, 2}", CIMTYPE_UINT8, true);
    ASSERT_TRUE(array.isArray());
    EXPECT_EQ(_get<Array<Uint8>>(array)[1], 2);
    EXPECT_EQ(_value("{}", CIMTYPE_STRING, true).getArraySize(), 0U);
    const CIMValue null = _value("null", CIMTYPE_DATETIME, true);
    EXPECT_TRUE(null.isNull() && null.isArray());
    EXPECT_EQ(null.getType(), CIMTYPE_DATETIME);
    EXPECT_THROW(_value("{1}", CIMTYPE_UINT8), MofError);
    EXPECT_THROW(_value("1", CIMTYPE_UINT8, true), MofError);
    EXPECT_THROW(_value("{null}", CIMTYPE_UINT8, true), MofError);
}
