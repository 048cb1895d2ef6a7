// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The instances of vital product data: firmware, components, the machine and its POST/BIOS.

#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "AssetIDProvider.h"
#include "IpmiFru.h"
#include "LogItem.h"
#include "ServiceProcessorClasses.h"
#include "tavqz/cDeviceLib.h"

namespace QZ {

namespace {

using Pegasus::String;

constexpr const char* _component = "VigilProvider";

// Instances of one kind that are asked for, at most.
constexpr int _mostInstances = 255;

void _logRead(int type, int instance, int rc) {
    logItem(_component, "got vpd object for type " + std::to_string(type) + "/instance " +
                            std::to_string(instance) + ":  rc=" + std::to_string(rc));
}

// Month, day and year; empty where the date is not known.
std::string _dateText(const VPD::GREG_CAL& date) {
    if (date.day == -1 || date.month == -1 || date.year == -1) {
        return "";
    }
    char text[40];
    (void)std::snprintf(text, sizeof text, "%02d-%02d-%4d", static_cast<int>(date.month),
                        static_cast<int>(date.day), static_cast<int>(date.year));
    return text;
}

// Text that ends at a NUL or with its room.
template <std::size_t Size>
std::string _boundedText(const char (&text)[Size]) {
    return std::string(text, strnlen(text, Size));
}

// Text that fills its room but for one place, and is taken whole.
template <std::size_t Size>
std::string _wholeText(const char (&text)[Size]) {
    return std::string(text, Size - 1);
}

}  // namespace

AssetIDProvider::SpInstances* AssetIDProvider::getVigilManagementProcessorVPDInstances(
    int spIndex, String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilManagementProcessorVPDInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    VPD record;
    VigilFirmwareVpd vpd;
    vpd.spIndex = spIndex;
    vpd.className = className;
    for (int type = VPD_INST_APP_FW; type <= VPD_INST_DEVICE_DRIVER; ++type) {
        logItem(_component, "At beginning of for loop");
        const int rc = _spLibrary->getVPDData(spIndex, type, 1, record);
        _logRead(type, 1, rc);
        if (rc != 0 || !record.isVPDValid()) {
            continue;
        }
        const auto vpdType = static_cast<VPD_INST_TYPE>(type);
        vpd.deviceType = getDeviceTypeForDeviceType(vpdType);
        int spType = 0;
        _spLibrary->getServiceProcessorType(spType);
        vpd.description = getStringForSPType(spType, true);
        vpd.kind = getStringForDeviceType(vpdType);
        vpd.fileName = record.get_string(VPD::FIRMWARE_IMAGE_FILENAME);
        vpd.buildId = record.get_string(VPD::FIRMWARE_IMAGE_BUILD_ID);
        vpd.revision = record.get_string(VPD::FIRMWARE_IMAGE_VERSION);
        VPD::GREG_CAL released{};
        record.get_cal(VPD::FIRMWARE_IMAGE_TIMESTAMP, &released);
        vpd.releaseDate = _dateText(released);
        result->push_back(buildSpInstance(vigilFirmwareVpdClass, vpd));
        ++vpd.number;
    }
    logItem(_component, "returning vector");
    logItem(_component, "******** getVigilManagementProcessorVPDInstances() exiting ***********");
    return result.release();
}

AssetIDProvider::SpInstances* AssetIDProvider::getVigilComponentVPDInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilComponentVPDInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    VPD record;
    VigilComponentVpd vpd;
    vpd.spIndex = spIndex;
    vpd.className = className;
    for (int type = VPD_INST_PROC_BOARD; type <= VPD_INST_PLANAR; ++type) {
        logItem(_component, "At beginning of for loop");
        for (int instance = 1; instance <= _mostInstances; ++instance) {
            logItem(_component, "At beginning of while loop");
            const int rc = _spLibrary->getVPDData(spIndex, type, instance, record);
            _logRead(type, instance, rc);
            if (rc != 0 || !record.isVPDValid()) {
                logItem(_component, "getVPDData failed!");
                break;
            }
            logItem(_component, "vpd object should be valid");
            const auto vpdType = static_cast<VPD_INST_TYPE>(type);
            vpd.deviceType = getDeviceTypeForDeviceType(vpdType);
            vpd.description = getStringForDeviceType(vpdType);
            vpd.fruNumber = record.get_string(VPD::EEPROM_FRU_NUMBER);
            vpd.manufacturerId = record.get_string(VPD::EEPROM_MANUFACTURER_ID);
            vpd.modelNumber = record.get_string(VPD::EEPROM_PART_NUMBER);
            result->push_back(buildSpInstance(vigilComponentVpdClass, vpd));
            ++vpd.number;
            logItem(_component, "At end of while loop");
        }
        logItem(_component, "At end of for loop");
    }
    logItem(_component, "returning vector");
    logItem(_component, "******** getVigilComponentVPDInstances() exiting ***********");
    return result.release();
}

