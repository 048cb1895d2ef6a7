// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "TestMachine.h"

namespace {

const char* const guestUuid = "6f3b1c2d-0a4e-4f5b-9c8d-7e6f5a4b3c2d";

// The probe as its callers have it: loaded by name, on a machine that is a folder.
class XenProbe : public testing::Test {
protected:
    void SetUp() override {
        _library = dlopen(XEN_PROBE, RTLD_NOW);
        ASSERT_NE(_library, nullptr) << dlerror();
    }

    void TearDown() override {
        if (_library != nullptr) {
            dlclose(_library);
        }
    }

    void machineSays(const std::string& type, const std::string& uuid) const {
        _machine.folder().write("sys/hypervisor/type", type);
        _machine.folder().write("sys/hypervisor/uuid", uuid);
    }

    bool isGuest() const {
        return reinterpret_cast<int (*)()>(dlsym(_library, "running_in_xen_domU"))() != 0;
    }

    // Nothing where the probe reports failure; it must have left the buffer alone then.
    std::optional<std::string> uuid() const {
        char buffer[64];
        std::memset(buffer, '#', sizeof buffer);
        const auto ask = reinterpret_cast<int (*)(char*)>(dlsym(_library, "domU_get_uuid"));
        if (ask(buffer) == 0) {
            return std::string(buffer, strnlen(buffer, sizeof buffer));
        }
        EXPECT_EQ(std::string(buffer, sizeof buffer), std::string(sizeof buffer, '#'));
        return std::nullopt;
    }

    TestMachine _machine;
    void* _library = nullptr;
};

TEST_F(XenProbe, TellsAGuestsUuidInUpperCase) {
    machineSays("xen\n", std::string(guestUuid) + "\n");
    EXPECT_TRUE(isGuest());
    EXPECT_EQ(uuid(), "6F3B1C2D-0A4E-4F5B-9C8D-7E6F5A4B3C2D");
}

TEST_F(XenProbe, ReadsTheMachineAfreshAtEachCall) {
    machineSays("xen\n", std::string(guestUuid) + "\n");
    EXPECT_TRUE(isGuest());
    machineSays("kvm\n", std::string(guestUuid) + "\n");
    EXPECT_FALSE(isGuest());
}

TEST_F(XenProbe, TakesTheFirstDomainForNoGuest) {
    machineSays("xen\n", "00000000-0000-0000-0000-000000000000\n");
    EXPECT_FALSE(isGuest());
    EXPECT_EQ(uuid(), std::nullopt);
}

TEST_F(XenProbe, FindsNoGuestOnAMachineWithoutHypervisor) {
    EXPECT_FALSE(isGuest());
    EXPECT_EQ(uuid(), std::nullopt);
}

TEST_F(XenProbe, FindsNoGuestOfAnotherHypervisor) {
    for (const char* type : {"kvm\n", "xenon\n", "XEN\n", "\n", ""}) {
        machineSays(type, std::string(guestUuid) + "\n");
        EXPECT_FALSE(isGuest()) << type;
        EXPECT_EQ(uuid(), std::nullopt) << type;
    }
}

TEST_F(XenProbe, RefusesAnythingThatIsNoUuid) {
    const std::string good = guestUuid;
    const std::string bad[] = {
        "",
        "none",
        good.substr(1),
        good + "0",
        "{" + good + "}",
        "6f3b1c2d00a4e-4f5b-9c8d-7e6f5a4b3c2d",
        "6f3b1c2d-0a4e-4f5b-9c8d-7e6f5a4b3c2g",
        "6f3b1c2-d0a4e-4f5b-9c8d-7e6f5a4b3c2d",
        std::string(good).replace(3, 1, 1, '\0'),
        std::string(5000, '6'),
    };
    for (const std::string& text : bad) {
        machineSays("xen\n", text + "\n");
        EXPECT_FALSE(isGuest()) << text;
        EXPECT_EQ(uuid(), std::nullopt) << text;
    }
}

TEST_F(XenProbe, TakesNoFolderForAFile) {
    _machine.folder().write("sys/hypervisor/type", "xen\n");
    _machine.folder().write("sys/hypervisor/uuid/of-nobody", guestUuid);
    EXPECT_FALSE(isGuest());
    EXPECT_EQ(uuid(), std::nullopt);
}

TEST_F(XenProbe, ExportsItsTwoFunctionsAndNothingElse) {
    std::ifstream lines{XEN_PROBE_EXPORTS};
    ASSERT_TRUE(lines.is_open());
    std::vector<std::string> symbols;
    for (std::string line; std::getline(lines, line);) {
        symbols.push_back(line.substr(0, line.find(' ')));
    }
    EXPECT_THAT(symbols, testing::UnorderedElementsAre("running_in_xen_domU", "domU_get_uuid"));
}

}  // namespace
