// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Sources.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "TestMachine.h"

using namespace QZ;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Sources, NamesEachThatIsMissingWithItsReason) {
    const TestMachine machine;
    std::filesystem::remove(machine.folder().file("data"));
    EXPECT_THAT(
        missingSources(),
        ElementsAre(
            testing::AllOf(HasSubstr("No SMBIOS tables: " + machine.folder().path()),
                           HasSubstr("smbios_entry_point: No such file or directory")),
            testing::AllOf(HasSubstr("No machine id: "), HasSubstr("machine-id: No such")),
            HasSubstr("No data folder: " + machine.folder().file("data")),
            HasSubstr("No service-processor library: ../lib/libtav_shrdevice.so: No such"),
            testing::AllOf(HasSubstr("No management controller: " + machine.folder().path() +
                                     "/dev/ipmi0: No such file or directory; "),
                           HasSubstr("modprobe -a ipmi_si ipmi_devintf"))));
}

TEST(Sources, HasNothingToSayOfAWholeMachine) {
    const TestMachine machine;
    const TemporaryFolder& folder = machine.folder();
    folder.write("sys/firmware/dmi/tables/smbios_entry_point", "x");
    folder.write("sys/firmware/dmi/tables/DMI", "x");
    folder.write("etc/machine-id", "x");
    folder.write("lib/libtav_shrdevice.so", "x");
    folder.write("dev/ipmi0.replies", "");
    std::filesystem::create_directory(folder.file("run"));
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.file("run"));
    const std::vector<std::string> missing = missingSources();
    std::filesystem::current_path(before);
    EXPECT_THAT(missing, testing::IsEmpty());
}

TEST(Sources, TakesAnEmptyOrForeignFileForMissing) {
    const TestMachine machine;
    machine.folder().write("sys/firmware/dmi/tables/smbios_entry_point", "x");
    std::filesystem::create_directory(machine.folder().file("sys/firmware/dmi/tables/DMI"));
    machine.folder().write("etc/machine-id", "");
    const std::vector<std::string> missing = missingSources();
    ASSERT_EQ(missing.size(), 4U);
    EXPECT_THAT(missing[0], HasSubstr("tables/DMI: not a regular file"));
    EXPECT_THAT(missing[1], HasSubstr("machine-id: empty"));
}

TEST(Sources, TakesTheControllersDeviceItselfForThere) {
    const TestMachine machine;
    const auto hasController = [] {
        const std::vector<std::string> missing = missingSources();
        return std::none_of(missing.begin(), missing.end(), [](const std::string& sentence) {
            return sentence.find("management controller") != std::string::npos;
        });
    };
    EXPECT_FALSE(hasController());
    machine.folder().write("dev/ipmi0", "");
    EXPECT_TRUE(hasController());
}
