// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

CIMKeyBinding key(const char* value, CIMKeyBinding::Type type) {
    return CIMKeyBinding(CIMName("Key"), String(value), type);
}

CIMKeyBinding key(const CIMValue& value) {
    return CIMKeyBinding(CIMName("Key"), value);
}

TEST(CIMKeyBinding, TakesTypeAndTextFromAValue) {
    EXPECT_EQ(CIMKeyBinding::BOOLEAN, key(CIMValue(true)).getType());
    EXPECT_EQ("TRUE", text(key(CIMValue(true)).getValue()));
    EXPECT_EQ(CIMKeyBinding::NUMERIC, key(CIMValue(Sint8(-5))).getType());
    EXPECT_EQ("-5", text(key(CIMValue(Sint8(-5))).getValue()));
    EXPECT_EQ(CIMKeyBinding::NUMERIC, key(CIMValue(Real32(0.5))).getType());
    EXPECT_EQ(CIMKeyBinding::STRING, key(CIMValue(String("a\"b"))).getType());
    EXPECT_EQ("a\"b", text(key(CIMValue(String("a\"b"))).getValue()));
    EXPECT_EQ(CIMKeyBinding::STRING, key(CIMValue(Char16('c'))).getType());
    EXPECT_EQ(CIMKeyBinding::STRING, key(CIMValue(CIMDateTime())).getType());
    const CIMObjectPath path("Lamp.Id=1");
    EXPECT_EQ(CIMKeyBinding::REFERENCE, key(CIMValue(path)).getType());
    EXPECT_EQ("Lamp.Id=1", text(key(CIMValue(path)).getValue()));
}

TEST(CIMKeyBinding, RefusesValuesThatCannotBeKeys) {
    EXPECT_THROW(key(CIMValue(Array<Uint32>(2))), TypeMismatchException);
    EXPECT_THROW(key(CIMValue(CIMInstance(CIMName("Lamp")))), TypeMismatchException);
    EXPECT_THROW(key(CIMValue(CIMObject(CIMInstance(CIMName("Lamp"))))), TypeMismatchException);
}

TEST(CIMKeyBinding, ComparesNamesIgnoringCaseAndTypesExactly) {
    EXPECT_TRUE(CIMKeyBinding("id", "x", CIMKeyBinding::STRING) ==
                CIMKeyBinding("ID", "x", CIMKeyBinding::STRING));
    EXPECT_FALSE(CIMKeyBinding("id", "x", CIMKeyBinding::STRING) ==
                 CIMKeyBinding("ie", "x", CIMKeyBinding::STRING));
    EXPECT_FALSE(key("1", CIMKeyBinding::STRING) == key("1", CIMKeyBinding::NUMERIC));
}

TEST(CIMKeyBinding, ComparesStringsExactlyAndBooleansIgnoringCase) {
    EXPECT_FALSE(key("Acme", CIMKeyBinding::STRING) == key("acme", CIMKeyBinding::STRING));
    EXPECT_TRUE(key("true", CIMKeyBinding::BOOLEAN) == key("TRUE", CIMKeyBinding::BOOLEAN));
    EXPECT_FALSE(key("true", CIMKeyBinding::BOOLEAN) == key("FALSE", CIMKeyBinding::BOOLEAN));
}

TEST(CIMKeyBinding, ComparesNumbersByValue) {
    const auto number = [](const char* value) { return key(value, CIMKeyBinding::NUMERIC); };
    EXPECT_TRUE(number("255") == number("0xFF"));
    EXPECT_TRUE(number("0xff") == number("0XFF"));
    EXPECT_TRUE(number("+7") == number("7"));
    EXPECT_TRUE(number("-16") == number("-0x10"));
    EXPECT_TRUE(number("0") == number("-0"));
    EXPECT_TRUE(number("18446744073709551615") == number("0xFFFFFFFFFFFFFFFF"));
    EXPECT_TRUE(number("-9223372036854775808") == number("-0x8000000000000000"));
    EXPECT_FALSE(number("-1") == number("18446744073709551615"));
    EXPECT_FALSE(number("1") == number("2"));
    // No integers: as text. A number does not begin with 0.
    EXPECT_FALSE(number("1.0") == number("1"));
    EXPECT_FALSE(number("007") == number("7"));
    EXPECT_TRUE(number("1.5") == number("1.5"));
    EXPECT_FALSE(number("18446744073709551616") == number("0x10000000000000000"));
}

