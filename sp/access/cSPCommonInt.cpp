// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "tavqz/cSPCommonInt.h"

#include <dlfcn.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string>

#include "LibraryBinding.h"
#include "LogItem.h"
#include "tavqz/cBusComm.h"
#include "tavqz/cDeviceLib.h"

namespace {

const int notAvailable = 2;

// char*, as openLinuxLib takes it.
char sharedLibrary[] = "libtav_shrdevice.so";

enum CommFunction { GetSharedCommDevice, InterfaceClose };
enum LibFunction { OpenLibrary, CloseLibrary };

template <typename Function>
Function* _function(const interfaceStruct& row) {
    return reinterpret_cast<Function*>(row.funcPtr);
}

void _unbind(interfaceStruct* begin, interfaceStruct* end) {
    std::for_each(begin, end, [](interfaceStruct& row) { row.funcPtr = nullptr; });
}

// A library counts as bound when its whole table is: one that initSharedInterface has not prepared
// must not be asked for anything. A row without a name is there not to be bound.
bool _isBound(const void* handle, const interfaceStruct& row) {
    const auto isComplete = [](const interfaceStruct& each) {
        return each.name[0] == '\0' || each.funcPtr != nullptr;
    };
    return handle != nullptr && row.funcPtr != nullptr &&
           std::all_of(std::begin(fpSharedCommonFuncs), std::end(fpSharedCommonFuncs), isComplete);
}

int _release(const void* device, const interfaceStruct& row) {
    return device != nullptr && row.funcPtr != nullptr ? _function<int()>(row)() : 0;
}

template <std::size_t Count>
void _closeLink(void*& handle, interfaceStruct (&table)[Count], int closeRow) {
    if (handle == nullptr || table[closeRow].funcPtr == nullptr) {
        return;
    }
    if (_function<int()>(table[closeRow])() == 0) {
        dlclose(handle);
    }
    handle = nullptr;
    _unbind(std::begin(table), std::end(table));
}

}  // namespace

cSPCommonInt::cSPCommonInt() {
    _commonHandle = openLinuxLib(sharedLibrary);
    const QZ::_LibraryBinding binding{"cSPCommonInt::cSPCommonInt", sharedLibrary, _commonHandle};
    if (binding.bind(fpSharedCommonFuncs, std::size(fpSharedCommonFuncs)) &&
        fpSharedCommonFuncs[INIT_SHARED_INTERFACE].funcPtr != nullptr) {
        _function<void()>(fpSharedCommonFuncs[INIT_SHARED_INTERFACE])();
    }
}

cSPCommonInt::~cSPCommonInt() {
    const int commRelease = _release(_busDevice, fpSharedCommonFuncs[INTERFACE_COMM_RELEASE]);
    const int libRelease = _release(_libDevice, fpSharedCommonFuncs[INTERFACE_LIB_RELEASE]);
    _unbind(std::begin(fpSharedCommonFuncs), std::end(fpSharedCommonFuncs));
    if (_commonHandle != nullptr && commRelease == 0 && libRelease == 0) {
        dlclose(_commonHandle);
    }
    _commLinkHandle = nullptr;
    _libLinkHandle = nullptr;
    _commonHandle = nullptr;
    _busDevice = nullptr;
    _libDevice = nullptr;
}

int cSPCommonInt::initializeCommLink() {
    QZ::_printMessage("\nabout to open the library %s", sharedLibrary);
    _commLinkHandle = openLinuxLib(sharedLibrary);
    const QZ::_LibraryBinding binding{"cSPCommonInt::initializeCommLink", sharedLibrary,
                                      _commLinkHandle};
    return binding.bind(fpSharedCommFuncs, std::size(fpSharedCommFuncs)) ? 1 : 0;
}

int cSPCommonInt::initializeLibLink(char* name) {
    const char* const operation = "cSPCommonInt::initializeLibLink";
    QZ::_printMessage("\nabout to open the library %s", name);
    _libLinkHandle = openLinuxLib(name);
    const QZ::_LibraryBinding binding{operation, name, _libLinkHandle};
    const bool bound = binding.bind(fpSharedLibFuncs, std::size(fpSharedLibFuncs));
    QZ::logItem(operation, "about to return");
    return bound ? 1 : 0;
}

int cSPCommonInt::getCommonDevice() {
    const interfaceStruct& row = fpSharedCommFuncs[GetSharedCommDevice];
    if (_commLinkHandle == nullptr || row.funcPtr == nullptr) {
        return 0;
    }
    // Nobody asks for the object, but the library stores it.
    cBusComm* dropped = nullptr;
    return _function<int(cBusComm**)>(row)(&dropped);
}

int cSPCommonInt::getCommonCommDevice(cBusComm** out) {
    const char* const operation = "cSPCommonInt::getCommonCommDevice";
    QZ::logItem(operation, "in the routine");
    const interfaceStruct& row = fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE];
    if (!_isBound(_commonHandle, row)) {
        // The message names another table than the one looked at; who reads logs knows it so.
        QZ::logItem(operation,
                    "hCommonDevice == NULL || "
                    "fpSharedLibFuncs[GET_SHARED_COMM_DEVICE].funcPtr == NULL");
        return notAvailable;
    }
    QZ::logItem(operation,
                "hCommonDevice != NULL && "
                "fpSharedCommonFuncs[GET_SHARED_COMM_DEVICE].funcPtr != NULL");
    if (_busDevice != nullptr) {
        *out = _busDevice;
        QZ::logItem(operation, "pBusDevice already stored so returning it");
        return 0;
    }
    const int status = _function<int(cBusComm**)>(row)(out);
    _busDevice = *out;
    const auto value = reinterpret_cast<std::intptr_t>(_busDevice);
    QZ::logItem(operation, "pBusDevice not already stored so retrieving it deviceptr [" +
                               std::to_string(value) + "] and retVal [" + std::to_string(status) +
                               "]");
    return status;
}

int cSPCommonInt::getCommonLibDevice(cBusComm* bus, cDeviceLib** out) {
    const char* const operation = "cSPCommonInt::getCommonLibDevice";
    QZ::logItem(operation, "in the routine");
    const interfaceStruct& row = fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE];
    if (!_isBound(_commonHandle, row)) {
        QZ::logItem(operation,
                    "hCommonDevice == NULL || "
                    "fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].funcPtr == NULL");
        return notAvailable;
    }
    QZ::logItem(operation,
                "hCommonDevice != NULL && "
                "fpSharedCommonFuncs[GET_SHARED_LIB_DEVICE].funcPtr != NULL");
    if (_libDevice != nullptr) {
        *out = _libDevice;
        QZ::logItem(operation, "pLibDevice already stored so returning it");
        return 0;
    }
    const int status = _function<int(cBusComm*, cDeviceLib**)>(row)(bus, out);
    _libDevice = *out;
    QZ::logItem(operation, "pLibDevice not already stored so retrieving it");
    return status;
}

int cSPCommonInt::getLibDevice(cBusComm* bus, cDeviceLib** out) {
    const interfaceStruct& row = fpSharedLibFuncs[OpenLibrary];
    if (_libLinkHandle == nullptr || row.funcPtr == nullptr) {
        return notAvailable;
    }
    return _function<int(cDeviceLib**, cBusComm*)>(row)(out, bus);
}

void cSPCommonInt::closeLibLink() {
    _closeLink(_libLinkHandle, fpSharedLibFuncs, CloseLibrary);
}

void cSPCommonInt::closeCommLink() {
    _closeLink(_commLinkHandle, fpSharedCommFuncs, InterfaceClose);
}
