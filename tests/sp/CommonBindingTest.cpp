// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "LibraryWorld.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cSPCommonInt.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const library = "libtav_shrdevice.so";
const char* const operation = "cSPCommonInt::cSPCommonInt";
const char* const opened = "openLibraryLink|the library libtav_shrdevice.so was opened";

static_assert(sizeof(cSPCommonInt) == 5 * sizeof(void*));

LibraryWorld& world() {
    return LibraryWorld::current();
}

TEST(CommonBinding, BindsEveryRowInOrderAndInitialisesTheLibrary) {
    InVariant variant("full");
    const cSPCommonInt common;
    const interfaceStruct* rows = fpSharedCommonFuncs;
    EXPECT_THAT(world().log,
                ElementsAre(opened, boundText(operation, library, rows[GET_SHARED_COMM_DEVICE]),
                            boundText(operation, library, rows[GET_SHARED_LIB_DEVICE]),
                            boundText(operation, library, rows[INIT_SHARED_INTERFACE]),
                            boundText(operation, library, rows[INTERFACE_COMM_RELEASE]),
                            boundText(operation, library, rows[INTERFACE_LIB_RELEASE])));
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(true, true, true, true, true));
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface"));
    EXPECT_EQ(variant.printed(), "about to load library [../lib/libtav_shrdevice.so]\n");
}

TEST(CommonBinding, KnowsItsEntryPointsByName) {
    EXPECT_STREQ(fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE].name, "getSharedCommDevice");
    EXPECT_STREQ(fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].name, "getSharedLibDevice");
    EXPECT_STREQ(fpSharedCommonFuncs[INIT_SHARED_INTERFACE].name, "initSharedInterface");
    EXPECT_STREQ(fpSharedCommonFuncs[INTERFACE_COMM_RELEASE].name, "interface_Comm_Release");
    EXPECT_STREQ(fpSharedCommonFuncs[INTERFACE_LIB_RELEASE].name, "interface_Lib_Release");
    EXPECT_STREQ(fpSharedCommFuncs[0].name, "getSharedCommDevice");
    EXPECT_STREQ(fpSharedCommFuncs[1].name, "interface_close");
    EXPECT_STREQ(fpSharedLibFuncs[0].name, "openLibrary");
    EXPECT_STREQ(fpSharedLibFuncs[1].name, "closeLibrary");
}

TEST(CommonBinding, GoesOnWithoutALibrary) {
    InVariant variant("absent");
    {
        cSPCommonInt common;
        EXPECT_THAT(
            world().log,
            ElementsAre(
                "cSPCommonInt::cSPCommonInt|the library libtav_shrdevice.so was not opened"));
        EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, false, false, false, false));
        cBusComm* bus = nullptr;
        cDeviceLib* device = nullptr;
        EXPECT_EQ(common.getCommonCommDevice(&bus), 2);
        EXPECT_EQ(common.getCommonLibDevice(bus, &device), 2);
        EXPECT_EQ(bus, nullptr);
        EXPECT_EQ(device, nullptr);
    }
    EXPECT_THAT(world().calls, IsEmpty());
}

class MissingEntryPoint : public testing::TestWithParam<int> {};

TEST_P(MissingEntryPoint, StopsTheBindingThere) {
    const int missing = GetParam();
    const std::string name = fpSharedCommonFuncs[missing].name;
    const InVariant variant("without_" + name);
    // What a row held before is gone when its name does not resolve, and stays when the binding
    // does not come to it.
    int before = 0;
    for (interfaceStruct& row : fpSharedCommonFuncs) {
        row.funcPtr = &before;
    }
    {
        cSPCommonInt common;
        std::vector<std::string> expected{opened};
        for (int row = 0; row < missing; ++row) {
            EXPECT_NE(fpSharedCommonFuncs[row].funcPtr, &before);
            expected.push_back(boundText(operation, library, fpSharedCommonFuncs[row]));
        }
        expected.push_back(std::string(operation) + "|Function [" + name + "] for library [" +
                           library + "] load failed");
        EXPECT_EQ(world().log, expected);
        EXPECT_EQ(fpSharedCommonFuncs[missing].funcPtr, nullptr);
        for (int row = missing + 1; row < 5; ++row) {
            EXPECT_EQ(fpSharedCommonFuncs[row].funcPtr, &before);
        }

        cBusComm* bus = nullptr;
        cDeviceLib* device = nullptr;
        EXPECT_EQ(common.getCommonCommDevice(&bus), 2);
        EXPECT_EQ(common.getCommonLibDevice(bus, &device), 2);
        EXPECT_TRUE(isLoaded(library)) << "the handle stays open until the end";
    }
    EXPECT_THAT(world().calls, IsEmpty());
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, false, false, false, false));
    EXPECT_FALSE(isLoaded(library));
}

