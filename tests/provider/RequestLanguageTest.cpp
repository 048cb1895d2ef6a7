// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestLanguage.h"

#include <gtest/gtest.h>

using namespace QZ;
using namespace Pegasus;

namespace {

std::string languageOf(const AcceptLanguageList& languages) {
    OperationContext context;
    context.insert(AcceptLanguageListContainer(languages));
    return requestLanguage(context);
}

}  // namespace

TEST(RequestLanguage, IsTheOneThatTheClientWantsMost) {
    AcceptLanguageList languages;
    languages.insert(LanguageTag("fr"), 0.5F);
    languages.insert(LanguageTag("de-AT"), 1.0F);
    EXPECT_EQ("de-AT", languageOf(languages));
}

TEST(RequestLanguage, IsNoneWhereTheClientSaysNothingOrRefuses) {
    EXPECT_EQ("", requestLanguage(OperationContext()));
    EXPECT_EQ("", languageOf(AcceptLanguageList()));
    AcceptLanguageList refused;
    refused.insert(LanguageTag("de"), 0.0F);
    EXPECT_EQ("", languageOf(refused));
}