TEST(CIMKeyBinding, ComparesReferencesAsPaths) {
    const auto reference = [](const char* path) { return key(path, CIMKeyBinding::REFERENCE); };
    EXPECT_TRUE(reference("lamp.ID=1,Room=\"x\"") == reference("Lamp.room=\"x\",Id=0x1"));
    EXPECT_FALSE(reference("Lamp.Id=1") == reference("Lamp.Id=2"));
    EXPECT_TRUE(reference("no path") == reference("no path"));
    EXPECT_FALSE(reference("no path") == reference("No path"));
}

TEST(CIMKeyBinding, KnowsTheValueThatItHolds) {
    EXPECT_TRUE(key("0x10", CIMKeyBinding::NUMERIC).equal(CIMValue(Uint8(16))));
    EXPECT_FALSE(key("256", CIMKeyBinding::NUMERIC).equal(CIMValue(Uint8(0))));
    EXPECT_TRUE(key("-128", CIMKeyBinding::NUMERIC).equal(CIMValue(Sint8(-128))));
    EXPECT_FALSE(key("-129", CIMKeyBinding::NUMERIC).equal(CIMValue(Sint8(127))));
    EXPECT_FALSE(key("-1", CIMKeyBinding::NUMERIC).equal(CIMValue(Uint64(Sint64(-1)))));
    EXPECT_TRUE(key("-2.5e+1", CIMKeyBinding::NUMERIC).equal(CIMValue(Real64(-25))));
    EXPECT_FALSE(key("25", CIMKeyBinding::NUMERIC).equal(CIMValue(Real64(25))));
    EXPECT_TRUE(key("false", CIMKeyBinding::BOOLEAN).equal(CIMValue(false)));
    EXPECT_FALSE(key("no", CIMKeyBinding::BOOLEAN).equal(CIMValue(false)));
    EXPECT_TRUE(key("Acme", CIMKeyBinding::STRING).equal(CIMValue(String("Acme"))));
    EXPECT_TRUE(key("a", CIMKeyBinding::STRING).equal(CIMValue(Char16('a'))));
    EXPECT_FALSE(key("b", CIMKeyBinding::STRING).equal(CIMValue(Char16('a'))));
    EXPECT_TRUE(key("20270131000000.000000+060", CIMKeyBinding::STRING)
                    .equal(CIMValue(CIMDateTime("20270131000000.000000+060"))));
    EXPECT_FALSE(key("tomorrow", CIMKeyBinding::STRING).equal(CIMValue(CIMDateTime())));
    EXPECT_TRUE(
        key("lamp.Id=1", CIMKeyBinding::REFERENCE).equal(CIMValue(CIMObjectPath("Lamp.id=1"))));
    EXPECT_FALSE(key("1", CIMKeyBinding::STRING).equal(CIMValue(Uint8(1))));
    EXPECT_FALSE(key("1", CIMKeyBinding::NUMERIC).equal(CIMValue(Array<Uint8>(1, Uint8(1)))));
}

TEST(CIMKeyBinding, CopiesAreIndependent) {
    CIMKeyBinding first = key("a", CIMKeyBinding::STRING);
    CIMKeyBinding second = first;
    second.setName(CIMName("Other"));
    second.setValue(String("9"));
    second.setType(CIMKeyBinding::NUMERIC);
    EXPECT_EQ("Key", text(first.getName().getString()));
    EXPECT_EQ("a", text(first.getValue()));
    EXPECT_EQ(CIMKeyBinding::STRING, first.getType());
    EXPECT_EQ("Other", text(second.getName().getString()));
    EXPECT_EQ("9", text(second.getValue()));
    EXPECT_EQ(CIMKeyBinding::NUMERIC, second.getType());
}

}  // namespace
