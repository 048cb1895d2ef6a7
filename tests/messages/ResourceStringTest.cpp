// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ResourceString.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "BuildPaths.h"
#include "Catalogues.h"
#include "MachinePaths.h"
#include "MessageCatalogue.h"
#include "Product.h"
#include "TestMachine.h"

using namespace QZ;

namespace {

std::wstring textOf(const Catalogues& catalogues, const std::string& language, const wchar_t* key) {
    return ResourceString(catalogues.library(language), key).toString();
}

std::wstring languageOf(const std::string& id) {
    const std::wstring library = Product::getResourceLibrary("", id);
    return library.substr(library.rfind(L'/') + 1);
}

}  // namespace

TEST(ResourceString, FallsBackToEnglishAndThenToTheKey) {
    const Catalogues catalogues;
    catalogues.add("root", "A { \"apple\" }\nB { \"pear\" }");
    catalogues.add("de", "A { \"Apfel\" }");
    EXPECT_EQ(L"Apfel", textOf(catalogues, "de", L"A"));
    EXPECT_EQ(L"pear", textOf(catalogues, "de", L"B"));
    EXPECT_EQ(L"apple", textOf(catalogues, "ja", L"A"));
    EXPECT_EQ(L"NO_SUCH_KEY", textOf(catalogues, "de", L"NO_SUCH_KEY"));
    EXPECT_EQ(L"", textOf(catalogues, "de", L""));
}

TEST(ResourceString, IsItsKeyWhereThereAreNoCatalogues) {
    const Catalogues catalogues;
    EXPECT_EQ(L"A", textOf(catalogues, "root", L"A"));
    EXPECT_EQ(L"A", ResourceString(L"", L"A").toString());
    catalogues.folder().write("root.res", "no resource bundle");
    EXPECT_EQ(L"A", textOf(catalogues, "root", L"A"));
    std::filesystem::create_directory(catalogues.folder().file("fr.res"));
    EXPECT_EQ(L"A", textOf(catalogues, "fr", L"A"));
}

TEST(ResourceString, DoesNotUseATranslationWithOtherInsertions) {
    const Catalogues catalogues;
    catalogues.add("root", R"(A { "%ls of %d" } B { "%ls of %d" } C { "%ls" } D { "plain" })");
    catalogues.add("de", R"(A { "%2$d: %1$ls" } B { "%d: %ls" } C { "%s" } D { "%n" })");
    EXPECT_EQ(L"7: x",
              ResourceString(catalogues.library("de"), L"A").format(std::wstring(L"x"), 7));
    EXPECT_EQ(L"%ls of %d", textOf(catalogues, "de", L"B"));
    EXPECT_EQ(L"%ls", textOf(catalogues, "de", L"C"));
    EXPECT_EQ(L"plain", textOf(catalogues, "de", L"D"));
}

TEST(ResourceString, IsNotFormattedWithValuesThatItDoesNotTake) {
    const Catalogues catalogues;
    catalogues.add("root", R"(A { "%ls and %ls" } B { "%s" })");
    const std::wstring value = L"one";
    EXPECT_EQ(L"one and one",
              ResourceString(catalogues.library("root"), L"A").format(value, value));
    EXPECT_EQ(L"%ls and %ls", ResourceString(catalogues.library("root"), L"A").format(value));
    EXPECT_EQ(L"%ls and %ls", ResourceString(catalogues.library("root"), L"A").format(value, 1));
    EXPECT_EQ(L"%s", ResourceString(catalogues.library("root"), L"B").format(value));
}

TEST(ResourceString, IsCutAt511Characters) {
    const Catalogues catalogues;
    catalogues.add("root", R"(A { "%ls" })");
    const ResourceString text(catalogues.library("root"), L"A");
    const std::wstring most(511, L'\u00FC');
    EXPECT_EQ(most, text.format(most));
    EXPECT_EQ(most, text.format(most + L"x"));
    EXPECT_EQ(most, text.format(std::wstring(5000, L'\u00FC')));
}

TEST(ResourceLibrary, IsTheLanguagesOwnOrItsParents) {
    for (const auto& [id, language] : {std::pair("de", L"de"),
                                       {"de_AT", L"de"},
                                       {"fr_CA", L"fr"},
                                       {"es_MX", L"es"},
                                       {"ja_JP", L"ja"},
                                       {"zh", L"zh_Hans"},
                                       {"zh_CN", L"zh_Hans"},
                                       {"zh_Hans_SG", L"zh_Hans"},
                                       {"zh_TW", L"root"},
                                       {"zh_Hant", L"root"},
                                       {"en_GB", L"root"},
                                       {"pl", L"root"},
                                       {"", L"root"},
                                       {"../de", L"root"}})
        EXPECT_EQ(language, languageOf(id)) << id;
}

TEST(ResourceLibrary, IsTheLanguagesOwnOrNot) {
    for (const char* id : {"de", "de-AT", "zh_CN", "en", "EN-us", "en_GB"})
        EXPECT_TRUE(Product::hasResourceLibrary("", id)) << id;
    for (const char* id : {"it", "zh_TW", "eng", "*", "", "../de"})
        EXPECT_FALSE(Product::hasResourceLibrary("", id)) << id;
}

TEST(ResourceLibrary, HoldsEveryLanguageWithEveryKey) {
    const std::string folder = TAVQZ_BINARY_DIR "/share/tavqz/messages";
    const MessageCatalogue english(folder, MessageCatalogue::Root);
    EXPECT_LE(40U, english.keys().size());
    for (const char* language : {"de", "fr", "es", "ja", "zh_Hans"})
        EXPECT_EQ(english.keys(), MessageCatalogue(folder, language).keys()) << language;
}

TEST(ResourceLibrary, TellsKeysOfInstancesAlikeInEveryLanguage) {
    for (const char* language : {"", "de", "fr", "es", "ja", "zh_Hans"}) {
        const std::wstring library = Product::getResourceLibrary("", language);
        EXPECT_EQ(L"Watchdog3", ResourceString(library, L"SERVER_TIMEOUT_UNIQUEID").format(3));
        EXPECT_EQ(L"ServiceProcessor", ResourceString(library, L"HARDWARE_ABBREV_2").toString());
    }
}

TEST(ResourceLibrary, IsTheProductsAndNotTheMachines) {
    const TestMachine machine;
    EXPECT_EQ(TAVQZ_BINARY_DIR "/share/tavqz/messages", MachinePaths::messageFolder());
    EXPECT_EQ(L"Unbekannt",
              ResourceString(Product::getResourceLibrary("", "de"), L"MSGID_UNKNOWN").toString());
}

TEST(ResourceLibrary, OfAComponentIsAFolderOfItsOwn) {
    EXPECT_EQ(make_wstring(MachinePaths::messageFolder() + "/other/root"),
              Product::getResourceLibrary("other", "de"));
}
