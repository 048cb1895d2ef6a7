// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/Exception.h>
#include <gtest/gtest.h>

#include <limits>

#include "CimText.h"

using namespace Pegasus;

namespace {

std::string parts(const char* tag) {
    const LanguageTag parsed{String(tag)};
    EXPECT_EQ(tag, text(parsed.toString()));
    return text(parsed.getLanguage()) + "|" + text(parsed.getCountry()) + "|" +
           text(parsed.getVariant());
}

TEST(LanguageTag, IsMadeOfItsParts) {
    EXPECT_EQ("de||", parts("de"));
    EXPECT_EQ("de|AT|", parts("de-AT"));
    EXPECT_EQ("zh|CN|beijing-old", parts("zh-CN-beijing-old"));
    EXPECT_EQ("sgn||deaf", parts("sgn-deaf"));
    EXPECT_EQ("de||1996", parts("de-1996"));
    EXPECT_EQ("||", parts("i-lux"));
    EXPECT_EQ("||", parts("x-acme-42"));
    EXPECT_EQ("||", parts("*"));
}

TEST(LanguageTag, RefusesWhatIsNone) {
    for (const char* tag : {"", "d", "germ", "d3", "de-", "-de", "de--AT", "de_AT", "de-A",
                            "de-verylongpart", "de-\xc3\xb6\xc3\xb6", "**", "de-*", "de AT"})
        EXPECT_THROW(LanguageTag{String(tag)}, Exception) << tag;
}

TEST(LanguageTag, ComparesIgnoringCase) {
    EXPECT_TRUE(LanguageTag("de-AT") == LanguageTag("DE-at"));
    EXPECT_TRUE(LanguageTag("de-AT") != LanguageTag("de"));
    EXPECT_THROW(LanguageTag().toString(), UninitializedObjectException);
    EXPECT_THROW(LanguageTag().getLanguage(), UninitializedObjectException);
}

TEST(AcceptLanguageList, KeepsTheBestFirst) {
    AcceptLanguageList list;
    list.insert(LanguageTag("en"), Real32(0.5));
    list.insert(LanguageTag("de"), Real32(1));
    list.insert(LanguageTag("fr"), Real32(0.5));
    list.insert(LanguageTag("*"), Real32(0));
    ASSERT_EQ(4U, list.size());
    EXPECT_EQ("de", text(list.getLanguageTag(0).toString()));
    EXPECT_EQ("en", text(list.getLanguageTag(1).toString()));
    EXPECT_EQ("fr", text(list.getLanguageTag(2).toString()));
    EXPECT_EQ(Real32(0.5), list.getQualityValue(2));
    EXPECT_EQ(2U, list.find(LanguageTag("FR")));
    EXPECT_EQ(PEG_NOT_FOUND, list.find(LanguageTag("it")));
    list.remove(0);
    EXPECT_EQ("en", text(list.getLanguageTag(0).toString()));
    EXPECT_THROW(list.getLanguageTag(3), IndexOutOfBoundsException);
    EXPECT_THROW(list.getQualityValue(3), IndexOutOfBoundsException);
    EXPECT_THROW(list.remove(3), IndexOutOfBoundsException);
    list.clear();
    EXPECT_EQ(0U, list.size());
}

TEST(AcceptLanguageList, RefusesQualitiesThatAreNone) {
    AcceptLanguageList list;
    for (const Real32 quality :
         {Real32(-0.1), Real32(1.1), std::numeric_limits<Real32>::quiet_NaN()})
        EXPECT_THROW(list.insert(LanguageTag("en"), quality), Exception) << quality;
    EXPECT_EQ(0U, list.size());
}

TEST(AcceptLanguageList, ComparesLanguagesAndQualities) {
    AcceptLanguageList x;
    AcceptLanguageList y;
    EXPECT_TRUE(x == y);
    x.insert(LanguageTag("en"), Real32(1));
    EXPECT_TRUE(x != y);
    y.insert(LanguageTag("EN"), Real32(1));
    EXPECT_TRUE(x == y);
    y.clear();
    y.insert(LanguageTag("en"), Real32(0.5));
    EXPECT_FALSE(x == y);
}

TEST(ContentLanguageList, KeepsItsOrder) {
    ContentLanguageList list;
    list.append(LanguageTag("fr"));
    list.append(LanguageTag("de"));
    EXPECT_EQ(2U, list.size());
    EXPECT_EQ(1U, list.find(LanguageTag("DE")));
    EXPECT_EQ(PEG_NOT_FOUND, list.find(LanguageTag("it")));
    EXPECT_EQ("fr", text(list.getLanguageTag(0).toString()));
    ContentLanguageList copy = list;
    copy.remove(0);
    EXPECT_TRUE(copy != list);
    EXPECT_EQ("de", text(copy.getLanguageTag(0).toString()));
    EXPECT_THROW(copy.getLanguageTag(1), IndexOutOfBoundsException);
    EXPECT_THROW(copy.remove(1), IndexOutOfBoundsException);
    copy.clear();
    EXPECT_TRUE(copy == ContentLanguageList());
}

TEST(ContentLanguageList, RefusesAnyLanguage) {
    ContentLanguageList list;
    EXPECT_THROW(list.append(LanguageTag("*")), Exception);
    EXPECT_EQ(0U, list.size());
}

}  // namespace
