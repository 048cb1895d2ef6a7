// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachinePaths.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "BuildPaths.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

using namespace QZ;

namespace {

int checkPaths(const TemporaryFolder& folder) {
    const std::string command =
        std::string(TAVQZ_SOURCE_DIR "/script/check-paths ") + folder.path() + " >/dev/null 2>&1";
    return WEXITSTATUS(std::system(command.c_str()));  // NOLINT(cert-env33-c)
}

}  // namespace

TEST(MachinePaths, LeadIntoThisMachine) {
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", nullptr);
    EXPECT_FALSE(MachinePaths::isOtherMachine());
    EXPECT_EQ("/sys/firmware/dmi/tables/smbios_entry_point", MachinePaths::smbiosEntryPoint());
    EXPECT_EQ("/sys/firmware/dmi/tables/DMI", MachinePaths::smbiosTable());
    EXPECT_EQ("/etc/machine-id", MachinePaths::machineId());
    EXPECT_EQ("/etc/hostname", MachinePaths::hostName());
    EXPECT_EQ("/sys/hypervisor/type", MachinePaths::hypervisorType());
    EXPECT_EQ("/sys/hypervisor/uuid", MachinePaths::hypervisorUuid());
    EXPECT_EQ("/proc/cpuinfo", MachinePaths::cpuInfo());
    EXPECT_EQ("/proc/ide/hdc/identify", MachinePaths::ideIdentify('c'));
    EXPECT_EQ("/dev/sdz", MachinePaths::scsiDisk('z'));
    EXPECT_EQ("/dev/ipmi0", MachinePaths::managementController());
    EXPECT_EQ("/dev/ipmi0.replies", MachinePaths::managementControllerReplies());
    EXPECT_EQ("/etc/X11/XF86Config", MachinePaths::xServerConfiguration());
    EXPECT_EQ("/etc/tavqz/service-processor.txt", MachinePaths::simulatedServiceProcessors());
}

TEST(MachinePaths, LeadIntoAnotherMachinesFolder) {
    for (const char* name : {"/machines/one", "/machines/one/", "/machines/one//"}) {
        const ScopedEnvironment root("TAVQZ_HOST_ROOT", name);
        EXPECT_TRUE(MachinePaths::isOtherMachine());
        EXPECT_EQ("/machines/one/proc/cpuinfo", MachinePaths::cpuInfo());
        EXPECT_EQ("/machines/one/sys/firmware/dmi/tables/DMI", MachinePaths::smbiosTable());
    }
}

TEST(MachinePaths, TakeAnEmptyRootAndTheRootItselfForThisMachine) {
    for (const char* name : {"", "/", "//"}) {
        const ScopedEnvironment root("TAVQZ_HOST_ROOT", name);
        EXPECT_FALSE(MachinePaths::isOtherMachine());
        EXPECT_EQ("/proc/cpuinfo", MachinePaths::cpuInfo());
    }
}

TEST(MachinePaths, EndTheDataFolderInASlash) {
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", "/machines/one");
    {
        const ScopedEnvironment data("TAVQZ_DATA_DIR", nullptr);
        EXPECT_EQ("/var/lib/tavqz/", MachinePaths::dataDirectory());
    }
    {
        const ScopedEnvironment data("TAVQZ_DATA_DIR", "");
        EXPECT_EQ("/var/lib/tavqz/", MachinePaths::dataDirectory());
    }
    for (const char* name : {"/some/data", "/some/data/"}) {
        const ScopedEnvironment data("TAVQZ_DATA_DIR", name);
        EXPECT_EQ("/some/data/", MachinePaths::dataDirectory());
    }
}

TEST(MachinePaths, KeepLibrariesRelativeToTheWorkingFolder) {
    const ScopedEnvironment root("TAVQZ_HOST_ROOT", "/machines/one");
    EXPECT_STREQ("../lib/%s", MachinePaths::libraryFormat());
}

TEST(CheckPaths, FindsAPathThatStandsElsewhere) {
    for (const char* line :
         {"auto a = \"/proc/cpuinfo\";", "auto b = L\"../lib/x.so\";", "f(R\"(/etc/hostname)\");",
          "auto c = \"/sys\";", "auto d = \"/var/lib/x/\"; // \"a\"", "auto e = u8\"/dev/sda\";"}) {
        const TemporaryFolder folder;
        folder.write("provider/builder/Some.cpp", line);
        EXPECT_EQ(1, checkPaths(folder)) << line;
    }
}

TEST(CheckPaths, LeavesOthersAlone) {
    const TemporaryFolder folder;
    folder.write("platform/MachinePaths.cpp", "auto a = \"/proc/cpuinfo\";");
    folder.write("tests/Some.cpp", "auto a = \"/proc/cpuinfo\";");
    folder.write("build/Some.cpp", "auto a = \"/proc/cpuinfo\";");
    folder.write("provider/Some.cpp", "    // \"/proc/cpuinfo\"\nauto a = \"/process/\";");
    EXPECT_EQ(0, checkPaths(folder));
}
