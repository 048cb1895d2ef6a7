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

TEST(RequestLanguage, IsTheFirstThatThereIsACatalogueFor) {
    AcceptLanguageList languages;
    languages.insert(LanguageTag("it-CH"), 1.0F);
    languages.insert(LanguageTag("zh-CN"), 0.8F);
    languages.insert(LanguageTag("de"), 0.5F);
    EXPECT_EQ("zh-CN", languageOf(languages));
    languages.insert(LanguageTag("en-US"), 0.9F);
    EXPECT_EQ("en-US", languageOf(languages)) << "what stands in no translation is English";
}

TEST(RequestLanguage, StaysTheFirstWhereThereIsACatalogueForNone) {
    AcceptLanguageList languages;
    languages.insert(LanguageTag("it"), 1.0F);
    languages.insert(LanguageTag("pt-BR"), 0.5F);
    languages.insert(LanguageTag("de"), 0.0F);
    EXPECT_EQ("it", languageOf(languages));
}

TEST(RequestLanguage, IsNoneWhereAnyIsAsGoodAsTheNext) {
    AcceptLanguageList languages;
    languages.insert(LanguageTag("it"), 1.0F);
    languages.insert(LanguageTag("*"), 0.5F);
    languages.insert(LanguageTag("de"), 0.2F);
    EXPECT_EQ("", languageOf(languages));
}