INSTANTIATE_TEST_SUITE_P(CommonBinding, MissingEntryPoint, testing::Range(0, 5));

TEST(CommonBinding, ReleasesOnlyWhatWasHandedOut) {
    InVariant variant("full");
    { const cSPCommonInt common; }
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface"));
    EXPECT_FALSE(isLoaded(library));
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, false, false, false, false));

    world().calls.clear();
    {
        cSPCommonInt common;
        cBusComm* bus = nullptr;
        common.getCommonCommDevice(&bus);
    }
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface", "getSharedCommDevice",
                                           "interface_Comm_Release"));

    world().calls.clear();
    {
        cSPCommonInt common;
        cDeviceLib* device = nullptr;
        common.getCommonLibDevice(nullptr, &device);
    }
    EXPECT_THAT(world().calls,
                ElementsAre("initSharedInterface", "getSharedLibDevice", "interface_Lib_Release"));
}

class RefusedRelease : public testing::TestWithParam<const char*> {};

TEST_P(RefusedRelease, LeavesTheLibraryLoaded) {
    InVariant variant("full");
    world().statuses[GetParam()] = 1;
    {
        cSPCommonInt common;
        cBusComm* bus = nullptr;
        cDeviceLib* device = nullptr;
        common.getCommonCommDevice(&bus);
        common.getCommonLibDevice(bus, &device);
        world().calls.clear();
    }
    EXPECT_THAT(world().calls, ElementsAre("interface_Comm_Release", "interface_Lib_Release"));
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, false, false, false, false));
    EXPECT_EQ(closeEveryHandle(library), 1);
}

INSTANTIATE_TEST_SUITE_P(CommonBinding, RefusedRelease,
                         testing::Values("interface_Comm_Release", "interface_Lib_Release"));

TEST(CommonBinding, ReleaseThatIsNotBoundCountsAsDone) {
    InVariant variant("full");
    {
        cSPCommonInt common;
        cBusComm* bus = nullptr;
        common.getCommonCommDevice(&bus);
        fpSharedCommonFuncs[INTERFACE_COMM_RELEASE].funcPtr = nullptr;
        world().calls.clear();
    }
    EXPECT_THAT(world().calls, IsEmpty());
    EXPECT_FALSE(isLoaded(library));
}

TEST(CommonBinding, OneTableServesEveryObjectAndTheFirstToGoUnbindsIt) {
    InVariant variant("full");
    cSPCommonInt first;
    cBusComm* bus = nullptr;
    {
        const cSPCommonInt second;
        EXPECT_THAT(world().calls, ElementsAre("initSharedInterface", "initSharedInterface"));
        EXPECT_EQ(first.getCommonCommDevice(&bus), 0);
    }
    EXPECT_THAT(boundRows(fpSharedCommonFuncs), ElementsAre(false, false, false, false, false));
    EXPECT_EQ(first.getCommonCommDevice(&bus), 2) << "although it had the object";
    EXPECT_TRUE(isLoaded(library)) << "the first one's handle is its own";
    {
        const cSPCommonInt third;
        EXPECT_EQ(first.getCommonCommDevice(&bus), 0) << "bound again, by the third";
    }
}

}  // namespace
