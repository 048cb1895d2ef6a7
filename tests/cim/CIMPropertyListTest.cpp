// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <gtest/gtest.h>

#include "CimText.h"

using namespace Pegasus;

namespace {

Array<CIMName> names(const char* first, const char* second) {
    Array<CIMName> both(1, CIMName(first));
    both.append(CIMName(second));
    return both;
}

TEST(CIMPropertyList, TellsNullFromEmpty) {
    const CIMPropertyList null;
    EXPECT_TRUE(null.isNull());
    EXPECT_EQ(0U, null.size());
    EXPECT_EQ("NULL", text(null.toString()));
    EXPECT_FALSE(null.contains(CIMName("A")));
    EXPECT_TRUE(null.useThisProperty(CIMName("A")));
    const CIMPropertyList empty{Array<CIMName>()};
    EXPECT_FALSE(empty.isNull());
    EXPECT_EQ(0U, empty.size());
    EXPECT_EQ("EMPTY", text(empty.toString()));
    EXPECT_FALSE(empty.useThisProperty(CIMName("A")));
}

TEST(CIMPropertyList, ContainsItsNamesIgnoringCase) {
    const CIMPropertyList list(names("Name", "Colour"));
    EXPECT_EQ(2U, list.size());
    EXPECT_TRUE(list.contains(CIMName("colour")));
    EXPECT_TRUE(list.useThisProperty(CIMName("NAME")));
    EXPECT_FALSE(list.contains(CIMName("Col")));
    EXPECT_EQ("Colour", text(list[1].getString()));
    EXPECT_THROW(list[2], IndexOutOfBoundsException);
    EXPECT_EQ("Name, Colour", text(list.toString()));
    EXPECT_EQ(2U, list.getPropertyNameArray().size());
}

TEST(CIMPropertyList, RefusesNullNames) {
    Array<CIMName> withNull = names("A", "B");
    withNull.append(CIMName());
    EXPECT_THROW(CIMPropertyList{withNull}, UninitializedObjectException);
    CIMPropertyList list(names("A", "B"));
    EXPECT_THROW(list.set(withNull), UninitializedObjectException);
    EXPECT_EQ("A, B", text(list.toString()));
}

TEST(CIMPropertyList, CopiesAreIndependent) {
    const CIMPropertyList original(names("A", "B"));
    CIMPropertyList copy = original;
    copy.set(names("C", "D"));
    EXPECT_EQ("C, D", text(copy.toString()));
    EXPECT_EQ("A, B", text(original.toString()));
    copy.clear();
    EXPECT_TRUE(copy.isNull());
}

TEST(CIMPropertyList, AppendReplacesTheNamesByEachOfTheGivenOnce) {
    CIMPropertyList list(names("A", "B"));
    Array<String> texts(1, String("C"));
    texts.append(String("D"));
    texts.append(String("c"));
    list.append(texts);
    EXPECT_EQ("C, D", text(list.toString()));
    Array<String> none;
    list.append(none);
    EXPECT_EQ("C, D", text(list.toString()));
    CIMPropertyList null;
    null.append(none);
    EXPECT_FALSE(null.isNull());
    Array<String> wrong(1, String("no name"));
    EXPECT_THROW(list.append(wrong), InvalidNameException);
}

TEST(CIMParamValue, CopiesShareAndClonesDoNot) {
    CIMParamValue original("Level", CIMValue(Uint8(1)));
    CIMParamValue copy = original;
    const CIMParamValue clone = original.clone();
    CIMValue two(Uint8(2));
    String name("Height");
    copy.setValue(two);
    copy.setParameterName(name);
    copy.setIsTyped(false);
    EXPECT_TRUE(original.getValue().equal(two));
    EXPECT_EQ("Height", text(original.getParameterName()));
    EXPECT_FALSE(original.isTyped());
    EXPECT_TRUE(clone.getValue().equal(CIMValue(Uint8(1))));
    EXPECT_EQ("Level", text(clone.getParameterName()));
    EXPECT_TRUE(clone.isTyped());
    EXPECT_TRUE(CIMParamValue().isUninitialized());
    EXPECT_THROW(CIMParamValue().getValue(), UninitializedObjectException);
}

}  // namespace
