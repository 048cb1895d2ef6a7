// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LogText.h"

#include <gtest/gtest.h>

namespace QZ {
namespace {

TEST(LogText, IsCutWhereItIsLong) {
    EXPECT_EQ("anna", textForLog("anna"));
    EXPECT_EQ(std::string(200, 'a'), textForLog(std::string(200, 'a')));
    EXPECT_EQ(std::string(197, 'a') + "...", textForLog(std::string(1'000'000, 'a')));
}

TEST(LogText, IsCutBetweenCharacters) {
    EXPECT_EQ(std::string(195, 'a') + "...",
              textForLog(std::string(195, 'a') + "\xe2\x82\xac" + std::string(10, 'a')));
    EXPECT_EQ(std::string(194, '\x80') + "...", textForLog(std::string(300, '\x80')))
        << "nor is it cut forever";
}

}  // namespace
}  // namespace QZ
