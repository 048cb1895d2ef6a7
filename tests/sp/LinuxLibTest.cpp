// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "BuildPaths.h"
#include "LibraryWorld.h"
#include "ScopedEnvironment.h"

namespace {

TEST(LinuxLib, LoadsFromTheSiblingFolderAndSaysSo) {
    InVariant variant("full");
    void* handle = openLinuxLib(Name("libdevice.so"));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(variant.printed(), "about to load library [../lib/libdevice.so]\n");
    EXPECT_EQ(dlclose(handle), 0);
}

TEST(LinuxLib, LooksNowhereElse) {
    InVariant variant("absent");
    EXPECT_EQ(openLinuxLib(Name("libdevice.so")), nullptr);
    EXPECT_EQ(openLinuxLib(Name("libc.so.6")), nullptr) << "the loader's search path has it";
    EXPECT_EQ(variant.printed(),
              "about to load library [../lib/libdevice.so]\n"
              "about to load library [../lib/libc.so.6]\n");
}

TEST(LinuxLib, NeverLooksBelowTheOtherMachinesRoot) {
    InVariant variant("absent");
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", TAVQZ_BINARY_DIR "/tests/sp/full");
    EXPECT_EQ(openLinuxLib(Name("libdevice.so")), nullptr);
}

TEST(LinuxLib, RefusesANullName) {
    InVariant variant("full");
    EXPECT_EQ(openLinuxLib(nullptr), nullptr);
    EXPECT_EQ(variant.printed(), "");
}

TEST(LinuxLib, LoadsANameOf120Characters) {
    InVariant variant("full");
    const std::string name(120, 'n');
    void* handle = openLinuxLib(Name(name));
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(variant.printed(), "about to load library [../lib/" + name + "]\n");
    EXPECT_EQ(dlclose(handle), 0);
}

TEST(LinuxLib, RefusesALongerName) {
    InVariant variant("full");
    // There is a library of each of these names.
    for (const std::size_t length : {121U, 200U}) {
        const std::string name(length, 'n');
        EXPECT_EQ(openLinuxLib(Name(name)), nullptr);
        EXPECT_EQ(variant.printed(), "");
    }
}

TEST(LinuxLib, PrintsBeforeItReturns) {
    InVariant variant("absent");
    openLinuxLib(Name("none.so"));
    // Past any buffer of the C library.
    EXPECT_EQ(write(STDOUT_FILENO, "|", 1), 1);
    EXPECT_EQ(variant.printed(), "about to load library [../lib/none.so]\n|");
}

}  // namespace
