// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AssetIDProvider.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "AssetIDIndicationThread.h"
#include "LogItem.h"
#include "tavqz/cBusComm.h"

namespace QZ {

using namespace Pegasus;

namespace {

// The server that loaded the module; events are made through it.
CIMOMHandle* _cimomHandle = nullptr;

}  // namespace

AssetIDProvider::AssetIDProvider() {
    cBusComm* bus = nullptr;
    if (_spCommon.getCommonCommDevice(&bus) == 0 && bus != nullptr &&
        _spCommon.getCommonLibDevice(bus, &_spLibrary) == 0 && _spLibrary != nullptr) {
        _spFound = true;
        _spCount = bus->getServiceProcessorCount();
    }
    logItem("AssetIDProvider", "constructor exiting");
}

AssetIDProvider::~AssetIDProvider() {
    logItem("AssetIDProvider", "destructor entering");
    _stopThread();
    _spCommon.closeLibLink();
    _spCommon.closeCommLink();
    logItem("AssetIDProvider", "destructor exiting");
}

void AssetIDProvider::initialize(CIMOMHandle& handle) {
    _cimomHandle = &handle;
}

CIMOMHandle* AssetIDProvider::_serverHandle() {
    return _cimomHandle;
}

void AssetIDProvider::terminate() {
    // While the object is whole: the thread calls what a derived class may override.
    _stopThread();
    delete this;
}

void AssetIDProvider::createInstance(const OperationContext&, const CIMObjectPath&,
                                     const CIMInstance&, ObjectPathResponseHandler&) {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, "AssetIDProvider::createInstance");
}

void AssetIDProvider::deleteInstance(const OperationContext&, const CIMObjectPath&,
                                     ResponseHandler&) {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, "AssetIDProvider::deleteInstance");
}

void AssetIDProvider::createSubscription(const OperationContext&, const CIMObjectPath&,
                                         const Array<CIMObjectPath>&, const CIMPropertyList&,
                                         const Uint16) {}

void AssetIDProvider::modifySubscription(const OperationContext&, const CIMObjectPath&,
                                         const Array<CIMObjectPath>&, const CIMPropertyList&,
                                         const Uint16) {}

void AssetIDProvider::deleteSubscription(const OperationContext&, const CIMObjectPath&,
                                         const Array<CIMObjectPath>&) {}

}  // namespace QZ
