// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Machines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>

#include "BuildPaths.h"
#include "PartInfoFactory.h"
#include "ScopedEnvironment.h"
#include "SerialNumberInformation.h"
#include "TemporaryFolder.h"

namespace QZ {
namespace {

namespace fs = std::filesystem;
using State = SmBios::State;

const std::string _committed = TAVQZ_SOURCE_DIR "/tests/machines";

// Left in a machine's data folder by whoever asked it before.
bool _isTraceOfAsking(const fs::path& path) {
    return path.extension() == ".lock" || path.filename() == "fru.dat";
}

// Relative path and content of each file below the folder that asking the machine does not leave.
std::map<std::string, std::string> _filesBelow(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file() && !_isTraceOfAsking(entry.path())) {
            std::ifstream stream(entry.path(), std::ios::binary);
            files[fs::relative(entry.path(), folder)] = {std::istreambuf_iterator<char>(stream),
                                                         std::istreambuf_iterator<char>()};
        }
    }
    return files;
}

TEST(Machines, AreTheOnesThatTheBuilderMakes) {
    const TemporaryFolder folder;
    writeMachines(folder.path());
    const std::map<std::string, std::string> made = _filesBelow(folder.path());
    EXPECT_EQ(_filesBelow(_committed), made) << "Run: make_machines " << _committed;
    EXPECT_EQ(made.count("rack-server/sys/firmware/dmi/tables/DMI"), 1U);
}

class Machine : public testing::Test {
protected:
    void enter(const std::string& name) { _environment.emplace("TAVQZ_HOST_ROOT", folder(name)); }

    static std::string folder(const std::string& name) { return _committed + "/" + name; }

    std::string serial, maker, product, version;

private:
    std::optional<ScopedEnvironment> _environment;
};

TEST_F(Machine, RackServerIsSound) {
    enter("rack-server");
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Ok) << smBios.reason();
    EXPECT_EQ(smBios.getMajorVersion(), 3U);
    const SerialNumberInformation information;
    EXPECT_TRUE(information.getSystem(serial, maker, product, version));
    EXPECT_EQ(product, "Example Server 2U -[EX2100-7A]-");
    EXPECT_TRUE(information.getBaseBoard(1, serial, maker, product, version));
    EXPECT_TRUE(information.getMemory(7, serial, maker));
    EXPECT_EQ(serial, "5A3C1080");
    EXPECT_FALSE(information.getMemory(8, serial, maker));
}

TEST_F(Machine, OldServerHasMemoryThatItCannotName) {
    enter("old-server");
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Ok) << smBios.reason();
    EXPECT_EQ(smBios.getMinorVersion(), 2U);
    EXPECT_FALSE(SerialNumberInformation().getMemory(0, serial, maker));
}

TEST_F(Machine, DamagedFirmwareStillTellsWhatIsWhole) {
    enter("damaged-firmware");
    const SmBios smBios;
    EXPECT_EQ(smBios.state(), State::Damaged);
    EXPECT_THAT(smBios.reason(), testing::HasSubstr("wrong checksum"));
    const SerialNumberInformation information;
    EXPECT_TRUE(information.getMemory(0, serial, maker));
    EXPECT_EQ(serial, "77AA0001");
    EXPECT_TRUE(information.getMemory(1, serial, maker));
    EXPECT_EQ(serial, "");
    EXPECT_EQ(maker, "Example Memory");
}

TEST_F(Machine, HostileTextsArriveAsTheyAre) {
    enter("hostile-texts");
    EXPECT_EQ(SmBios().state(), State::Ok);
    const SerialNumberInformation information;
    EXPECT_TRUE(information.getBaseBoard(0, serial, maker, product, version));
    EXPECT_EQ(serial, "\xFF\xFF\xFF\xFF");
}

TEST_F(Machine, BareHasNothing) {
    enter("bare");
    EXPECT_EQ(SmBios().state(), State::Failed);
    EXPECT_FALSE(SerialNumberInformation().getSystem(serial, maker, product, version));
}

TEST_F(Machine, AnyHasItsPartsInTheList) {
    const struct {
        const char* name;
        std::vector<std::string> lastParts;
    } machines[] = {
        {"rack-server", {"SCSIDevice0 6SJ0041A", "SCSIDevice1 6SJ0042B", "SCSIDevice2 "}},
        {"old-server",
         {"IDEDevice0 EXI40-00071", "IDEDevice1 ", "Monitor0 ", "VideoCard0 ",
          "SCSIDevice0 3HZ00017"}},
        {"damaged-firmware", {"VideoCard0 ", "SCSIDevice0 7AB0"}},
        {"hostile-texts",
         {"IDEDevice0 [2J]]>\x80", "Monitor0 ", "SCSIDevice0 <&\"'>\x7F]]>",
          "SCSIDevice1 " + std::string(79, '=')}},
        {"bare", {"Processor0 "}},
    };
    for (const auto& machine : machines) {
        enter(machine.name);
        const std::list<PartInfo*> parts = PartInfoFactory::newList();
        std::vector<std::string> tail;
        for (const PartInfo* part : parts) {
            std::string tag;
            part->getTag(tag);
            part->getSerialNumber(serial);
            tail.push_back(tag.append(" ").append(serial));
        }
        PartInfoFactory::deleteList(parts);
        ASSERT_GE(tail.size(), machine.lastParts.size());
        tail.erase(tail.begin(),
                   tail.end() - static_cast<std::ptrdiff_t>(machine.lastParts.size()));
        EXPECT_EQ(tail, machine.lastParts) << machine.name;
    }
}

}  // namespace
}  // namespace QZ
