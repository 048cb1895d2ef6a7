// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "GuestProbe.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "BuildPaths.h"
#include "ComputerSystemDetails.h"
#include "SmBiosBuilder.h"
#include "TestMachine.h"

namespace QZ {
namespace {

namespace fs = std::filesystem;

// A working folder beside a "lib" folder that holds one of the libraries built for these tests, or
// the one that we ship.
class WorkingFolder {
public:
    explicit WorkingFolder(const fs::path& library) : _before(fs::current_path()) {
        fs::create_directories(_folder.file("run"));
        fs::create_directories(_folder.file("lib"));
        if (!library.empty()) {
            fs::copy(library, _folder.file("lib/libtavxenprobe.so"));
        }
        fs::current_path(_folder.file("run"));
    }
    ~WorkingFolder() { fs::current_path(_before); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    fs::path _before;
    TemporaryFolder _folder;
};

fs::path _built(const std::string& variant) {
    return fs::path(TAVQZ_BINARY_DIR) / "tests/asset" / ("probe_" + variant + ".so");
}

const char* const _uuid = "6e1d0a52-5d4f-4b62-9d1c-0f5b7f1f9a11";

TEST(GuestProbe, AsksAGuestForItsUuid) {
    const WorkingFolder folder(_built("guest"));
    EXPECT_EQ(ReadGuestUuid(), _uuid);
}

TEST(GuestProbe, FindsNothingWithoutALibrary) {
    const WorkingFolder folder("");
    EXPECT_EQ(ReadGuestUuid(), "");
}

TEST(GuestProbe, DoesNotAskWhoIsNoGuest) {
    const WorkingFolder folder(_built("host"));
    EXPECT_EQ(ReadGuestUuid(), "");
}

TEST(GuestProbe, TakesAFailureForNone) {
    const WorkingFolder folder(_built("failing"));
    EXPECT_EQ(ReadGuestUuid(), "");
}

TEST(GuestProbe, TakesALibraryThatLacksASymbolForNone) {
    for (const char* variant : {"without_running", "without_uuid"}) {
        const WorkingFolder folder(_built(variant));
        EXPECT_EQ(ReadGuestUuid(), "") << variant;
    }
}

TEST(GuestProbe, IsAskedOnlyWhereTheFirmwareHasNoUuid) {
    const TestMachine machine;
    const WorkingFolder folder(_built("guest"));
    EXPECT_EQ(ComputerSystemDetails().getSystemUuid(), _uuid);

    SmBiosBuilder builder(SmBiosBuilder::EntryPoint::Version2, 2, 4);
    builder.add(1, 27).bytes(8, "0123456789abcdef");
    builder.addEnd().writeBelow(machine.folder().path());
    EXPECT_EQ(ComputerSystemDetails().getSystemUuid(), "30313233-3435-3637-3839-616263646566");
}

TEST(GuestProbe, WorksWithTheLibraryThatWeShip) {
    const TestMachine machine;
    machine.folder().write("sys/hypervisor/type", "xen\n");
    machine.folder().write("sys/hypervisor/uuid", std::string(_uuid) + "\n");
    const WorkingFolder folder(fs::path(TAVQZ_BINARY_DIR) / "lib/libtavxenprobe.so");
    EXPECT_EQ(ReadGuestUuid(), "6E1D0A52-5D4F-4B62-9D1C-0F5B7F1F9A11");
}

}  // namespace
}  // namespace QZ
