// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A service-processor library for one processor that knows its firmware, a watchdog and how long
// the machine has been on.
//
//     c++ -std=c++17 -shared -fPIC -fvisibility=hidden service_processor.cpp
//         -o ../lib/libtav_shrdevice.so
//
// It links to nothing of the module: the functions of VPD are found in the module that loads it.

#include <tavqz/cBusComm.h>
#include <tavqz/cDeviceLib.h>

namespace {

constexpr int FILLED = 0;
constexpr int NOT_THERE = 2;

class Bus final : public cBusComm {
public:
    int getServiceProcessorCount() override { return 1; }
};

// Any thread may ask, several at once: nothing here changes.
class Device final : public cDeviceLib {
public:
    int getVPDData(int, int vpdType, int instance, VPD& record) override {
        if (vpdType != VPD_INST_APP_FW || instance != 1) {
            return NOT_THERE;
        }
        record.set_FIRMWARE_IMAGE_VERSION("1.04");
        record.set_FIRMWARE_IMAGE_BUILD_ID("EX104A");
        record.set_FIRMWARE_IMAGE_FILENAME("exapp");
        record.set_FIRMWARE_IMAGE_TIMESTAMP({5, 3, 2026});
        record.setIsVPDValid(true);
        return FILLED;
    }

    int getServiceProcessorType(int& type) override {
        type = 1;
        return FILLED;
    }

    int getSystemState(int, SystemStateRecord& record) override {
        record.powerOnHours = 8760;
        record.restartCount = 12;
        record.currentState = 5;  // the operating system has booted
        return FILLED;
    }

    int getWatchdogData(int, WatchdogRecord& record) override {
        record = {240, 600, -1, -1};  // seconds; the last two are not set
        return FILLED;
    }

    // What it does not know it does not fill.
    int getMachineLevelData(int, MachineLevelRecord&) override { return NOT_THERE; }
    int getPostBiosVersion(int, PostBiosRecord&) override { return NOT_THERE; }
};

// The library's own: the module never deletes them.
Bus bus;
Device device;

}  // namespace

extern "C" {

TAVQZ_EXPORT int getSharedCommDevice(cBusComm** found) {
    *found = &bus;
    return 0;
}

TAVQZ_EXPORT int getSharedLibDevice(cBusComm*, cDeviceLib** found) {
    *found = &device;
    return 0;
}

TAVQZ_EXPORT void initSharedInterface() {
    // Threads and connections begin here, not when the library is loaded ...
}

TAVQZ_EXPORT int interface_Comm_Release() {
    return 0;
}

TAVQZ_EXPORT int interface_Lib_Release() {
    return 0;  // ... and have ended here: the library may be unloaded.
}
}
