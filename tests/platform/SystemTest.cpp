// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "System.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"
#include "Text.h"

using namespace QZ;

TEST(System, HasTheKernelsName) {
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", nullptr);
    char name[256] = "";
    ASSERT_EQ(0, gethostname(name, sizeof name));
    EXPECT_EQ(make_wstring(name), System::getName());
}

TEST(System, HasTheConfiguredNameOfAnotherMachine) {
    const TemporaryFolder folder;
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", folder.path());
    EXPECT_EQ(L"", System::getName());
    for (const char* text : {"rack-7", "rack-7\n", " rack-7 \r\nsecond\n", "\nrack-7\n"}) {
        folder.write("etc/hostname", text);
        EXPECT_EQ(L"rack-7", System::getName()) << text;
    }
    folder.write("etc/hostname", " \n");
    EXPECT_EQ(L"", System::getName());
}
