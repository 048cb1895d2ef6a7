// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "LibraryWorld.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"
#include "tavqz/cSPCommonInt.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char* const shared = "libtav_shrdevice.so";
const char* const device = "libdevice.so";
const char* const commOperation = "cSPCommonInt::initializeCommLink";
const char* const libOperation = "cSPCommonInt::initializeLibLink";

LibraryWorld& world() {
    return LibraryWorld::current();
}

// An object that was made where there is no library, so that nothing but its links is loaded.
class Links {
public:
    explicit Links(const std::string& variant) {
        _variant = std::make_unique<InVariant>("absent");
        _common = std::make_unique<cSPCommonInt>();
        _variant.reset();
        _variant = std::make_unique<InVariant>(variant);
    }

    cSPCommonInt* operator->() { return _common.get(); }
    std::string printed() { return _variant->printed(); }

private:
    std::unique_ptr<InVariant> _variant;
    std::unique_ptr<cSPCommonInt> _common;
};

TEST(CommLink, BindsItsTwoRowsAndSaysSo) {
    Links links("full");
    EXPECT_EQ(links->initializeCommLink(), 1);
    EXPECT_EQ(links.printed(),
              "\nabout to open the library libtav_shrdevice.so"
              "about to load library [../lib/libtav_shrdevice.so]\n");
    EXPECT_THAT(world().log,
                ElementsAre("openLibraryLink|the library libtav_shrdevice.so was opened",
                            boundText(commOperation, shared, fpSharedCommFuncs[0]),
                            boundText(commOperation, shared, fpSharedCommFuncs[1])));
    EXPECT_THAT(world().calls, IsEmpty());
    links->closeCommLink();
}

TEST(CommLink, FailsWithoutItsLibrary) {
    Links links("absent");
    EXPECT_EQ(links->initializeCommLink(), 0);
    EXPECT_THAT(world().log, ElementsAre("cSPCommonInt::initializeCommLink|"
                                         "the library libtav_shrdevice.so was not opened"));
    EXPECT_EQ(links->getCommonDevice(), 0);
}

TEST(CommLink, FailsWithoutAnEntryPointAndLeavesTheRestBound) {
    Links links("without_interface_close");
    EXPECT_EQ(links->initializeCommLink(), 0);
    EXPECT_EQ(world().log.back(),
              "cSPCommonInt::initializeCommLink|"
              "Function [interface_close] for library [libtav_shrdevice.so] load failed");
    EXPECT_THAT(boundRows(fpSharedCommFuncs), ElementsAre(true, false));
    world().statuses["getSharedCommDevice"] = 4;
    EXPECT_EQ(links->getCommonDevice(), 4) << "the handle stays open, too";
    links->closeCommLink();
    EXPECT_THAT(boundRows(fpSharedCommFuncs), ElementsAre(true, false))
        << "closed, without an entry point to close by";
    EXPECT_EQ(closeEveryHandle(shared), 1);
}

TEST(CommLink, PassesOnWhatTheLibrarySays) {
    Links links("full");
    EXPECT_EQ(links->getCommonDevice(), 0) << "before the link is open";
    ASSERT_EQ(links->initializeCommLink(), 1);
    world().statuses["getSharedCommDevice"] = 9;
    EXPECT_EQ(links->getCommonDevice(), 9);
    EXPECT_EQ(links->getCommonDevice(), 9);
    EXPECT_THAT(world().calls, ElementsAre("getSharedCommDevice", "getSharedCommDevice"));
    links->closeCommLink();
    EXPECT_EQ(links->getCommonDevice(), 0);
}

TEST(CommLink, ClosesOnce) {
    Links links("full");
    links->initializeCommLink();
    links->closeCommLink();
    EXPECT_FALSE(isLoaded(shared));
    EXPECT_THAT(boundRows(fpSharedCommFuncs), ElementsAre(false, false));
    links->closeCommLink();
    EXPECT_THAT(world().calls, ElementsAre("interface_close"));
}

TEST(CommLink, ForgetsALibraryThatRefusesToClose) {
    Links links("full");
    links->initializeCommLink();
    world().statuses["interface_close"] = 1;
    links->closeCommLink();
    EXPECT_THAT(boundRows(fpSharedCommFuncs), ElementsAre(false, false));
    links->closeCommLink();
    EXPECT_THAT(world().calls, ElementsAre("interface_close"));
    EXPECT_EQ(closeEveryHandle(shared), 1);
}

TEST(CommLink, OpenedTwiceForgetsTheFirstHandle) {
    Links links("full");
    EXPECT_EQ(links->initializeCommLink(), 1);
    EXPECT_EQ(links->initializeCommLink(), 1);
    links->closeCommLink();
    EXPECT_EQ(closeEveryHandle(shared), 1);
}

TEST(CommLink, HasItsOwnHandleOnTheLibrary) {
    InVariant variant("full");
    {
        cSPCommonInt common;
        common.initializeCommLink();
    }
    EXPECT_THAT(world().calls, ElementsAre("initSharedInterface")) << "it was closed for the owner";
    EXPECT_EQ(closeEveryHandle(shared), 1);
}

