// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// Which key each code of a service processor has.

#include <map>

#include "Locale.h"
#include "Product.h"
#include "ProviderTest.h"
#include "ResourceString.h"

namespace {

using DisplayString = ProviderTest;

// The key's text; every key has one in the catalogues.
std::wstring _text(const std::wstring& key) {
    using namespace QZ;
    std::wstring text =
        ResourceString(Product::getResourceLibrary("", Locale::getLanguageId()), key).toString();
    EXPECT_NE(text, key);
    return text;
}

TEST_F(DisplayString, NamesTheFamiliesLongAndShort) {
    const std::map<int, std::wstring> keys = {
        {1, L"ALDER"},   {2, L"BIRCH"},   {3, L"BIRCH"},    {4, L"CEDAR"},  {5, L"CEDAR"},
        {7, L"DOGWOOD"}, {8, L"DOGWOOD"}, {10, L"DOGWOOD"}, {100, L"IPMI"}, {101, L"IPMI"}};
    for (int type = -2; type < 110; ++type) {
        const auto found = keys.find(type);
        const bool known = found != keys.end();
        EXPECT_EQ(provider->getStringForSPType(type, false), known ? _text(found->second) : L"")
            << type;
        EXPECT_EQ(provider->getStringForSPType(type, true),
                  known ? _text(found->second + L"_ABBREV") : L"")
            << type;
    }
}

TEST_F(DisplayString, NamesTheKindsOfDevice) {
    const std::map<int, std::wstring> keys = {{1, L"VPD_DESC_PROC_BOARD"},
                                              {2, L"VPD_DESC_PROC_BACKPLANE"},
                                              {3, L"VPD_DESC_DIMM"},
                                              {6, L"VPD_DESC_FRONT_PANEL"},
                                              {7, L"VPD_DESC_DASD"},
                                              {8, L"VPD_DESC_DASD"},
                                              {9, L"VPD_DESC_POWER"},
                                              {10, L"VPD_DESC_POWER"},
                                              {11, L"VPD_DESC_POWER_BACKPLANE"},
                                              {12, L"VPD_DESC_POWER_BACKPLANE"},
                                              {13, L"VPD_DESC_PCI_PLANAR"},
                                              {14, L"VPD_DESC_CPU"},
                                              {16, L"VPD_DESC_MGMT_PROC"},
                                              {17, L"VPD_DESC_PLANAR"},
                                              {18, L"VPD_DESC_APP_FW"},
                                              {19, L"VPD_DESC_BOOT_ROM_FW"},
                                              {20, L"VPD_DESC_REMOTE_GRAPHICS_FW"},
                                              {21, L"VPD_DESC_DEVICE_DRIVER"},
                                              {22, L"VPD_DESC_POST_BIOS"}};
    for (int type = -2; type < 40; ++type) {
        const auto found = keys.find(type);
        EXPECT_EQ(provider->getStringForDeviceType(static_cast<VPD_INST_TYPE>(type)),
                  _text(found != keys.end() ? found->second : L"MSGID_UNKNOWN"))
            << type;
    }
}

TEST_F(DisplayString, NamesTheStates) {
    const std::wstring keys[] = {L"CURRENT_STATE_DEFAULT",      L"CURRENT_STATE_IN_POST",
                                 L"CURRENT_STATE_STOPPED_POST", L"CURRENT_STATE_BOOTED_FLASH",
                                 L"CURRENT_STATE_BOOTING_OS",   L"CURRENT_STATE_OS_BOOTED",
                                 L"CURRENT_STATE_CPU_RESET",    L"CURRENT_STATE_BEFORE_POST"};
    for (int state = -2; state < 12; ++state) {
        EXPECT_EQ(provider->getStringForSysState(state),
                  _text(state >= 0 && state < 8 ? keys[state] : keys[0]))
            << state;
    }
}

}  // namespace
