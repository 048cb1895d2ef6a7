// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MachineRecord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "BuildPaths.h"
#include "Error.h"
#include "MachinePaths.h"
#include "MachineSanitizer.h"
#include "ScopedEnvironment.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

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

class Sanitized : public testing::Test {
protected:
    static MachineFiles sanitized(const std::string& name, const std::string& key = "key") {
        const ScopedEnvironment environment("TAVQZ_HOST_ROOT", _machines + name);
        MachineFiles files = recordMachine().files;
        sanitizeMachine(files, key);
        return files;
    }
};

TEST_F(Sanitized, MachineTellsNoSerialNumbersUuidOrNames) {
    std::string all;
    for (const auto& [name, content] : sanitized("rack-server")) {
        all += content;
    }
    for (const char* secret :
         {"EXS2100417", "EXB7A00319", "EXR2000072", "EXC8000417", "5A3C1010", "5A3C1080",
          "6SJ0041A", "rack-server", "5f3a9c1e7d2b4860", "\x10\x32\x54\x76\x98\xBA\xDC\xFE"}) {
        EXPECT_THAT(all, Not(HasSubstr(secret)));
    }
    for (const char* kept : {"Example Server 2U -[EX2100-7A]-", "Rev C", "EX600-15K", "EM16G-3200R",
                             "Example Processor 6316"}) {
        EXPECT_THAT(all, HasSubstr(kept));
    }
}

TEST_F(Sanitized, TextsKeepTheirShape) {
    const MachineFiles before = _record(_machines + "old-server").files;
    const MachineFiles after = sanitized("old-server");
    ASSERT_EQ(before.size(), after.size());
    for (const auto& [name, content] : before) {
        EXPECT_EQ(after.at(name).size(), content.size()) << name;
    }
    EXPECT_THAT(after.at("etc/machine-id"), testing::MatchesRegex("[0-9a-f]{32}\n"));
    EXPECT_THAT(after.at("etc/hostname"), testing::MatchesRegex("[a-z]{3}-[a-z]{6}\n"));
    EXPECT_NE(after.at("proc/ide/hda/identify"), before.at("proc/ide/hda/identify"));
    EXPECT_EQ(after.at("proc/ide/hdc/identify"), before.at("proc/ide/hdc/identify"))
        << "a drive without a serial number";
    EXPECT_EQ(after.at("proc/cpuinfo"), before.at("proc/cpuinfo"));
}

TEST_F(Sanitized, TextIsTheSameEverywhereAndAnotherWithAnotherKey) {
    MachineFiles files = {{"etc/hostname", "server-17\n"},
                          {"dev/sda/12018000ff00", std::string("\0\x80\0\x09server-17", 13)},
                          {"dev/sdb/12018000ff00", std::string("\0\x80\0\x0Dserver-17 4711", 18)},
                          {"proc/cpuinfo", "model name\t: of server-17 and abc\n"},
                          {"etc/machine-id", "abc\n"}};
    MachineFiles others = files;
    sanitizeMachine(files, "key");
    sanitizeMachine(others, "another");
    const std::string name = files["etc/hostname"].substr(0, 9);
    EXPECT_NE(name, "server-17");
    EXPECT_EQ(files["dev/sda/12018000ff00"].substr(4), name);
    EXPECT_EQ(files["proc/cpuinfo"], "model name\t: of " + name + " and abc\n");
    EXPECT_THAT(files["dev/sdb/12018000ff00"], Not(HasSubstr("4711")));
    EXPECT_NE(files["etc/hostname"], others["etc/hostname"]);
}

TEST_F(Sanitized, MachineMayHoldAnything) {
    for (const char* name : {"damaged-firmware", "hostile-texts", "bare"}) {
        const MachineFiles before = _record(_machines + name).files;
        EXPECT_EQ(sanitized(name).size(), before.size());
    }
}

}  // namespace
}  // namespace QZ
