// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RaidProvider.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CimText.h"
#include "RaidParts.h"
#include "SimpleInstanceResponseHandler.h"
#include "TestMachine.h"

using namespace QZ;
using namespace Pegasus;
using testing::ElementsAre;

namespace {

class PathCollector : public ObjectPathResponseHandler {
public:
    void processing() override {}
    void complete() override { isComplete = true; }
    void deliver(const CIMObjectPath& path) override {
        paths.push_back(make_string(path.toString()));
    }
    void deliver(const Array<CIMObjectPath>&) override {}

    std::vector<std::string> paths;
    bool isComplete = false;
};

class RaidProviderTest : public testing::Test {
protected:
    RaidProviderTest() {
        raid.scsiDisk({"0:0:0:0", "sda", "EXAMPLE", "caf\xE9\x1B", "S1"});
        raid.scsiDisk({"0:0:1:0", "sdb", "", "EX600", "S2"});
        raid.array({"md0", "raid1"}).member("md0", "sda", "in_sync", "0");
        raid.member("md0", "sdb", "in_sync", "1");
    }

    Array<CIMInstance> enumerate(const char* path) {
        SimpleInstanceResponseHandler handler;
        provider.enumerateInstances(context, CIMObjectPath(path), false, false, CIMPropertyList(),
                                    handler);
        return handler.getInstances();
    }

    Array<CIMInstance> get(const char* path) {
        SimpleInstanceResponseHandler handler;
        provider.getInstance(context, CIMObjectPath(path), false, false, CIMPropertyList(),
                             handler);
        return handler.getInstances();
    }

    const TestMachine machine;
    RaidBuilder raid{machine.folder().path()};
    RaidProvider provider;
    const OperationContext context;
};

// The status that the operation is refused with.
template <class Operation>
CIMStatusCode _statusOf(Operation operation) {
    try {
        operation();
    } catch (const CIMException& refusal) {
        return refusal.getCode();
    }
    return CIM_ERR_SUCCESS;
}

}  // namespace

TEST_F(RaidProviderTest, TellsWhatIsKnownOfADisk) {
    const Array<CIMInstance> disks = enumerate("root/tavqz:tavira_physicaldiskdrive");
    ASSERT_EQ(2U, disks.size());
    std::vector<std::string> properties;
    for (Uint32 i = 0; i < disks[0].getPropertyCount(); ++i) {
        const CIMConstProperty property = disks[0].getProperty(i);
        properties.push_back(make_string(property.getName().getString()) + "=" +
                             make_string(property.getValue().toString()));
    }
    EXPECT_THAT(properties, ElementsAre("DeviceID=0:0:0:0", "FRU=S1",
                                        "Model=caf\xC3\xA9\xEF\xBF\xBD", "Manufacturer=EXAMPLE",
                                        "Name=Disk sda", "Description=member 0 of md0 (raid1)"));
}

TEST_F(RaidProviderTest, HasEveryKeyOfTheUnitThatIsMadeOfADisk) {
    raid.blockAttribute("vdx", "type", "").array({"md1", "raid1"});
    raid.member("md1", "vdx", "in_sync", "0");
    const Array<CIMInstance> disks = enumerate("root/tavqz:TAVIRA_PhysicalDiskDrive");
    ASSERT_EQ(3U, disks.size());
    for (const char* const name : {"Model", "Manufacturer"}) {
        const Uint32 at = disks[2].findProperty(CIMName(name));
        ASSERT_NE(PEG_NOT_FOUND, at) << name;
        EXPECT_EQ(String(), disks[2].getProperty(at).getValue().toString()) << name;
    }
    // Nobody knows this one by anything.
    EXPECT_EQ(PEG_NOT_FOUND, disks[2].findProperty(CIMName("FRU")));
}

TEST_F(RaidProviderTest, GivesEachAPathOfItsDevice) {
    PathCollector collected;
    provider.enumerateInstanceNames(context, CIMObjectPath("root/tavqz:TAVIRA_PhysicalDiskDrive"),
                                    collected);
    EXPECT_THAT(collected.paths,
                ElementsAre("root/tavqz:TAVIRA_PhysicalDiskDrive.DeviceID=\"0:0:0:0\"",
                            "root/tavqz:TAVIRA_PhysicalDiskDrive.DeviceID=\"0:0:1:0\""));
    EXPECT_TRUE(collected.isComplete);
}

TEST_F(RaidProviderTest, FindsOneByItsPath) {
    const Array<CIMInstance> found =
        get("//host/root/tavqz:TAVIRA_PhysicalDiskDrive.DeviceID=\"0:0:1:0\"");
    ASSERT_EQ(1U, found.size());
    EXPECT_EQ(
        "0:0:1:0",
        make_string(found[0].getProperty(found[0].findProperty("DeviceID")).getValue().toString()));
}

TEST_F(RaidProviderTest, RefusesWhatIsNotThere) {
    EXPECT_EQ(CIM_ERR_NOT_FOUND,
              _statusOf([&] { get("root/tavqz:TAVIRA_RAIDController.DeviceID=\"0:0:1:0\""); }));
    EXPECT_EQ(CIM_ERR_INVALID_CLASS, _statusOf([&] { enumerate("root/tavqz:TAVIRA_FRU"); }));
}

TEST_F(RaidProviderTest, ChangesNothing) {
    const CIMObjectPath path("root/tavqz:TAVIRA_PhysicalDiskDrive.DeviceID=\"0:0:1:0\"");
    const CIMInstance disk("TAVIRA_PhysicalDiskDrive");
    PathCollector handler;
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED,
              _statusOf([&] { provider.createInstance(context, path, disk, handler); }));
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED, _statusOf([&] {
                  provider.modifyInstance(context, path, disk, false, CIMPropertyList(), handler);
              }));
    EXPECT_EQ(CIM_ERR_NOT_SUPPORTED,
              _statusOf([&] { provider.deleteInstance(context, path, handler); }));
}
