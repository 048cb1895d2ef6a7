// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The shipped module in our own server, which it asks while it is asked.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>

#include "BuildPaths.h"
#include "CimText.h"
#include "InProcessServer.h"
#include "RaidParts.h"
#include "TestMachine.h"
#include "Units.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const CIMObjectPath _class("root/tavqz:TAVIRA_FRU");

const char* const _raid =
    "instance of TAVIRA_PhysicalDiskDrive {\n"
    "  path TAVIRA_PhysicalDiskDrive {key string DeviceID = \"d1\";};\n"
    "  string DeviceID = \"d1\"; string FRU = \" 39M4 \"; string Model = \"ST 4\";\n"
    "  string Manufacturer = \"Acme\"; string Name = \"Disk 1\"; string Description = \"SAS\";\n"
    "};\n"
    "instance of TAVIRA_RAIDController {\n"
    "  path TAVIRA_RAIDController {key string DeviceID = \"c1\";};\n"
    "  string DeviceID = \"c1\"; string FRU = \"46C8\"; string Name = \"Controller 1\";\n"
    "};\n";

// The model of the product, with the test's provider of RAID registered in place of its own.
Schema _schema(const TemporaryFolder& folder) {
    const std::string together = folder.file("schema");
    std::filesystem::copy(TAVQZ_SOURCE_DIR "/schema", together,
                          std::filesystem::copy_options::recursive);
    std::filesystem::remove(together + "/tavqz-raid-registration.mof");
    std::filesystem::copy(TAVQZ_SOURCE_DIR "/tests/fru/schema/raid.mof", together + "/xraid.mof");
    return Schema::load(together);
}

class FruServerTest : public testing::Test {
protected:
    FruServerTest() { machine.folder().write("raid/raid.dat", _raid); }

    void create(const std::string& number) {
        CIMInstance unit = fruOf({{"IdentifyingNumber", "7"}, {"Vendor", "Acme"}, {"Name", "Fan"}});
        unit.addProperty(CIMProperty(CIMName("FRUNumber"), CIMValue(make_String(number))));
        unit.setPath(_class);
        server.createInstance(unit);
    }

    std::vector<std::string> numbers() {
        return textsOf(server.enumerateInstances(_class), "FRUNumber");
    }

    const TestMachine machine;
    const ScopedEnvironment raid{"TAVQZ_TEST_RAID", machine.folder().file("raid")};
    InProcessServer server{_schema(machine.folder()), [](const std::string& location) {
                               return location == "RaidTestProvider" ? RAID_TEST_MODULE
                                                                     : SHIPPED_MODULE;
                           }};
};

}  // namespace

TEST_F(FruServerTest, GathersWhatOtherProvidersServe) {
    create("1");
    create("46C8");
    const std::vector<CIMInstance> units = server.enumerateInstances(_class);
    EXPECT_THAT(textsOf(units, "FRUNumber"), ElementsAre("1", "46C8", "39M4"));
    EXPECT_THAT(textsOf(units, "ElementName"), ElementsAre("GETFRU", "GETFRU", "RAID"));
    EXPECT_EQ("-", textOf(units[2], "DeviceID"));
}

TEST_F(FruServerTest, GathersControllersWhereTheDisksFail) {
    machine.folder().write("raid/fail-TAVIRA_PhysicalDiskDrive", "");
    EXPECT_THAT(numbers(), ElementsAre("46C8"));
    machine.folder().write("raid/fail-TAVIRA_RAIDController", "");
    EXPECT_THAT(numbers(), IsEmpty());
    std::filesystem::remove(machine.folder().file("raid/fail-TAVIRA_PhysicalDiskDrive"));
    EXPECT_THAT(numbers(), ElementsAre("39M4"));
}

TEST_F(FruServerTest, GathersWhatTheMachineHasWhereNoOtherVendorServes) {
    RaidBuilder own(machine.folder().path());
    own.scsiDisk({"0:0:0:0", "sda", "EXAMPLE", "EX600", "S1"});
    own.array({"md0", "raid1"}).member("md0", "sda", "in_sync", "0");
    own.board({"0000:03:00.0", "0x010400", "1000:005d", "1028:1f43", ""});
    own.host("0000:03:00.0", 0, "megaraid_sas");
    InProcessServer shipped{Schema::load(TAVQZ_SOURCE_DIR "/schema"), [](const std::string& name) {
                                return TAVQZ_BINARY_DIR "/lib/lib" + name + ".so";
                            }};
    const std::vector<CIMInstance> units = shipped.enumerateInstances(_class);
    EXPECT_THAT(textsOf(units, "FRUNumber"), ElementsAre("S1", "1028:1f43"));
    EXPECT_THAT(textsOf(units, "ElementName"), ElementsAre("RAID", "RAID"));
    EXPECT_EQ("EXAMPLE", textOf(units[0], "Vendor"));
    EXPECT_THAT(numbers(), ElementsAre("39M4", "46C8"));
}

TEST_F(FruServerTest, GathersTheRestWithoutAnyProviderOfRaid) {
    InProcessServer lonely{Schema::load(TAVQZ_SOURCE_DIR "/schema"), [](const std::string& name) {
                               return name == "AssetIDProvider" ? SHIPPED_MODULE : "/missing.so";
                           }};
    create("1");
    EXPECT_THAT(textsOf(lonely.enumerateInstances(_class), "FRUNumber"), ElementsAre("1"));
}

TEST_F(FruServerTest, TellsThePathOfWhatItCreated) {
    CIMInstance unit = fruOf(
        {{"FRUNumber", "1"}, {"IdentifyingNumber", "7"}, {"Vendor", "Acme"}, {"Name", "Fan"}});
    unit.setPath(_class);
    EXPECT_EQ("Fan", textOf(server.getInstance(server.createInstance(unit)), "Name"));
}

TEST_F(FruServerTest, ServesSixteenClientsAtOnce) {
    constexpr int clients = 16;
    constexpr int rounds = 5;
    std::atomic<int> whole{0};
    std::vector<std::thread> threads;
    threads.reserve(clients);
    for (int client = 0; client < clients; ++client) {
        threads.emplace_back([this, client, &whole] {
            for (int round = 0; round < rounds; ++round) {
                const std::string own = std::to_string(client) + "-" + std::to_string(round);
                create(own);
                const std::vector<std::string> seen = numbers();
                const auto has = [&seen](const std::string& number) {
                    return std::count(seen.begin(), seen.end(), number) == 1;
                };
                whole += has(own) && has("39M4") && has("46C8") ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(clients * rounds, whole);
    EXPECT_EQ(std::size_t{clients * rounds + 2}, numbers().size());
}
