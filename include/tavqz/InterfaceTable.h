// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "tavqz/Export.h"

// One entry point of a library that is bound at run time.
struct interfaceStruct {
    // The symbol, NUL-terminated. An empty one is skipped when a table is bound.
    char name[128];
    // What it resolved to; null while unbound.
    void* funcPtr;
};
static_assert(offsetof(interfaceStruct, name) == 0 && offsetof(interfaceStruct, funcPtr) == 128 &&
              sizeof(interfaceStruct) == 128 + sizeof(void*));

// The rows of fpSharedCommonFuncs, and what a service-processor library,
// "libtav_shrdevice.so", defines for them as C functions:
enum SharedCommonFunction {
    GET_SHARED_COMM_DEVICE,  // int getSharedCommDevice(cBusComm** bus)
    GET_SHARED_LIB_DEVICE,   // int getSharedLibDevice(cBusComm* bus, cDeviceLib** device)
    INIT_SHARED_INTERFACE,   // void initSharedInterface(), called once the table is bound
    INTERFACE_COMM_RELEASE,  // int interface_Comm_Release(), 0 = released
    INTERFACE_LIB_RELEASE    // int interface_Lib_Release(), 0 = released
};

// One set of tables for the process, written by every cSPCommonInt: the last one that bound a
// table is the one that it serves, and who unbinds it does so for all. No lock guards them.
extern TAVQZ_EXPORT interfaceStruct fpSharedCommonFuncs[5];

// "getSharedCommDevice" as above and "interface_close" (int, 0 = closed), of
// "libtav_shrdevice.so".
extern TAVQZ_EXPORT interfaceStruct fpSharedCommFuncs[2];

// "openLibrary" (int, of cDeviceLib** device and cBusComm* bus: the result comes first) and
// "closeLibrary" (int, 0 = closed), of a device library.
extern TAVQZ_EXPORT interfaceStruct fpSharedLibFuncs[2];

// Loads "../lib/" and the name, as seen from the working folder and never by the loader's search
// path, and returns the loader's handle, which the caller closes. Says on standard output what
// it loads. Null when there is no such library, the loader refuses it, the name is null or has
// more than 120 characters.
TAVQZ_EXPORT void* openLinuxLib(char* name);
