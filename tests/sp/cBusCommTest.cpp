// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cBusComm.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <type_traits>

#include "BuildPaths.h"
#include "LibraryWorld.h"

namespace {

using testing::ElementsAre;

const char* const operation = "cBusComm::openInterfaceLink";
const char* const device = "libdevice.so";

static_assert(std::is_polymorphic_v<cBusComm> && std::is_abstract_v<cBusComm>);

LibraryWorld& world() {
    return LibraryWorld::current();
}

class Bus final : public cBusComm {
public:
    int getServiceProcessorCount() override { return 0; }
};

std::string text(const std::string& message) {
    return std::string(operation) + "|" + message;
}

class InterfaceLink : public testing::Test {
protected:
    InVariant _variant{"full"};
    Bus _bus;
    interfaceStruct _rows[3] = {{"openLibrary", nullptr}, {"", nullptr}, {"closeLibrary", nullptr}};
};

TEST_F(InterfaceLink, IsClosedAtFirst) {
    EXPECT_FALSE(_bus.isConnected());
    _bus.closeInterfaceLink();
    EXPECT_FALSE(_bus.isConnected());
}

TEST_F(InterfaceLink, BindsALibraryOfTheSiblingFolder) {
    EXPECT_EQ(_bus.openInterfaceLink(Name(device), _rows, 3, true), 1);
    EXPECT_TRUE(_bus.isConnected());
    EXPECT_EQ(_variant.printed(),
              "\nabout to open the library libdevice.so"
              "about to load library [../lib/libdevice.so]\n"
              "\nthe library libdevice.so was opened");
    EXPECT_THAT(world().log, ElementsAre(text("using relative address for library [libdevice.so]"),
                                         "openLibraryLink|the library libdevice.so was opened",
                                         boundText(operation, device, _rows[0]),
                                         boundText(operation, device, _rows[2])));
    EXPECT_THAT(boundRows(_rows), ElementsAre(true, false, true)) << "a row without name is left";
    _bus.closeInterfaceLink();
    EXPECT_FALSE(_bus.isConnected());
    EXPECT_FALSE(isLoaded(device));
}

TEST_F(InterfaceLink, BindsALibraryOfThatName) {
    const std::string path = TAVQZ_BINARY_DIR "/tests/sp/full/lib/libdevice.so";
    EXPECT_EQ(_bus.openInterfaceLink(Name(path), _rows, 3, false), 1);
    EXPECT_TRUE(_bus.isConnected());
    EXPECT_EQ(_variant.printed(),
              "\nabout to open the library " + path + "\nthe library " + path + " was opened");
    EXPECT_EQ(world().log.front(), text("using non relative address for library [" + path + "]"));
    _bus.closeInterfaceLink();
    EXPECT_FALSE(isLoaded(device));
}

TEST_F(InterfaceLink, FailsWithoutTheLibrary) {
    EXPECT_EQ(_bus.openInterfaceLink(Name("none.so"), _rows, 3, true), 0);
    EXPECT_FALSE(_bus.isConnected());
    EXPECT_EQ(_variant.printed(),
              "\nabout to open the library none.so"
              "about to load library [../lib/none.so]\n"
              "\nthe library none.so could not be opened");
    EXPECT_THAT(world().log, ElementsAre(text("using relative address for library [none.so]")));
    EXPECT_THAT(boundRows(_rows), ElementsAre(false, false, false));
}

TEST_F(InterfaceLink, FindsNothingOfTheSiblingFolderByNameAlone) {
    EXPECT_EQ(_bus.openInterfaceLink(Name(device), _rows, 3, false), 0);
    EXPECT_EQ(_variant.printed(),
              "\nabout to open the library libdevice.so"
              "\nthe library libdevice.so could not be opened");
}

TEST_F(InterfaceLink, ClosesTheLibraryAgainWithoutAnEntryPoint) {
    interfaceStruct rows[] = {
        {"openLibrary", nullptr}, {"noSuchEntryPoint", nullptr}, {"closeLibrary", nullptr}};
    EXPECT_EQ(_bus.openInterfaceLink(Name(device), rows, 3, true), 0);
    EXPECT_FALSE(_bus.isConnected());
    EXPECT_FALSE(isLoaded(device));
    EXPECT_THAT(boundRows(rows), ElementsAre(true, false, false));
    EXPECT_EQ(world().log.back(),
              text("Function [noSuchEntryPoint] for library [libdevice.so] load failed"));
}

TEST_F(InterfaceLink, IsNoLongerConnectedWhenItIsOpenedAgainInVain) {
    ASSERT_EQ(_bus.openInterfaceLink(Name(device), _rows, 3, true), 1);
    EXPECT_EQ(_bus.openInterfaceLink(Name("none.so"), _rows, 3, true), 0);
    EXPECT_FALSE(_bus.isConnected());
    EXPECT_EQ(closeEveryHandle(device), 1) << "the first handle was forgotten";
}

TEST_F(InterfaceLink, ClosesItsHandleOnce) {
    void* const another = openLinuxLib(Name(device));
    ASSERT_EQ(_bus.openInterfaceLink(Name(device), _rows, 3, true), 1);
    _bus.closeInterfaceLink();
    _bus.closeInterfaceLink();
    EXPECT_TRUE(isLoaded(device)) << "the other handle was closed, too";
    EXPECT_EQ(dlclose(another), 0);
}

TEST_F(InterfaceLink, ConnectsToALibraryOfWhichNothingIsWanted) {
    EXPECT_EQ(_bus.openInterfaceLink(Name(device), _rows, 0, true), 1);
    EXPECT_TRUE(_bus.isConnected());
    EXPECT_THAT(boundRows(_rows), ElementsAre(false, false, false));
    _bus.closeInterfaceLink();
}

TEST_F(InterfaceLink, RefusesALongNameInTheSiblingFolderOnly) {
    const std::string name(121, 'n');
    EXPECT_EQ(_bus.openInterfaceLink(Name(name), _rows, 3, true), 0);
    EXPECT_EQ(_variant.printed(), "\nabout to open the library " + name + "\nthe library " + name +
                                      " could not be opened");

    const std::string path =
        TAVQZ_BINARY_DIR "/tests/sp/full/" + std::string(121, '/') + "lib/libdevice.so";
    EXPECT_EQ(_bus.openInterfaceLink(Name(path), _rows, 3, false), 1);
    _bus.closeInterfaceLink();
}

TEST_F(InterfaceLink, ReadsNoFurtherThanTheNamesField) {
    interfaceStruct rows[2] = {};
    std::fill(std::begin(rows[0].name), std::end(rows[0].name), 'n');
    EXPECT_EQ(_bus.openInterfaceLink(Name(device), rows, 1, true), 0);
    EXPECT_EQ(world().log.back(), text("Function [" + std::string(128, 'n') +
                                       "] for library [libdevice.so] load failed"));
}

}  // namespace
