// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ProcessorProbe.h"

#include "InventoryMachine.h"

namespace QZ {
namespace {

class ProcessorProbe : public InventoryMachine {
protected:
    int probe() { return getCPUInfo(info); }

    CPUInfo info{"vendor before", "model before"};
};

TEST_F(ProcessorProbe, GivesVendorAndModelName) {
    writeFile("proc/cpuinfo",
              "processor\t: 0\nvendor_id\t: GenuineExample\ncpu family\t: 6\nmodel\t\t: 106\n"
              "model name\t: Example(R) CPU @ 2.40GHz\nstepping\t: 6\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.vendor, "GenuineExample");
    EXPECT_EQ(info.modelName, "Example(R) CPU @ 2.40GHz");
}

TEST_F(ProcessorProbe, GivesTheLastProcessors) {
    writeFile("proc/cpuinfo",
              "vendor_id\t: First\nmodel name\t: One\n\nvendor_id\t: Last\nmodel name\t: Two\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.vendor, "Last");
    EXPECT_EQ(info.modelName, "Two");
}

TEST_F(ProcessorProbe, KeepsWhatTheFileDoesNotGive) {
    writeFile("proc/cpuinfo", "vendor_id\t: \nmodel\t\t: 106\nmodel nameless\n vendor_id: x\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.vendor, "vendor before");
    EXPECT_EQ(info.modelName, "model before");
}

// The scan would take any white space, and none, for the blank in the name.
TEST_F(ProcessorProbe, TakesNamesAsTheKernelWritesThem) {
    writeFile("proc/cpuinfo", "modelname: a\nmodel\tname: b\nmodel  name: c\nmodel name:d\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.modelName, "d");
    writeFile("proc/cpuinfo", "modelname: a\nmodel\tname: b\nmodel  name: c\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.modelName, "d");
}

TEST_F(ProcessorProbe, TakesAnEmptyFileForADescription) {
    writeFile("proc/cpuinfo", "");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.vendor, "vendor before");
}

TEST_F(ProcessorProbe, TakesTheWholeLinesOfTheFirst16MebibytesOfAFile) {
    std::string text = "vendor_id\t: First\nmodel name\t: One\n";
    const std::string cut = "model name\t: Half of a name";
    text.append((std::size_t{16} << 20) - text.size() - cut.size(), '\n');
    writeFile("proc/cpuinfo", text + cut + " and more\n");
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.vendor, "First");
    EXPECT_EQ(info.modelName, "One");
    writeFile("proc/cpuinfo", text + cut);
    EXPECT_NE(probe(), 0);
    EXPECT_EQ(info.modelName, "Half of a name") << "all there is";
}

TEST_F(ProcessorProbe, FailsWithoutTheFile) {
    EXPECT_EQ(probe(), 0);
    EXPECT_EQ(info.vendor, "vendor before");
    EXPECT_EQ(info.modelName, "model before");
}

}  // namespace
}  // namespace QZ
