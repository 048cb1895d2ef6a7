// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

#include "XmlObjects.h"
#include "XmlWriting.h"

namespace QZ {

using namespace Pegasus;

namespace {

CIMValue _again(const CIMValue& value) {
    std::string xml;
    appendValue(xml, value);
    return typedValue(readUntypedValue(parseXml(xml, XmlLimits())), value.getType(),
                      value.isArray());
}

template <class T>
void _expectBack(std::initializer_list<T> values) {
    Array<T> array;
    for (const T& value : values) {
        EXPECT_TRUE(_again(CIMValue(value)) == CIMValue(value)) << CIMValue(value).toString();
        array.append(value);
    }
    EXPECT_TRUE(_again(CIMValue(array)) == CIMValue(array));
    EXPECT_EQ(_again(CIMValue(Array<T>())).getArraySize(), 0U);
}

template <class T>
void _expectLimitsBack() {
    _expectBack<T>({std::numeric_limits<T>::lowest(), T(0), std::numeric_limits<T>::max()});
}

bool _isValue(const std::string& text, CIMType type) {
    CimUntypedValue value;
    value.isNull = false;
    value.texts.emplace_back(text);
    try {
        typedValue(value, type, false);
        return true;
    } catch (const XmlValueError&) {
        return false;
    }
}

}  // namespace

TEST(XmlValues, ComeBackAsTheyWere) {
    _expectLimitsBack<Uint8>();
    _expectLimitsBack<Sint8>();
    _expectLimitsBack<Uint16>();
    _expectLimitsBack<Sint16>();
    _expectLimitsBack<Uint32>();
    _expectLimitsBack<Sint32>();
    _expectLimitsBack<Uint64>();
    _expectLimitsBack<Sint64>();
    _expectLimitsBack<Real32>();
    _expectLimitsBack<Real64>();
    _expectBack<Real64>({0.1, 1.0, -1e-300, std::numeric_limits<Real64>::denorm_min()});
    _expectBack<Boolean>({true, false});
    _expectBack<Char16>({Char16('a'), Char16(0x20AC), Char16('<'), Char16(' '), Char16('\n')});
    _expectBack<String>({String(), String(" a\tb\r\n<&>\"' "), String("\xC3\xA9\xF0\x9F\x98\x80")});
    _expectBack<CIMDateTime>(
        {CIMDateTime("20270131000000.000000+060"), CIMDateTime("00000001000000.000000:000")});
}

TEST(XmlValues, AreWrittenWithAPointInAnyLocale) {
    (void)std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    std::string xml;
    appendValue(xml, CIMValue(Real64(1)));
    appendValue(xml, CIMValue(Real32(0.1F)));
    appendValue(xml, CIMValue(std::numeric_limits<Real64>::infinity()));
    (void)std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(xml, "<VALUE>1.0e+00</VALUE><VALUE>1.0e-01</VALUE><VALUE>INF</VALUE>");
}

TEST(XmlValues, AreNumbersByTheStandardOnly) {
    for (const char* text : {"0", "+7", "0x1F", "0X1f", " 5 ", "255"}) {
        EXPECT_TRUE(_isValue(text, CIMTYPE_UINT8)) << text;
    }
    for (const char* text : {"", "-1", "256", "1.0", "0x", "0xG", "1 2", "++1", "x"}) {
        EXPECT_FALSE(_isValue(text, CIMTYPE_UINT8)) << text;
    }
    for (const char* text : {"1", "+1.5", "-1.5e3", ".5", "INF", "-INF", "NaN"}) {
        EXPECT_TRUE(_isValue(text, CIMTYPE_REAL64)) << text;
    }
    for (const char* text : {"", "inf", "nan", "infinity", "0x1p3", "+-1", "1,5", "1e999"}) {
        EXPECT_FALSE(_isValue(text, CIMTYPE_REAL64)) << text;
    }
    EXPECT_TRUE(_isValue("True", CIMTYPE_BOOLEAN));
    EXPECT_FALSE(_isValue("1", CIMTYPE_BOOLEAN));
    EXPECT_FALSE(_isValue("ab", CIMTYPE_CHAR16));
    EXPECT_FALSE(_isValue("yesterday", CIMTYPE_DATETIME));
}

TEST(XmlValues, ReplaceWhatXmlForbids) {
    String text("a");
    text.append(Char16(0x01));
    text.append(Char16(0xD800));
    text.append(Char16(0xFFFF));
    String back;
    _again(CIMValue(text)).get(back);
    ASSERT_EQ(back.size(), 4U);
    for (Uint32 i = 1; i < 4; ++i) {
        EXPECT_TRUE(back[i] == Char16(0xFFFD));
    }
}

TEST(XmlValues, ComeBackHoweverLongTheTextIs) {
    for (const Uint32 size : {127U, 128U, 129U, 300U}) {
        const std::string plain(size, 'x');
        std::string escaped = plain;
        escaped.append("&").append(plain);
        _expectBack<String>({String(plain.c_str()), String(escaped.c_str())});
    }
}

}  // namespace QZ
