// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MessageInsertions.h"

#include <gtest/gtest.h>

using namespace QZ;

TEST(MessageInsertions, AreTheTypesInTheOrderOfTheValues) {
    EXPECT_EQ("", messageInsertions(L""));
    EXPECT_EQ("", messageInsertions(L"100 %% sure"));
    EXPECT_EQ("ss", messageInsertions(L"%ls ends on %ls"));
    EXPECT_EQ("sd", messageInsertions(L"%ls in slot %d"));
    EXPECT_EQ("sd", messageInsertions(L"slot %2$d holds %1$ls, yes, %1$ls"));
}

TEST(MessageInsertions, AreNoneOfAnyOtherConversion) {
    for (const wchar_t* text : {L"%", L"%s", L"%n", L"%hn", L"%x", L"%10ls", L"%*d", L"%.3ls",
                                L"%l", L"% d", L"%-d", L"%S", L"%0$d", L"%10$d", L"%1$s", L"%1$"})
        EXPECT_FALSE(messageInsertions(text)) << std::wstring(text).size();
}

TEST(MessageInsertions, AreNoneWithGapsMixturesAndContradictions) {
    EXPECT_FALSE(messageInsertions(L"%2$ls"));
    EXPECT_FALSE(messageInsertions(L"%1$ls %3$ls"));
    EXPECT_FALSE(messageInsertions(L"%1$ls %ls"));
    EXPECT_FALSE(messageInsertions(L"%1$ls %1$d"));
    EXPECT_FALSE(messageInsertions(L"%d%d%d%d%d%d%d%d%d%d"));
}
