// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Error.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace QZ;

TEST(Error, NamesFileAndReason) {
    try {
        throwSystemError("Cannot save", "/some/asset.dat", ENOSPC);
        FAIL();
    } catch (const Error& error) {
        EXPECT_STREQ("Cannot save /some/asset.dat: No space left on device", error.what());
    }
}

TEST(Error, HasATextForAnyNumber) {
    EXPECT_FALSE(systemErrorText(987654).empty());
}
