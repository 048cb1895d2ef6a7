// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A service-processor library and a device library in one, which tells the test program of every
// call. Each entry point can be left out.

#include "tavqz/AccessHelpers.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

// Found in the program, as the access layer's functions are.
extern "C" int entryPointCalled(const char* name);
extern "C" int entryPointCalledWithBus(const char* name, const void* bus);

namespace {

class TestBus final : public cBusComm {
public:
    int getServiceProcessorCount() override {
        unsigned char bytes[] = {0, 0, 0, 2};
        return static_cast<int>(getULongFromBufferMSBFirst(bytes, 0));
    }
};

class TestDevice final : public cDeviceLib {
public:
    int getVPDData(int, int, int, VPD&) override { return 1; }
    int getServiceProcessorType(int&) override { return 1; }
    int getSystemState(int, SystemStateRecord&) override { return 1; }
    int getMachineLevelData(int, MachineLevelRecord&) override { return 1; }
    int getWatchdogData(int, WatchdogRecord&) override { return 1; }
    int getPostBiosVersion(int, PostBiosRecord&) override { return 1; }
};

// Unused where the entry points that hand them out are left out.
[[maybe_unused]] TestBus theBus;
[[maybe_unused]] TestDevice theDevice;

}  // namespace

extern "C" {

#ifndef WITHOUT_getSharedCommDevice
TAVQZ_EXPORT int getSharedCommDevice(cBusComm** bus) {
    *bus = &theBus;
    return entryPointCalled("getSharedCommDevice");
}
#endif

#ifndef WITHOUT_getSharedLibDevice
TAVQZ_EXPORT int getSharedLibDevice(cBusComm* bus, cDeviceLib** device) {
    *device = &theDevice;
    return entryPointCalledWithBus("getSharedLibDevice", bus);
}
#endif

#ifndef WITHOUT_initSharedInterface
TAVQZ_EXPORT void initSharedInterface() {
    entryPointCalled("initSharedInterface");
}
#endif

#ifndef WITHOUT_interface_Comm_Release
TAVQZ_EXPORT int interface_Comm_Release() {
    return entryPointCalled("interface_Comm_Release");
}
#endif

#ifndef WITHOUT_interface_Lib_Release
TAVQZ_EXPORT int interface_Lib_Release() {
    return entryPointCalled("interface_Lib_Release");
}
#endif

#ifndef WITHOUT_interface_close
TAVQZ_EXPORT int interface_close() {
    return entryPointCalled("interface_close");
}
#endif

#ifndef WITHOUT_openLibrary
TAVQZ_EXPORT int openLibrary(cDeviceLib** device, cBusComm* bus) {
    *device = &theDevice;
    return entryPointCalledWithBus("openLibrary", bus);
}
#endif

#ifndef WITHOUT_closeLibrary
TAVQZ_EXPORT int closeLibrary() {
    return entryPointCalled("closeLibrary");
}
#endif
}
