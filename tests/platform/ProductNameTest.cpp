// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProductName.h"

#include <gtest/gtest.h>

using namespace QZ;

namespace {

void expectSplit(const std::string& name, const std::string& architected,
                 const std::string& unarchitected) {
    const ProductName product(name);
    EXPECT_EQ(architected, product.getArchitectedData()) << name;
    EXPECT_EQ(unarchitected, product.getUnarchitectedData()) << name;
}

}  // namespace

TEST(ProductName, IsSplitAtItsBrackets) {
    expectSplit("Example Server 2U -[EX2100-7A]-", "EX2100-7A", "Example Server 2U");
    expectSplit("Example Server [EX2100]", "EX2100", "Example Server");
    expectSplit("-[EX2100]-", "EX2100", "");
    expectSplit("[EX2100] Example", "EX2100", "Example");
}

TEST(ProductName, HasNoArchitectedPartWithoutBrackets) {
    expectSplit("Example Server", "", "Example Server");
    expectSplit("  Example Server \t", "", "Example Server");
    expectSplit("", "", "");
    expectSplit("Example ] [ Server", "", "Example ] [ Server");
    expectSplit("Example [Server", "", "Example [Server");
    expectSplit("]", "", "]");
}

TEST(ProductName, TakesTheLastGroup) {
    expectSplit("Example [rack] Server -[EX2100]-", "EX2100", "Example [rack] Server");
    expectSplit("Example -[EX2100]- 7]", "EX2100", "Example 7]");
    expectSplit("Example [[EX2100]]", "EX2100", "Example []");
}

TEST(ProductName, DropsOnlyDashesThatTouchTheBrackets) {
    expectSplit("Example - [EX2100] - Server", "EX2100", "Example - - Server");
    expectSplit("Example--[EX2100]--", "EX2100", "Example--");
    expectSplit("Example[-EX2100-]", "-EX2100-", "Example");
}

TEST(ProductName, LeavesOneGapWhereTheGroupWas) {
    expectSplit("Example [EX2100] Server", "EX2100", "Example Server");
    expectSplit("Example[EX2100]Server", "EX2100", "ExampleServer");
}

TEST(ProductName, TrimsBothParts) {
    expectSplit("  Example  -[ EX2100 ]-  ", "EX2100", "Example");
    expectSplit("Example []", "", "Example");
}
