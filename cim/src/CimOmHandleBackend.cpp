// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <tavqz/CimOmHandleBackend.h>

#include <Pegasus/Common/Exception.h>

#include <mutex>
#include <utility>

namespace Pegasus {

[[noreturn]] static void _refuse(const char* operation) {
    throw CIMException(CIM_ERR_NOT_SUPPORTED,
                       String("no CIM server here answers a provider's ") + operation);
}

CimOmHandleBackend::CimOmHandleBackend() = default;
CimOmHandleBackend::~CimOmHandleBackend() = default;

CIMClass CimOmHandleBackend::getClass(const OperationContext&, const CIMNamespaceName&,
                                      const CIMName&, Boolean, Boolean, Boolean,
                                      const CIMPropertyList&) {
    _refuse("getClass");
}

CIMInstance CimOmHandleBackend::getInstance(const OperationContext&, const CIMNamespaceName&,
                                            const CIMObjectPath&, Boolean, Boolean, Boolean,
                                            const CIMPropertyList&) {
    _refuse("getInstance");
}

Array<CIMInstance> CimOmHandleBackend::enumerateInstances(const OperationContext&,
                                                          const CIMNamespaceName&, const CIMName&,
                                                          Boolean, Boolean, Boolean, Boolean,
                                                          const CIMPropertyList&) {
    _refuse("enumerateInstances");
}

Array<CIMObjectPath> CimOmHandleBackend::enumerateInstanceNames(const OperationContext&,
                                                                const CIMNamespaceName&,
                                                                const CIMName&) {
    _refuse("enumerateInstanceNames");
}

CIMObjectPath CimOmHandleBackend::createInstance(const OperationContext&, const CIMNamespaceName&,
                                                 const CIMInstance&) {
    _refuse("createInstance");
}

void CimOmHandleBackend::modifyInstance(const OperationContext&, const CIMNamespaceName&,
                                        const CIMInstance&, Boolean, const CIMPropertyList&) {
    _refuse("modifyInstance");
}

void CimOmHandleBackend::deleteInstance(const OperationContext&, const CIMNamespaceName&,
                                        const CIMObjectPath&) {
    _refuse("deleteInstance");
}

void CimOmHandleBackend::disallowProviderUnload() {}
void CimOmHandleBackend::allowProviderUnload() {}

namespace {

struct Installed {
    std::mutex mutex;
    // Handles may be made while the process ends, so there is always one.
    std::shared_ptr<CimOmHandleBackend> backend = std::make_shared<CimOmHandleBackend>();
};

Installed& _installed() {
    static auto* const installed = new Installed;
    return *installed;
}

}  // namespace

void CimOmHandleBackend::install(std::shared_ptr<CimOmHandleBackend> backend) {
    if (!backend)
        backend = std::make_shared<CimOmHandleBackend>();
    Installed& place = _installed();
    const std::lock_guard<std::mutex> lock(place.mutex);
    // The one that was there goes with `backend`, after the lock: it may be long about it.
    place.backend.swap(backend);
}

std::shared_ptr<CimOmHandleBackend> CimOmHandleBackend::installed() {
    Installed& place = _installed();
    const std::lock_guard<std::mutex> lock(place.mutex);
    return place.backend;
}

}  // namespace Pegasus
