// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "tavqz/Export.h"
#include "tavqz/InterfaceTable.h"

class cBusComm;
class cDeviceLib;

// Binds the service-processor library and a device library, and hands out the objects that they
// make. Used by one thread; the tables of InterfaceTable.h are shared by all objects of the
// process, so that more than one at a time get in each other's way. Nothing throws: an operation
// that returns a status returns 0 for success, 2 for a library or entry point that is not
// available, and else what the library said. Results are reported through addLogItem.
class TAVQZ_EXPORT cSPCommonInt {
public:
    // Binds fpSharedCommonFuncs to "libtav_shrdevice.so" and calls its initSharedInterface. An
    // object that could not do so is sound: its getters answer 2.
    cSPCommonInt();

    // Releases the objects that were handed out, unbinds fpSharedCommonFuncs, and closes the
    // library unless it refused to release one. Closes neither of the two links.
    ~cSPCommonInt();

    cSPCommonInt(const cSPCommonInt&) = delete;
    cSPCommonInt& operator=(const cSPCommonInt&) = delete;

    // Open the link to "libtav_shrdevice.so" (a second time, with a table of its own) or to the
    // device library of that name in "../lib/". 1 when every entry point was bound, else 0, and
    // those before the missing one stay bound. A link that is open already is opened again, and
    // its first handle forgotten.
    int initializeCommLink();
    int initializeLibLink(char* name);

    // What the getSharedCommDevice of the comm link returns, its object dropped; 0 without one.
    int getCommonDevice();

    // The library's two objects, which it keeps. It is asked once: whatever it then stored in
    // *out, even with a failure, is the answer to every later call, which returns 0, whatever
    // the bus.
    int getCommonCommDevice(cBusComm** out);
    int getCommonLibDevice(cBusComm* bus, cDeviceLib** out);

    // Asks the device library of initializeLibLink, each time anew.
    int getLibDevice(cBusComm* bus, cDeviceLib** out);

    // Ask the library to close and unload it; one that refuses stays loaded, and is forgotten
    // all the same. Nothing happens where the link is not open or has no such entry point.
    void closeLibLink();
    void closeCommLink();

private:
    void* _commLinkHandle = nullptr;
    void* _libLinkHandle = nullptr;
    void* _commonHandle = nullptr;
    cBusComm* _busDevice = nullptr;
    cDeviceLib* _libDevice = nullptr;
};
