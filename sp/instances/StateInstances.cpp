// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
// The instances that say how a service processor and its machine are.

#include <iterator>
#include <memory>

#include "AssetIDProvider.h"
#include "DisplayStrings.h"
#include "LogItem.h"
#include "ServiceProcessorClasses.h"
#include "tavqz/cDeviceLib.h"

namespace QZ {

namespace {

using Pegasus::String;

constexpr const char* _component = "VigilProvider";

struct Timer {
    std::int32_t WatchdogRecord::*timeout;
    const wchar_t* key;
};

constexpr Timer _timers[] = {
    {&WatchdogRecord::postTimeout, L"SERVER_TIMEOUT_POST"},
    {&WatchdogRecord::loaderTimeout, L"SERVER_TIMEOUT_LOADER"},
    {&WatchdogRecord::osTimeout, L"SERVER_TIMEOUT_OS"},
    {&WatchdogRecord::powerTimeout, L"SERVER_TIMEOUT_POWER"},
};

// Two families are cards, and are told as what they are plugged in.
bool _isPciAdapter(int spType) {
    return spType == 2 || spType == 3;
}

}  // namespace

AssetIDProvider::SpInstances* AssetIDProvider::getVigilPresentInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilPresentInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    VigilPresent present;
    present.spIndex = spIndex;
    present.className = className;
    result->push_back(buildSpInstance(vigilPresentClass, present));
    logItem(_component, "******** getVigilPresentInstances() exiting ***********");
    return result.release();
}

AssetIDProvider::SpInstances* AssetIDProvider::getVigilSystemStateInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilSystemStateInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    VigilSystemState state;
    int spType = 0;
    const int rc1 = _spLibrary->getSystemState(spIndex, state.state);
    const int rc2 = _spLibrary->getServiceProcessorType(spType);
    logItem(_component, "rc1=[" + std::to_string(rc1) + "]  rc2=[" + std::to_string(rc2) + "]");
    if (rc1 == 0) {
        state.spIndex = spIndex;
        state.className = className;
        state.deviceId = localizedText(L"HARDWARE_ABBREV_2").toString();
        state.stateText = getStringForSysState(static_cast<int>(state.state.currentState));
        state.family =
            _isPciAdapter(spType) ? L"Vigil PCI Adapter" : getStringForSPType(spType, false);
        result->push_back(buildSpInstance(vigilSystemStateClass, state));
    }
    logItem(_component, "******** getVigilSystemStateInstances() exiting ***********");
    return result.release();
}

AssetIDProvider::SpInstances* AssetIDProvider::getVigilWatchdogInstances(
    int spIndex,
    String className) {  // NOLINT(performance-unnecessary-value-param)
    logItem(_component, "******** getVigilWatchdogInstances() entered ***********");
    auto result = std::make_unique<SpInstances>();
    WatchdogRecord record{};
    if (_spLibrary->getWatchdogData(spIndex, record) == 0) {
        for (int timer = 0; timer < static_cast<int>(std::size(_timers)); ++timer) {
            const std::int32_t timeout = record.*_timers[timer].timeout;
            if (timeout == -1) {
                continue;
            }
            VigilWatchdog watchdog;
            watchdog.spIndex = spIndex;
            watchdog.className = className;
            watchdog.deviceId = localizedText(L"SERVER_TIMEOUT_UNIQUEID").format(timer);
            watchdog.timeout = static_cast<Pegasus::Uint32>(timeout);
            watchdog.stage = localizedText(_timers[timer].key).toString();
            result->push_back(buildSpInstance(vigilWatchdogClass, watchdog));
        }
    }
    logItem(_component, "******** getVigilWatchdogInstances() exiting ***********");
    return result.release();
}

}  // namespace QZ
