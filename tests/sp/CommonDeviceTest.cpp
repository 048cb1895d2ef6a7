// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include "LibraryWorld.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"
#include "tavqz/cSPCommonInt.h"

namespace {

using testing::ElementsAre;

LibraryWorld& world() {
    return LibraryWorld::current();
}

class CommonDevice : public testing::Test {
protected:
    void SetUp() override {
        world().log.clear();
        world().calls.clear();
    }

    InVariant _variant{"full"};
    cSPCommonInt _common;
    cBusComm* _bus = nullptr;
    cDeviceLib* _device = nullptr;
};

std::string comm(const std::string& text) {
    return "cSPCommonInt::getCommonCommDevice|" + text;
}
std::string lib(const std::string& text) {
    return "cSPCommonInt::getCommonLibDevice|" + text;
}

const char* const commBound =
    "hCommonDevice != NULL && fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE].funcPtr != NULL";
const char* const libBound =
    "hCommonDevice != NULL && fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].funcPtr != NULL";

TEST_F(CommonDevice, AsksForTheBusOnce) {
    EXPECT_EQ(_common.getCommonCommDevice(&_bus), 0);
    ASSERT_NE(_bus, nullptr);
    cBusComm* again = nullptr;
    EXPECT_EQ(_common.getCommonCommDevice(&again), 0);
    EXPECT_EQ(again, _bus);
    EXPECT_THAT(world().calls, ElementsAre("getSharedCommDevice"));
    EXPECT_THAT(world().log,
                ElementsAre(comm("in the routine"), comm(commBound),
                            comm("pBusDevice not already stored so retrieving it deviceptr [" +
                                 std::to_string(reinterpret_cast<std::intptr_t>(_bus)) +
                                 "] and retVal [0]"),
                            comm("in the routine"), comm(commBound),
                            comm("pBusDevice already stored so returning it")));
}

TEST_F(CommonDevice, KeepsTheBusOfAFailedCallAndThenReportsSuccess) {
    world().statuses["getSharedCommDevice"] = -7;
    EXPECT_EQ(_common.getCommonCommDevice(&_bus), -7);
    EXPECT_EQ(world().log.back(),
              comm("pBusDevice not already stored so retrieving it deviceptr [" +
                   std::to_string(reinterpret_cast<std::intptr_t>(_bus)) + "] and retVal [-7]"));
    cBusComm* again = nullptr;
    EXPECT_EQ(_common.getCommonCommDevice(&again), 0);
    EXPECT_EQ(again, _bus);
    EXPECT_THAT(world().calls, ElementsAre("getSharedCommDevice"));
}

TEST_F(CommonDevice, AsksForTheDeviceOnceWhateverTheBus) {
    _common.getCommonCommDevice(&_bus);
    world().log.clear();
    world().calls.clear();

    EXPECT_EQ(_common.getCommonLibDevice(_bus, &_device), 0);
    ASSERT_NE(_device, nullptr);
    EXPECT_EQ(world().bus, _bus);
    cDeviceLib* again = nullptr;
    EXPECT_EQ(_common.getCommonLibDevice(nullptr, &again), 0);
    EXPECT_EQ(again, _device);
    EXPECT_THAT(world().calls, ElementsAre("getSharedLibDevice"));
    EXPECT_THAT(world().log, ElementsAre(lib("in the routine"), lib(libBound),
                                         lib("pLibDevice not already stored so retrieving it"),
                                         lib("in the routine"), lib(libBound),
                                         lib("pLibDevice already stored so returning it")));
}

TEST_F(CommonDevice, KeepsTheDeviceOfAFailedCallAndThenReportsSuccess) {
    world().statuses["getSharedLibDevice"] = 5;
    EXPECT_EQ(_common.getCommonLibDevice(_bus, &_device), 5);
    cDeviceLib* again = nullptr;
    EXPECT_EQ(_common.getCommonLibDevice(_bus, &again), 0);
    EXPECT_EQ(again, _device);
    EXPECT_THAT(world().calls, ElementsAre("getSharedLibDevice"));
}

TEST_F(CommonDevice, NamesTheWrongTableWhenThereIsNoBus) {
    fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE].funcPtr = nullptr;
    EXPECT_EQ(_common.getCommonCommDevice(&_bus), 2);
    EXPECT_THAT(world().log,
                ElementsAre(comm("in the routine"),
                            comm("hCommonDevice == NULL || "
                                 "fpSharedLibFuncs[GET_SHARED_COMM_DEVICE].funcPtr == NULL")));
}

TEST_F(CommonDevice, NamesTheRightTableWhenThereIsNoDevice) {
    fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].funcPtr = nullptr;
    EXPECT_EQ(_common.getCommonLibDevice(_bus, &_device), 2);
    EXPECT_THAT(world().log,
                ElementsAre(lib("in the routine"),
                            lib("hCommonDevice == NULL || "
                                "fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].funcPtr == NULL")));
}

TEST_F(CommonDevice, HandsOutObjectsThatUseTheModulesFunctions) {
    _common.getCommonCommDevice(&_bus);
    _common.getCommonLibDevice(_bus, &_device);
    EXPECT_EQ(_bus->getServiceProcessorCount(), 2);
    int type = 0;
    EXPECT_EQ(_device->getServiceProcessorType(type), 1);
}

// A row whose name is empty while the test runs.
class EmptyRow {
public:
    explicit EmptyRow(interfaceStruct& row) : _row(row) {
        std::memcpy(_name, row.name, sizeof _name);
        row.name[0] = '\0';
    }
    ~EmptyRow() { std::memcpy(_row.name, _name, sizeof _name); }
    EmptyRow(const EmptyRow&) = delete;
    EmptyRow& operator=(const EmptyRow&) = delete;

private:
    interfaceStruct& _row;
    char _name[sizeof(interfaceStruct::name)];
};

TEST(EmptyCommonRow, IsSkippedAndItsGetterRefused) {
    const InVariant variant("full");
    const EmptyRow empty(fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE]);
    cSPCommonInt common;
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, true, true, true, true));
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface"));
    cBusComm* bus = nullptr;
    cDeviceLib* device = nullptr;
    EXPECT_EQ(common.getCommonCommDevice(&bus), 2);
    EXPECT_EQ(common.getCommonLibDevice(nullptr, &device), 0);
}

TEST(EmptyCommonRow, IsNotCalledAsARelease) {
    const InVariant variant("full");
    const EmptyRow empty(fpSharedCommonFuncs[INTERFACE_COMM_RELEASE]);
    {
        cSPCommonInt common;
        cBusComm* bus = nullptr;
        EXPECT_EQ(common.getCommonCommDevice(&bus), 0);
    }
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface", "getSharedCommDevice"));
    EXPECT_FALSE(isLoaded("libtav_shrdevice.so"));
}

TEST(EmptyCommonRow, IsNotCalledAsTheInitialisation) {
    const InVariant variant("full");
    const EmptyRow empty(fpSharedCommonFuncs[INIT_SHARED_INTERFACE]);
    const cSPCommonInt common;
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(true, true, false, true, true));
    EXPECT_THAT(world().calls, testing::IsEmpty());
}

}  // namespace
