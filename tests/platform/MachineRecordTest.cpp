// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineRecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "BuildPaths.h"
#include "Error.h"
#include "MachinePaths.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

const std::string _machines = TAVQZ_SOURCE_DIR "/tests/machines/";

MachineRecord _record(const std::string& root) {
    const ScopedEnvironment environment("TAVQZ_HOST_ROOT", root);
    return recordMachine();
}

TEST(RecordMachine, TakesAllThatAMachineIsAskedFor) {
    const MachineRecord record = _record(_machines + "old-server");
    EXPECT_TRUE(record.problems.empty());
    std::vector<std::string> names;
    for (const auto& [name, content] : record.files) {
        names.push_back(name);
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"dev/sda/", "dev/sda/12000000ff00", "dev/sda/12018000ff00",
                                        "etc/X11/XF86Config", "etc/hostname", "etc/machine-id",
                                        "proc/cpuinfo", "proc/ide/hda/identify",
                                        "proc/ide/hdc/identify", "sys/firmware/dmi/tables/DMI",
                                        "sys/firmware/dmi/tables/smbios_entry_point"}));
}

TEST(RecordMachine, MakesAFolderThatAnswersByteForByte) {
    for (const char* name :
         {"rack-server", "old-server", "damaged-firmware", "hostile-texts", "bare"}) {
        const TemporaryFolder folder;
        const MachineRecord record = _record(_machines + name);
        writeMachine(record.files, folder.file("copy"));
        EXPECT_EQ(_record(folder.file("copy")).files, record.files) << name;
        for (const auto& [file, content] : record.files) {
            if (file.back() != '/' && file.back() != '@' && file != "etc/hostname") {
                EXPECT_EQ(folder.read("copy/" + file), content);
            }
        }
        EXPECT_FALSE(folder.contains("copy/var")) << "our own data stays where it is";
    }
}

TEST(RecordMachine, KeepsADiskThatAnswersNothing) {
    const TemporaryFolder folder;
    fs::create_directories(folder.file("root/dev/sdc"));
    const MachineRecord record = _record(folder.file("root"));
    EXPECT_EQ(record.files.count("dev/sdc/"), 1U);
    writeMachine(record.files, folder.file("copy"));
    EXPECT_TRUE(fs::is_directory(folder.file("copy/dev/sdc")));
}

TEST(RecordMachine, SaysWhatCouldNotBeRead) {
    const TemporaryFolder folder;
    folder.write("root/dev/sda", "no disk");
    fs::create_directories(folder.file("root/proc/cpuinfo"));
    const MachineRecord record = _record(folder.file("root"));
    ASSERT_EQ(record.problems.size(), 2U);
    EXPECT_THAT(record.problems[0], HasSubstr("proc/cpuinfo"));
    EXPECT_THAT(record.problems[1], HasSubstr("dev/sda"));
    EXPECT_TRUE(record.files.empty());
}

TEST(RecordMachine, CutsALongFileAndSaysSo) {
    const TemporaryFolder folder;
    const std::string text(17 << 20, 'x');
    folder.write("root/proc/cpuinfo", text);
    const MachineRecord record = _record(folder.file("root"));
    ASSERT_EQ(record.files.count("proc/cpuinfo"), 1U);
    EXPECT_TRUE(record.files.at("proc/cpuinfo") == text.substr(0, (16 << 20) + 1));
    ASSERT_EQ(record.problems.size(), 1U);
    EXPECT_THAT(record.problems[0], HasSubstr("proc/cpuinfo"));
}

TEST(WriteMachine, RefusesAFolderWithSomethingInIt) {
    const TemporaryFolder folder;
    folder.write("full/file", "mine");
    folder.write("file", "mine");
    for (const char* name : {"full", "file"}) {
        EXPECT_THROW(writeMachine({{"etc/hostname", "x\n"}}, folder.file(name)), Error) << name;
    }
    EXPECT_EQ(folder.read("full/file"), "mine");
    EXPECT_FALSE(folder.contains("full/etc"));
}

}  // namespace
}  // namespace QZ
