// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ServiceProcessorClasses.h"

#include <iterator>

#include "System.h"

namespace QZ {
namespace {

using Pegasus::Uint16;

std::string _providerName(const SpInstance&) {
    return "Corvana|Agent|AssetIDProvider";
}

std::string _systemClass(const SpInstance&) {
    return "TAVIRA_Computersystem";
}

std::wstring _systemName(const SpInstance&) {
    return System::getName();
}

Uint16 _node(const SpInstance& instance) {
    return static_cast<Uint16>(instance.spIndex + 1);
}

Uint16 _monitoredEntity(const SpInstance&) {
    return 8;  // an application, by the model's value map
}

std::string _firstDevice(const SpInstance&) {
    return "0";
}

std::string _uniqueId(const VigilVpd& vpd) {
    return std::to_string(vpd.number);
}

Uint16 _deviceType(const VigilVpd& vpd) {
    return static_cast<Uint16>(vpd.deviceType);
}

Uint16 _serialId(const VigilVpd& vpd) {
    return static_cast<Uint16>(vpd.number * 10 + 1);
}

Pegasus::Uint64 _powerOnHours(const VigilSystemState& state) {
    return state.state.powerOnHours;
}

Uint16 _restartCount(const VigilSystemState& state) {
    return state.state.restartCount;
}

Uint16 _statusInfo(const VigilSystemState& state) {
    return state.state.statusInfo;
}

Pegasus::Uint32 _currentState(const VigilSystemState& state) {
    return state.state.currentState;
}

constexpr const char* _deviceKeys[] = {"DeviceID", "SystemCreationClassName", "SystemName",
                                       "CreationClassName"};
constexpr const char* _vpdKeys[] = {"serialID", "UniqueId", "DeviceType", "Node"};

constexpr RecordProperty<VigilPresent> _present[] = {
    readOnly<VigilPresent, _providerName>("ProviderName"),
    readOnly<VigilPresent, _firstDevice>("DeviceID"),
    readOnly<VigilPresent, _systemClass>("SystemCreationClassName"),
    readOnly<VigilPresent, _systemName>("SystemName"),
    readOnly<VigilPresent, &VigilPresent::className>("CreationClassName"),
    readOnly<VigilPresent, _monitoredEntity>("MonitoredEntity"),
};

constexpr RecordProperty<VigilWatchdog> _watchdog[] = {
    readOnly<VigilWatchdog, _providerName>("ProviderName"),
    readOnly<VigilWatchdog, &VigilWatchdog::deviceId>("DeviceID"),
    readOnly<VigilWatchdog, _systemClass>("SystemCreationClassName"),
    readOnly<VigilWatchdog, _systemName>("SystemName"),
    readOnly<VigilWatchdog, &VigilWatchdog::className>("CreationClassName"),
    readOnly<VigilWatchdog, &VigilWatchdog::timeout>("TimeoutInterval"),
    readOnly<VigilWatchdog, _monitoredEntity>("MonitoredEntity"),
    readOnly<VigilWatchdog, &VigilWatchdog::stage>("MonitoredEntityDescription"),
};

constexpr RecordProperty<VigilSystemState> _systemState[] = {
    readOnly<VigilSystemState, _providerName>("ProviderName"),
    readOnly<VigilSystemState, &VigilSystemState::deviceId>("DeviceID"),
    readOnly<VigilSystemState, _systemClass>("SystemCreationClassName"),
    readOnly<VigilSystemState, _systemName>("SystemName"),
    readOnly<VigilSystemState, &VigilSystemState::className>("CreationClassName"),
    readOnly<VigilSystemState, _node>("Node"),
    readOnly<VigilSystemState, _powerOnHours>("PowerOnHours"),
    readOnly<VigilSystemState, _restartCount>("RestartCount"),
    readOnly<VigilSystemState, _statusInfo>("StatusInfo"),
    readOnly<VigilSystemState, _currentState>("CurrentState"),
    readOnly<VigilSystemState, &VigilSystemState::stateText>("CurrentStateStr"),
    readOnly<VigilSystemState, &VigilSystemState::family>("VigilDetected"),
};

constexpr RecordProperty<VigilComponentVpd> _component[] = {
    readOnly<VigilComponentVpd, _providerName>("ProviderName"),
    readOnly<VigilComponentVpd, _node>("Node"),
    readOnly<VigilComponentVpd, _uniqueId>("UniqueId"),
    readOnly<VigilComponentVpd, _deviceType>("DeviceType"),
    readOnly<VigilComponentVpd, _serialId>("serialID"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::description>("Description"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::fruNumber>("FieldReplaceableUnitNumber"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::manufacturerId>("ManufacturerId"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::modelNumber>("ModelNumber"),
    readOnly<VigilComponentVpd, _systemClass>("SystemCreationClassName"),
    readOnly<VigilComponentVpd, _systemName>("SystemName"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::className>("CreationClassName"),
};

constexpr RecordProperty<VigilComponentVpd> _ipmiComponent[] = {
    readOnly<VigilComponentVpd, _providerName>("ProviderName"),
    readOnly<VigilComponentVpd, _node>("Node"),
    readOnly<VigilComponentVpd, _systemClass>("SystemCreationClassName"),
    readOnly<VigilComponentVpd, _systemName>("SystemName"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::className>("CreationClassName"),
    readOnly<VigilComponentVpd, _serialId>("serialID"),
    readOnly<VigilComponentVpd, _uniqueId>("UniqueId"),
    readOnly<VigilComponentVpd, _deviceType>("DeviceType"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::description>("Description"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::fruNumber>("FieldReplaceableUnitNumber"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::manufacturerId>("ManufacturerId"),
    readOnly<VigilComponentVpd, &VigilComponentVpd::modelNumber>("ModelNumber"),
};

constexpr RecordProperty<VigilFirmwareVpd> _firmware[] = {
    readOnly<VigilFirmwareVpd, _providerName>("ProviderName"),
    readOnly<VigilFirmwareVpd, _node>("Node"),
    readOnly<VigilFirmwareVpd, _uniqueId>("UniqueId"),
    readOnly<VigilFirmwareVpd, _deviceType>("DeviceType"),
    readOnly<VigilFirmwareVpd, _serialId>("serialID"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::description>("Description"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::kind>("VPDType"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::fileName>("Filename"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::buildId>("BuildId"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::revision>("Revision"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::releaseDate>("ReleaseDate"),
    readOnly<VigilFirmwareVpd, _systemClass>("SystemCreationClassName"),
    readOnly<VigilFirmwareVpd, _systemName>("SystemName"),
    readOnly<VigilFirmwareVpd, &VigilFirmwareVpd::className>("CreationClassName"),
};

constexpr RecordProperty<VigilMachineLevelVpd> _machineLevel[] = {
    readOnly<VigilMachineLevelVpd, _providerName>("ProviderName"),
    readOnly<VigilMachineLevelVpd, _node>("Node"),
    readOnly<VigilMachineLevelVpd, _uniqueId>("UniqueId"),
    readOnly<VigilMachineLevelVpd, _deviceType>("DeviceType"),
    readOnly<VigilMachineLevelVpd, _serialId>("serialID"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::description>("Description"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::uuid>("UUID"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::machineType>("MachineType"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::machineModel>("MachineModel"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::serialNumber>("SerialNumber"),
    readOnly<VigilMachineLevelVpd, _systemClass>("SystemCreationClassName"),
    readOnly<VigilMachineLevelVpd, _systemName>("SystemName"),
    readOnly<VigilMachineLevelVpd, &VigilMachineLevelVpd::className>("CreationClassName"),
};

constexpr RecordProperty<VigilPostBiosVpd> _postBios[] = {
    readOnly<VigilPostBiosVpd, _providerName>("ProviderName"),
    readOnly<VigilPostBiosVpd, _node>("Node"),
    readOnly<VigilPostBiosVpd, _uniqueId>("UniqueId"),
    readOnly<VigilPostBiosVpd, _deviceType>("DeviceType"),
    readOnly<VigilPostBiosVpd, _serialId>("serialID"),
    readOnly<VigilPostBiosVpd, &VigilPostBiosVpd::description>("Description"),
    readOnly<VigilPostBiosVpd, &VigilPostBiosVpd::version>("Version"),
    readOnly<VigilPostBiosVpd, &VigilPostBiosVpd::buildDate>("BuildDate"),
    readOnly<VigilPostBiosVpd, &VigilPostBiosVpd::buildLevel>("BuildLevel"),
    readOnly<VigilPostBiosVpd, _systemClass>("SystemCreationClassName"),
    readOnly<VigilPostBiosVpd, _systemName>("SystemName"),
    readOnly<VigilPostBiosVpd, &VigilPostBiosVpd::className>("CreationClassName"),
};

template <class Record, std::size_t Properties, std::size_t Keys>
constexpr RecordClass<Record> _class(const RecordProperty<Record> (&properties)[Properties],
                                     const char* const (&keys)[Keys]) {
    return {properties, Properties, keys, Keys};
}

}  // namespace

constexpr RecordClass<VigilPresent> vigilPresentClass = _class(_present, _deviceKeys);
constexpr RecordClass<VigilWatchdog> vigilWatchdogClass = _class(_watchdog, _deviceKeys);
constexpr RecordClass<VigilSystemState> vigilSystemStateClass = _class(_systemState, _deviceKeys);
constexpr RecordClass<VigilComponentVpd> vigilComponentVpdClass = _class(_component, _vpdKeys);
constexpr RecordClass<VigilComponentVpd> ipmiComponentVpdClass = _class(_ipmiComponent, _vpdKeys);
constexpr RecordClass<VigilFirmwareVpd> vigilFirmwareVpdClass = _class(_firmware, _vpdKeys);
constexpr RecordClass<VigilMachineLevelVpd> vigilMachineLevelVpdClass =
    _class(_machineLevel, _vpdKeys);
constexpr RecordClass<VigilPostBiosVpd> vigilPostBiosVpdClass = _class(_postBios, _vpdKeys);

}  // namespace QZ
