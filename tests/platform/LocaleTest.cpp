// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Locale.h"

#include <gtest/gtest.h>

#include <thread>

#include "ScopedEnvironment.h"

using namespace QZ;

namespace {

class LocaleTest : public ::testing::Test {
private:
    ScopedEnvironment _all{"LC_ALL", nullptr};
    ScopedEnvironment _messages{"LC_MESSAGES", nullptr};
    ScopedEnvironment _lang{"LANG", nullptr};
};

}  // namespace

TEST_F(LocaleTest, IsEnglishWhereTheEnvironmentSaysNothing) {
    EXPECT_EQ("en", Locale::getLanguageId());
}

TEST_F(LocaleTest, TakesTheFirstVariableThatIsSet) {
    const ScopedEnvironment lang("LANG", "fr_FR.UTF-8");
    EXPECT_EQ("fr_FR", Locale::getLanguageId());
    const ScopedEnvironment messages("LC_MESSAGES", "de_DE@euro");
    EXPECT_EQ("de_DE", Locale::getLanguageId());
    const ScopedEnvironment all("LC_ALL", "C.UTF-8");
    EXPECT_EQ("en", Locale::getLanguageId());
}

TEST_F(LocaleTest, GivesARequestItsLanguage) {
    const ScopedEnvironment lang("LANG", "fr_FR.UTF-8");
    {
        const LanguageScope outer("zh-Hans-CN");
        EXPECT_EQ("zh_Hans_CN", Locale::getLanguageId());
        const LanguageScope inner("ja");
        EXPECT_EQ("ja", Locale::getLanguageId());
        std::thread([] { EXPECT_EQ("fr_FR", Locale::getLanguageId()); }).join();
    }
    EXPECT_EQ("fr_FR", Locale::getLanguageId());
}

TEST_F(LocaleTest, KeepsItsLanguageForWhatIsNone) {
    const ScopedEnvironment lang("LANG", "fr_FR.UTF-8");
    const LanguageScope outer("ja");
    for (const std::string& tag :
         {std::string(), std::string("*"), std::string("../../etc"), std::string("i-lux"),
          std::string("d/e"), std::string("12"), "de-" + std::string(100, 'x')}) {
        const LanguageScope scope(tag);
        EXPECT_EQ("ja", Locale::getLanguageId()) << tag;
    }
}
