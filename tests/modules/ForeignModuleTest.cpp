// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include "CommandRun.h"
#include "TemporaryFolder.h"

namespace {

// A module that was built for OpenPegasus, and the program that is not it.
TEST(ForeignModule, IsRefusedInOneLineBeforeAnythingOfItRuns) {
    const TemporaryFolder data;
    const CommandRun run = runCommandLine(
        {"--module", FOREIGN_MODULE, "--data-dir", data.path(), "list", "TAVIRA_Lease"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "tavqz: CIM_ERR_FAILED (1): provider AssetIDProvider: Cannot load the provider "
              "module " FOREIGN_MODULE
              ": it was built for OpenPegasus, with libpegcommon.so.1; build it without "
              "PEGASUS_ROOT for this program\n");
}

}  // namespace