TEST(LibLink, BindsItsTwoRowsAndSaysSo) {
    Links links("full");
    EXPECT_EQ(links->initializeLibLink(Name(device)), 1);
    EXPECT_EQ(links.printed(),
              "\nabout to open the library libdevice.so"
              "about to load library [../lib/libdevice.so]\n");
    EXPECT_THAT(world().log, ElementsAre("openLibraryLink|the library libdevice.so was opened",
                                         boundText(libOperation, device, fpSharedLibFuncs[0]),
                                         boundText(libOperation, device, fpSharedLibFuncs[1]),
                                         "cSPCommonInt::initializeLibLink|about to return"));
    links->closeLibLink();
}

TEST(LibLink, SaysThatItReturnsWhenItFails) {
    Links links("without_openLibrary");
    EXPECT_EQ(links->initializeLibLink(Name("none.so")), 0);
    EXPECT_THAT(world().log,
                ElementsAre("cSPCommonInt::initializeLibLink|the library none.so was not opened",
                            "cSPCommonInt::initializeLibLink|about to return"));
    world().log.clear();
    EXPECT_EQ(links->initializeLibLink(Name(device)), 0);
    EXPECT_THAT(world().log,
                ElementsAre("openLibraryLink|the library libdevice.so was opened",
                            "cSPCommonInt::initializeLibLink|"
                            "Function [openLibrary] for library [libdevice.so] load failed",
                            "cSPCommonInt::initializeLibLink|about to return"));
    EXPECT_EQ(closeEveryHandle(device), 1);
}

TEST(LibLink, FailsWithoutAName) {
    Links links("full");
    EXPECT_EQ(links->initializeLibLink(nullptr), 0);
    EXPECT_EQ(world().log.front(),
              "cSPCommonInt::initializeLibLink|the library (null) was not opened");
}

TEST(LibLink, PassesTheResultFirstAndTheBusSecond) {
    Links links("full");
    ASSERT_EQ(links->initializeLibLink(Name(device)), 1);
    int place = 0;
    auto* bus = reinterpret_cast<cBusComm*>(&place);
    cDeviceLib* first = nullptr;
    EXPECT_EQ(links->getLibDevice(bus, &first), 0);
    EXPECT_EQ(world().bus, bus);
    ASSERT_NE(first, nullptr);
    int type = 0;
    EXPECT_EQ(first->getServiceProcessorType(type), 1);
    links->closeLibLink();
}

TEST(LibLink, AsksTheLibraryEachTime) {
    Links links("full");
    ASSERT_EQ(links->initializeLibLink(Name(device)), 1);
    cDeviceLib* out = nullptr;
    world().statuses["openLibrary"] = 11;
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 11);
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 11);
    EXPECT_THAT(world().calls, ElementsAre("openLibrary", "openLibrary"));
    links->closeLibLink();
}

TEST(LibLink, AnswersTwoWhereThereIsNoDevice) {
    Links links("full");
    cDeviceLib* out = nullptr;
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 2) << "before the link is open";
    links->initializeLibLink(Name(device));
    void* const openLibrary = fpSharedLibFuncs[0].funcPtr;
    fpSharedLibFuncs[0].funcPtr = nullptr;
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 2) << "without its entry point";
    fpSharedLibFuncs[0].funcPtr = openLibrary;
    links->closeLibLink();
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 2) << "after the link was closed";
    EXPECT_EQ(out, nullptr);
}

TEST(LibLink, ClosesOnce) {
    Links links("full");
    links->initializeLibLink(Name(device));
    links->closeLibLink();
    EXPECT_FALSE(isLoaded(device));
    EXPECT_THAT(boundRows(fpSharedLibFuncs), ElementsAre(false, false));
    links->closeLibLink();
    EXPECT_THAT(world().calls, ElementsAre("closeLibrary"));
}

TEST(LibLink, ForgetsALibraryThatRefusesToClose) {
    Links links("full");
    links->initializeLibLink(Name(device));
    world().statuses["closeLibrary"] = -1;
    links->closeLibLink();
    EXPECT_THAT(boundRows(fpSharedLibFuncs), ElementsAre(false, false));
    links->closeLibLink();
    EXPECT_THAT(world().calls, ElementsAre("closeLibrary"));
    EXPECT_EQ(closeEveryHandle(device), 1);
}

TEST(LibLink, OnceClosedIsNotClosedThroughAnothersBinding) {
    Links links("full");
    links->initializeLibLink(Name(device));
    links->closeLibLink();
    cSPCommonInt other;
    other.initializeLibLink(Name(device));
    world().calls.clear();
    links->closeLibLink();
    EXPECT_THAT(world().calls, IsEmpty());
    EXPECT_THAT(boundRows(fpSharedLibFuncs), ElementsAre(true, true));
    other.closeLibLink();
}

TEST(LibLink, StaysOpenWhereItHasNoEntryPointToCloseBy) {
    Links links("without_closeLibrary");
    EXPECT_EQ(links->initializeLibLink(Name(device)), 0);
    links->closeLibLink();
    EXPECT_THAT(boundRows(fpSharedLibFuncs), ElementsAre(true, false));
    cDeviceLib* out = nullptr;
    EXPECT_EQ(links->getLibDevice(nullptr, &out), 0);
    EXPECT_EQ(closeEveryHandle(device), 1);
}

}  // namespace