// Logs under the other component builder's name, by which administrators know it.
AssetIDProvider::SpInstances* AssetIDProvider::getIPMIVigilComponentVPDInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilComponentVPDInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    VigilComponentVpd vpd;
    vpd.spIndex = spIndex;
    vpd.className = className;
    for (const IpmiFru& fru : GetIpmiFruInstances()) {
        const VPD_INST_TYPE type = getInstTypeForIPMIEntityID(fru.getEntityId());
        vpd.deviceType = getDeviceTypeForDeviceType(type);
        logItem(_component, "deviceID=[" + std::to_string(vpd.deviceType) + "]");
        vpd.description = getStringForDeviceType(type);
        vpd.fruNumber = fru.getNumber();
        vpd.manufacturerId = fru.getVendor();
        vpd.modelNumber = fru.getIdentifyingNumber();
        result->push_back(buildSpInstance(ipmiComponentVpdClass, vpd));
        ++vpd.number;
    }
    logItem(_component, "******** getVigilComponentVPDInstances() exiting ***********");
    return result.release();
}

AssetIDProvider::SpInstances* AssetIDProvider::getVigilMachineLevelVPDInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilMachineLevelVPDInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    MachineLevelRecord record{};
    if (_spLibrary->getMachineLevelData(spIndex, record) == 0) {
        VigilMachineLevelVpd vpd;
        vpd.spIndex = spIndex;
        vpd.className = className;
        vpd.deviceType = getDeviceTypeForDeviceType(VPD_INST_MGMT_PROC);
        vpd.description = L"Machine Level VPD";
        vpd.uuid = _wholeText(record.uuid);
        vpd.machineType = _wholeText(record.machineType);
        vpd.machineModel = _wholeText(record.machineModel);
        vpd.serialNumber = _wholeText(record.serialNumber);
        result->push_back(buildSpInstance(vigilMachineLevelVpdClass, vpd));
    }
    logItem(_component, "******** getVigilMachineLevelVPDInstances() exiting ***********");
    return result.release();
}

AssetIDProvider::SpInstances* AssetIDProvider::getVigilPostBiosVPDInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilPostBiosVPDInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    PostBiosRecord record{};
    if (_spLibrary->getPostBiosVersion(spIndex, record) == 0) {
        VigilPostBiosVpd vpd;
        vpd.spIndex = spIndex;
        vpd.className = className;
        vpd.deviceType = getDeviceTypeForDeviceType(VPD_INST_POST_BIOS);
        vpd.description = getStringForDeviceType(VPD_INST_POST_BIOS);
        vpd.version = std::to_string(record.version);
        vpd.buildDate = _boundedText(record.buildDate);
        vpd.buildLevel = _boundedText(record.buildLevel);
        result->push_back(buildSpInstance(vigilPostBiosVpdClass, vpd));
    }
    logItem(_component, "******** getVigilPostBiosVPDInstances() exiting ***********");
    return result.release();
}

}  // namespace QZ
