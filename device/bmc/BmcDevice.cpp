// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// The service-processor library over the machine's management controller. See README.md.

#include "Bmc.h"
#include "BmcAnswers.h"
#include "RestartCounter.h"
#include "tavqz/Export.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

namespace {

constexpr int _success = 0;
// The answer to what the controller does not tell.
constexpr int _notThere = 2;
// The kind of a controller that speaks IPMI.
constexpr int _ipmiKind = 101;

// A caller is told of any failure by a status: nothing may be thrown through the interface.
template <class Query>
int _answer(Query query) {
    try {
        return query() ? _success : _notThere;
    } catch (...) {
        return _notThere;
    }
}

class BmcBus final : public cBusComm {
public:
    int getServiceProcessorCount() override { return 1; }
};

class BmcDevice final : public cDeviceLib {
public:
    // Of the controller's own firmware alone; the module takes components from the FRUs.
    int getVPDData(int spIndex, int vpdType, int instance, VPD& record) override {
        return _answer([&] {
            const auto id = spIndex == 0 && vpdType == VPD_INST_APP_FW && instance == 1
                                ? QZ::Bmc::machine().getDeviceId()
                                : std::nullopt;
            if (!id) {
                return false;
            }
            record.set_FIRMWARE_IMAGE_VERSION(firmwareVersion(*id));
            record.set_FIRMWARE_IMAGE_BUILD_ID(firmwareBuild(*id));
            record.set_FIRMWARE_IMAGE_FILENAME("");
            // No controller tells when its firmware was made.
            record.set_FIRMWARE_IMAGE_TIMESTAMP({-1, -1, -1});
            record.setIsVPDValid(true);
            return true;
        });
    }

    int getServiceProcessorType(int& type) override {
        type = _ipmiKind;
        return _success;
    }

    int getSystemState(int spIndex, SystemStateRecord& record) override {
        return _answer([&] {
            QZ::Bmc& bmc = QZ::Bmc::machine();
            return spIndex == 0 && fillSystemState(bmc.getChassisStatus(), bmc.getPowerOnMinutes(),
                                                   _restarts.count(bmc), record);
        });
    }

    int getMachineLevelData(int spIndex, MachineLevelRecord& record) override {
        return _answer([&] {
            return spIndex == 0 && fillMachineLevel(QZ::SmBios().getTables(),
                                                    QZ::Bmc::machine().getSystemGuid(), record);
        });
    }

    int getWatchdogData(int spIndex, WatchdogRecord& record) override {
        return _answer([&] {
            const auto watchdog = spIndex == 0 ? QZ::Bmc::machine().getWatchdog() : std::nullopt;
            if (watchdog) {
                fillWatchdog(*watchdog, record);
            }
            return watchdog.has_value();
        });
    }

    int getPostBiosVersion(int spIndex, PostBiosRecord& record) override {
        return _answer(
            [&] { return spIndex == 0 && fillPostBios(QZ::SmBios().getTables(), record); });
    }

private:
    RestartCounter _restarts;
};

BmcBus _bus;
BmcDevice _device;

}  // namespace

extern "C" {

// A machine without a controller has no service processor.
TAVQZ_EXPORT int getSharedCommDevice(cBusComm** bus) {
    return _answer([&] {
        const bool isThere = QZ::Bmc::machine().getDeviceId().has_value();
        *bus = isThere ? &_bus : nullptr;
        return isThere;
    });
}

TAVQZ_EXPORT int getSharedLibDevice(cBusComm*, cDeviceLib** device) {
    *device = &_device;
    return _success;
}

TAVQZ_EXPORT void initSharedInterface() {}

TAVQZ_EXPORT int interface_Comm_Release() {
    return _success;
}

TAVQZ_EXPORT int interface_Lib_Release() {
    return _success;
}

TAVQZ_EXPORT int interface_close() {
    return _success;
}
}
