// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DisplayStrings.h"

#include <iterator>

#include "AssetIDProvider.h"
#include "Locale.h"
#include "LogItem.h"
#include "Product.h"

namespace QZ {

namespace {

struct DeviceTypeRow {  // NOLINT(clang-analyzer-optin.performance.Padding)
    VPD_INST_TYPE type;
    const wchar_t* key;
    int deviceType;
};

// The device types are codes of the model's; boards and planars have none of their own.
constexpr DeviceTypeRow _deviceTypes[] = {
    {VPD_INST_PROC_BOARD, L"VPD_DESC_PROC_BOARD", 0},
    {VPD_INST_PROC_BACKPLANE, L"VPD_DESC_PROC_BACKPLANE", 0},
    {VPD_INST_DIMM, L"VPD_DESC_DIMM", 16},
    {VPD_INST_FRONT_PANEL, L"VPD_DESC_FRONT_PANEL", 4},
    {VPD_INST_DASD, L"VPD_DESC_DASD", 18},
    {VPD_INST_DASD_2, L"VPD_DESC_DASD", 18},
    {VPD_INST_POWER, L"VPD_DESC_POWER", 17},
    {VPD_INST_POWER_2, L"VPD_DESC_POWER", 17},
    {VPD_INST_POWER_BACKPLANE, L"VPD_DESC_POWER_BACKPLANE", 0},
    {VPD_INST_POWER_BACKPLANE_2, L"VPD_DESC_POWER_BACKPLANE", 0},
    {VPD_INST_PCI_PLANAR, L"VPD_DESC_PCI_PLANAR", 0},
    {VPD_INST_CPU, L"VPD_DESC_CPU", 19},
    {VPD_INST_MGMT_PROC, L"VPD_DESC_MGMT_PROC", 23},
    {VPD_INST_PLANAR, L"VPD_DESC_PLANAR", 0},
    {VPD_INST_APP_FW, L"VPD_DESC_APP_FW", 12},
    {VPD_INST_BOOT_ROM_FW, L"VPD_DESC_BOOT_ROM_FW", 13},
    {VPD_INST_REMOTE_GRAPHICS_FW, L"VPD_DESC_REMOTE_GRAPHICS_FW", 25},
    {VPD_INST_DEVICE_DRIVER, L"VPD_DESC_DEVICE_DRIVER", 22},
    {VPD_INST_POST_BIOS, L"VPD_DESC_POST_BIOS", 24},
};

struct FamilyRow {
    int spType;
    const wchar_t* key;
};

constexpr FamilyRow _families[] = {
    {1, L"ALDER"},   {2, L"BIRCH"},   {3, L"BIRCH"},    {4, L"CEDAR"},  {5, L"CEDAR"},
    {7, L"DOGWOOD"}, {8, L"DOGWOOD"}, {10, L"DOGWOOD"}, {100, L"IPMI"}, {101, L"IPMI"},
};

constexpr const wchar_t* _states[] = {
    L"CURRENT_STATE_DEFAULT",      L"CURRENT_STATE_IN_POST",     L"CURRENT_STATE_STOPPED_POST",
    L"CURRENT_STATE_BOOTED_FLASH", L"CURRENT_STATE_BOOTING_OS",  L"CURRENT_STATE_OS_BOOTED",
    L"CURRENT_STATE_CPU_RESET",    L"CURRENT_STATE_BEFORE_POST",
};

constexpr DeviceTypeRow _unknownDevice = {VPD_INST_UNKNOWN, L"MSGID_UNKNOWN", 0};

const DeviceTypeRow& _findDeviceType(VPD_INST_TYPE type) {
    for (const DeviceTypeRow& row : _deviceTypes) {
        if (row.type == type) {
            return row;
        }
    }
    return _unknownDevice;
}

}  // namespace

ResourceString localizedText(const std::wstring& key) {
    return ResourceString(Product::getResourceLibrary("", Locale::getLanguageId()), key);
}

std::wstring AssetIDProvider::getStringForDeviceType(VPD_INST_TYPE type) {
    logItem("AssetIDProvider.getStringForDeviceType()", "Entered");
    return localizedText(_findDeviceType(type).key).toString();
}

int AssetIDProvider::getDeviceTypeForDeviceType(VPD_INST_TYPE type) {
    constexpr const char* name = "AssetIDProvider.getDeviceTypeForDeviceType()";
    logItem(name, "Entered");
    const int deviceType = _findDeviceType(type).deviceType;
    logItem(name, "device type for vpd inst type [" + std::to_string(static_cast<int>(type)) +
                      "]=[" + std::to_string(deviceType) + "]");
    return deviceType;
}

std::wstring AssetIDProvider::getStringForSPType(int spType, bool abbreviated) {
    logItem("AssetIDProvider.getStringForSPType()", "Entered");
    for (const FamilyRow& row : _families) {
        if (row.spType == spType) {
            return localizedText(std::wstring(row.key) + (abbreviated ? L"_ABBREV" : L""))
                .toString();
        }
    }
    return std::wstring();
}

std::wstring AssetIDProvider::getStringForSysState(int state) {
    logItem("AssetIDProvider.getStringForSysState()", "Entered");
    const auto index = static_cast<unsigned>(state);
    return localizedText(_states[index < std::size(_states) ? index : 0]).toString();
}

// IPMI 2.0, table 43-13.
VPD_INST_TYPE AssetIDProvider::getInstTypeForIPMIEntityID(int entityId) {
    switch (entityId) {
        case 15:  // drive backplane
            return VPD_INST_DASD;
        case 21:  // power distribution board
            return VPD_INST_POWER_BACKPLANE;
        case 10:  // power supply
            return VPD_INST_POWER;
        default:
            return VPD_INST_UNKNOWN;
    }
}

}  // namespace QZ
