// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <filesystem>

#include "BuildPaths.h"
#include "CommandRun.h"
#include "FirmwareParts.h"

using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string _machines = TAVQZ_SOURCE_DIR "/tests/machines/";

// What a machine tells of a class, and nothing of its own data.
std::string _list(const std::string& root, const char* className) {
    const TemporaryFolder data;
    const CommandRun run = runCommandLine(
        {"--root", root, "--data-dir", data.path(), "list", className, "--format", "json"});
    EXPECT_EQ(run.status, 0) << run.err;
    return run.out;
}

std::string _parts(const std::string& root) {
    return _list(root, "TAVIRA_SerialNumberInformation");
}

}  // namespace

TEST(Capture, MakesAMachineThatAnswersTheSame) {
    for (const char* name : {"rack-server", "old-server", "damaged-firmware", "hostile-texts"}) {
        const TemporaryFolder folder;
        const CommandRun run =
            runCommandLine({"--root", _machines + name, "capture", folder.file("copy")});
        EXPECT_EQ(run.status, 0) << run.err;
        EXPECT_THAT(run.out, HasSubstr("sys/firmware/dmi/tables/DMI\n"));
        EXPECT_EQ(_parts(folder.file("copy")), _parts(_machines + name)) << name;
    }
}

TEST(Capture, KeepsDisksAndControllersOfRaids) {
    for (const char* name : {"rack-server", "hostile-texts"}) {
        const TemporaryFolder folder;
        const CommandRun run =
            runCommandLine({"--root", _machines + name, "capture", folder.file("copy")});
        EXPECT_EQ(run.status, 0) << run.err;
        for (const char* className : {"TAVIRA_PhysicalDiskDrive", "TAVIRA_RAIDController"}) {
            const std::string told = _list(_machines + name, className);
            EXPECT_THAT(told, HasSubstr("DeviceID"));
            EXPECT_EQ(_list(folder.file("copy"), className), told) << name;
        }
    }
}

TEST(Capture, ReplacesTheNumbersOfDisksAndControllers) {
    const TemporaryFolder folder;
    const CommandRun run = runCommandLine(
        {"--root", _machines + "rack-server", "capture", folder.file("copy"), "--sanitize"});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string disks = _list(folder.file("copy"), "TAVIRA_PhysicalDiskDrive");
    EXPECT_THAT(disks, HasSubstr("EX900-10K"));
    EXPECT_THAT(disks, Not(HasSubstr("6SJ0041A")));
    EXPECT_THAT(disks, Not(HasSubstr("7TK00104")));
    EXPECT_THAT(_list(folder.file("copy"), "TAVIRA_RAIDController"), HasSubstr("03-25420-09A"));
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.file("copy"))) {
        if (entry.is_regular_file()) {
            EXPECT_THAT(folder.read(entry.path().lexically_relative(folder.path())),
                        Not(AnyOf(HasSubstr("7TK0010"), HasSubstr("6SJ004"), HasSubstr("SV5330"))))
                << entry.path();
        }
    }
}

TEST(Capture, ReplacesWhatTellsTheMachineFromOthers) {
    const TemporaryFolder folder;
    const CommandRun run = runCommandLine(
        {"--root", _machines + "rack-server", "capture", folder.file("copy"), "--sanitize"});
    EXPECT_EQ(run.status, 0) << run.err;
    const std::string parts = _parts(folder.file("copy"));
    EXPECT_THAT(parts, Not(HasSubstr("EXS2100417")));
    EXPECT_THAT(parts, HasSubstr("Example Server 2U -[EX2100-7A]-"));
    EXPECT_THAT(parts, HasSubstr("SCSIDevice2"));
}

// Firmware has put structures behind the end of its table.
TEST(Capture, ReplacesTheNumbersBehindAnEarlyEndOfTheFirmware) {
    const TemporaryFolder folder;
    SmBiosBuilder firmware(SmBiosBuilder::EntryPoint::Version2, 2, 8);
    addSystem(firmware, {"Corp", "Server", "04", "Unknown"}, std::string(16, '\x11'));
    firmware.addEnd();
    addMemory(firmware, "DIMM 1", {"Unknown", "", "", "LEAKED-SERIAL-1"}, "P");
    firmware.addEnd().announceCount(4).writeBelow(folder.file("root"));
    const CommandRun run = runCommandLine(
        {"--root", folder.file("root"), "capture", folder.file("copy"), "--sanitize"});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_THAT(_parts(folder.file("root")), HasSubstr("LEAKED-SERIAL-1"));
    const std::string parts = _parts(folder.file("copy"));
    EXPECT_THAT(parts, Not(HasSubstr("LEAKED-SERIAL-1")));
    EXPECT_THAT(parts, HasSubstr("Memory0"));
    EXPECT_THAT(parts, HasSubstr("\"Unknown\"")) << "no number, but what stands for one";
    EXPECT_THAT(folder.read("copy/sys/firmware/dmi/tables/DMI"), Not(HasSubstr("LEAKED")));
}

TEST(Capture, LeavesAFolderAloneThatIsNotEmpty) {
    const TemporaryFolder folder;
    folder.write("copy/file", "mine");
    const CommandRun run =
        runCommandLine({"--root", _machines + "rack-server", "capture", folder.file("copy")});
    EXPECT_EQ(run.status, 1);
    EXPECT_THAT(run.err, HasSubstr("Directory not empty"));
    EXPECT_FALSE(folder.contains("copy/etc"));
}

TEST(Capture, SaysWhatCouldNotBeRead) {
    const TemporaryFolder folder;
    folder.write("root/dev/sda", "no disk");
    folder.write("root/etc/hostname", "node\n");
    const CommandRun run =
        runCommandLine({"--root", folder.file("root"), "capture", folder.file("copy")});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, "etc/hostname\n");
    EXPECT_THAT(run.err, HasSubstr("dev/sda"));
}
