// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The built module as a server sees it: a shared library with one entry.

#include <Pegasus/Common/String.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "TestMachine.h"
#include "tavqz/AccessHelpers.h"

namespace {

std::vector<std::string>& _log() {
    static std::vector<std::string> lines;
    return lines;
}

}  // namespace

// The program exports its symbols, so that the module's calls arrive here.
void addLogItem(char* tag, char* text) {
    _log().push_back(std::string(tag) + ": " + text);
}

void initLog(char* name) {
    _log().push_back(std::string("log ") + name);
}

namespace {

const std::string _modulePath = MODULE_PATH;

class Module : public ::testing::Test {
protected:
    Module() : _handle(dlopen(_modulePath.c_str(), RTLD_NOW | RTLD_GLOBAL)) {
        EXPECT_NE(_handle, nullptr) << dlerror();
    }
    ~Module() override {
        if (_handle != nullptr) {
            dlclose(_handle);
        }
    }

    Pegasus::CIMProvider* create(const char* name) {
        using Create = Pegasus::CIMProvider* (*)(const Pegasus::String&);
        const auto entry = reinterpret_cast<Create>(dlsym(_handle, "PegasusCreateProvider"));
        if (entry == nullptr) {
            ADD_FAILURE() << "no entry";
            return nullptr;
        }
        return entry(Pegasus::String(name));
    }

    TestMachine _machine;

private:
    void* _handle;
};

TEST_F(Module, MakesTheProviderUnderItsNameInAnyLetterCase) {
    for (const char* name : {"AssetIDProvider", "assetidprovider", "ASSETIDPROVIDER"}) {
        _log().clear();
        Pegasus::CIMProvider* provider = create(name);
        ASSERT_NE(provider, nullptr) << name;
        ASSERT_GE(_log().size(), 2U);
        EXPECT_EQ(_log()[0], "log AssetIDProvider.log");
        EXPECT_EQ(_log()[1], "AssetIDProviderMain: about to load AssetIDProvider");
        EXPECT_NE(dynamic_cast<Pegasus::CIMInstanceProvider*>(provider), nullptr);
        EXPECT_NE(dynamic_cast<Pegasus::CIMIndicationProvider*>(provider), nullptr);
        provider->terminate();
        EXPECT_EQ(_log().back(), "AssetIDProvider: destructor exiting");
    }
}

TEST_F(Module, MakesTheFruProviderUnderItsNameInAnyLetterCase) {
    for (const char* name : {"FruProvider", "fruprovider", "FRUPROVIDER"}) {
        _log().clear();
        Pegasus::CIMProvider* provider = create(name);
        ASSERT_NE(provider, nullptr) << name;
        EXPECT_EQ(_log(),
                  (std::vector<std::string>{"log AssetIDProvider.log",
                                            "AssetIDProviderMain: about to load FruProvider"}));
        EXPECT_NE(dynamic_cast<Pegasus::CIMInstanceProvider*>(provider), nullptr);
        EXPECT_EQ(dynamic_cast<Pegasus::CIMIndicationProvider*>(provider), nullptr);
        provider->terminate();
    }
}

TEST_F(Module, MakesNothingUnderOtherNames) {
    for (const char* name :
         {"", "Asset", "AssetIDProvider2", "AssetIDProvide", "NoProvider", "Fru", "FruProvider2"}) {
        EXPECT_EQ(create(name), nullptr) << name;
    }
}

TEST(ModuleLoading, MakesTheDataFolderForItsOwnerOnly) {
    const TestMachine machine;
    const ScopedEnvironment data("TAVQZ_DATA_DIR", machine.folder().file("var/lib/ours"));
    void* handle = dlopen(_modulePath.c_str(), RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(handle, nullptr) << dlerror();
    dlclose(handle);
    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(machine.folder().file("var/lib/ours")).permissions(),
              fs::perms::owner_all);
    for (const char* const name : {"asset.dat", "fru.dat"}) {
        const auto file = fs::status(machine.folder().file("var/lib/ours/") + name);
        EXPECT_EQ(file.permissions(), fs::perms::owner_read | fs::perms::owner_write) << name;
    }
}

TEST(ModuleLoading, DoesNotFailWhereTheDataFolderCannotBeMade) {
    const TestMachine machine;
    machine.folder().write("blocked", "a file");
    const ScopedEnvironment data("TAVQZ_DATA_DIR", machine.folder().file("blocked/data"));
    void* handle = dlopen(_modulePath.c_str(), RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(handle, nullptr) << dlerror();
    dlclose(handle);
}

TEST(ModuleLoading, LeavesAnExistingFileAlone) {
    const TestMachine machine;
    machine.writeAssetFile("LEASE.Lessor=Acme\n");
    machine.folder().write("data/fru.dat", "// ours\n");
    void* handle = dlopen(_modulePath.c_str(), RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(handle, nullptr) << dlerror();
    dlclose(handle);
    EXPECT_EQ(machine.assetFile(), "LEASE.Lessor=Acme\n");
    EXPECT_EQ(machine.folder().read("data/fru.dat"), "// ours\n");
}

}  // namespace
