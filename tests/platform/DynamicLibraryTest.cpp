// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DynamicLibrary.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TemporaryFolder.h"

using namespace QZ;

TEST(DynamicLibrary, GivesItsSymbols) {
    const DynamicLibrary library(TEST_LIBRARY);
    ASSERT_TRUE(library.isLoaded()) << library.getError();
    EXPECT_EQ("", library.getError());
    void* const symbol = library.getSymbol("answer");
    ASSERT_NE(nullptr, symbol);
    EXPECT_EQ(42, reinterpret_cast<int (*)()>(symbol)());
    EXPECT_EQ(nullptr, library.getSymbol("question"));
}

TEST(DynamicLibrary, KeepsItsSymbolsToItself) {
    const DynamicLibrary library(TEST_LIBRARY);
    ASSERT_TRUE(library.isLoaded());
    EXPECT_EQ(nullptr, dlsym(RTLD_DEFAULT, "answer"));
}

TEST(DynamicLibrary, IsUnloadedAtItsEnd) {
    const auto isResident = [] {
        void* const handle = dlopen(TEST_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
        if (handle != nullptr)
            dlclose(handle);
        return handle != nullptr;
    };
    {
        const DynamicLibrary library(TEST_LIBRARY);
        EXPECT_TRUE(isResident());
    }
    EXPECT_FALSE(isResident());
}

TEST(DynamicLibrary, SaysWhyItIsNotLoaded) {
    const TemporaryFolder folder;
    for (const std::string& path :
         {folder.file("none.so"), folder.write("text.so", "no library")}) {
        const DynamicLibrary library(path);
        EXPECT_FALSE(library.isLoaded());
        EXPECT_EQ(nullptr, library.getSymbol("answer"));
        EXPECT_THAT(library.getError(), testing::HasSubstr(path));
    }
}
