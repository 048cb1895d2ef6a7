// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "TestMachine.h"

namespace {

using testing::Eq;
using testing::ExitedWithCode;
using testing::StartsWith;

// What the program of another server does: its library is loaded when a module of ours comes. Ends
// with 0 where the module makes no provider. The name is none of ours either: nothing of it may be
// looked at. The entry is called by no type of ours, which a sanitizer would find wrong.
#ifdef __clang__
[[clang::no_sanitize("function")]]
#endif
[[noreturn]] void
_serve(const std::string& library, const std::string& module) {
    using Create = void* (*)(const void*);
    void* const server = dlopen(library.c_str(), RTLD_NOW | RTLD_GLOBAL);
    void* const handle = dlopen(module.c_str(), RTLD_NOW | RTLD_GLOBAL);
    if (server == nullptr || handle == nullptr) {
        (void)std::fprintf(stderr, "%s\n", dlerror());
        std::exit(2);
    }
    const auto create = reinterpret_cast<Create>(dlsym(handle, "PegasusCreateProvider"));
    std::exit(create(nullptr) == nullptr ? 0 : 1);
}

std::string _refusal(const std::string& module, const std::string& library) {
    return module + ": built for tavqz, not for OpenPegasus, whose " + library +
           " is loaded; build it with PEGASUS_ROOT for that server\n";
}

class ForeignServer : public testing::Test {
protected:
    // A process of its own for each: what was loaded once stays.
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

private:
    TestMachine _machine;
};

TEST_F(ForeignServer, IsRefusedByTheAssetModuleInOneLine) {
    EXPECT_EXIT(_serve(FOREIGN_LIBRARY, ASSET_MODULE), ExitedWithCode(0),
                Eq(_refusal("libAssetIDProvider.so", FOREIGN_LIBRARY)));
}

TEST_F(ForeignServer, IsRefusedByTheRaidModuleInOneLine) {
    EXPECT_EXIT(_serve(FOREIGN_LIBRARY, RAID_MODULE), ExitedWithCode(0),
                Eq(_refusal("libTavqzRaidProvider.so", FOREIGN_LIBRARY)));
}

// With the library that the server really has.
TEST_F(ForeignServer, IsRefusedWhereItIsOpenPegasus) {
    const char* const sdk = std::getenv("PEGASUS_ROOT");
    if (sdk == nullptr) {
        GTEST_SKIP() << "PEGASUS_ROOT names no SDK of OpenPegasus";
    }
    const std::string library = std::string(sdk) + "/lib/libpegcommon.so";
    EXPECT_EXIT(_serve(library, ASSET_MODULE), ExitedWithCode(0),
                StartsWith("libAssetIDProvider.so: built for tavqz, not for OpenPegasus, whose "));
    EXPECT_EXIT(
        _serve(library, RAID_MODULE), ExitedWithCode(0),
        StartsWith("libTavqzRaidProvider.so: built for tavqz, not for OpenPegasus, whose "));
}

}  // namespace
