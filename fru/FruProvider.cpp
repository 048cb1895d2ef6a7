// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FruProvider.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "File.h"
#include "FruList.h"
#include "FruStore.h"
#include "FruUnits.h"
#include "Gatherers.h"
#include "Instances.h"
#include "SimpleInstanceResponseHandler.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _requireClass(const CIMObjectPath& path) {
    if (!String::equalNoCase(path.getClassName().getString(), _fruClassName))
        throw CIMException(CIM_ERR_INVALID_CLASS, String());
}

// Says of a recorded unit where it is from.
void _markStored(CIMInstance& unit) {
    const CIMName name("ElementName");
    const Uint32 index = unit.findProperty(name);
    // What a client recorded as something else than a text gives way.
    if (index != PEG_NOT_FOUND &&
        !CIMValue(CIMTYPE_STRING, false).typeCompatible(unit.getProperty(index).getValue()))
        unit.removeProperty(index);
    setProperty(unit, name, CIMValue(String("GETFRU")));
}

void _appendStored(FruList& list, const CIMObjectPath& classPath) {
    const MutexLock lock(_storeMutex);
    try {
        CimObjectFile& store = _fruStore();
        store.open(ReadMode);
        for (CIMInstance& unit : store.enumerateInstances(classPath)) {
            _markStored(unit);
            list.append(unit);
        }
        store.close();
    } catch (...) {
        // What else the machine has is still to be told.
    }
}

// Runs change(store), which is not left open, nor its lock held, if that fails. What is thrown that
// tells nothing gets the message unknown.
template <class Change>
void _changeStore(const char* unknown, Change change) {
    const MutexLock lock(_storeMutex);
    try {
        CimObjectFile& store = _fruStore();
        store.open(ReadMode | WriteMode);
        try {
            change(store);
        } catch (...) {
            store.abandon();
            throw;
        }
        store.close();
    } catch (const CIMException&) {
        throw;
    } catch (const std::exception& failure) {
        throw CIMException(CIM_ERR_FAILED, make_String(std::string(failure.what())));
    } catch (...) {
        throw CIMException(CIM_ERR_FAILED, unknown);
    }
}

// The instance under the path that its own properties make.
CIMInstance _keyed(const CIMInstance& instance) {
    CIMInstance keyed = instance.clone();
    CIMObjectPath path = instance.getPath();
    path.setKeyBindings(_fruKeys(instance));
    keyed.setPath(path);
    return keyed;
}

// A path of nothing but class and keys, by which units are told apart.
CIMObjectPath _localPath(const CIMObjectPath& path) {
    return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(), path.getKeyBindings());
}

}  // namespace

void FruProvider::initialize(CIMOMHandle& handle) {
    _fruServer = &handle;
}

void FruProvider::terminate() {
    delete this;
}

void FruProvider::enumerateInstances(const OperationContext&, const CIMObjectPath& classPath,
                                     const Boolean, const Boolean, const CIMPropertyList&,
                                     InstanceResponseHandler& handler) {
    _requireClass(classPath);
    handler.processing();
    FruList list;
    _appendStored(list, classPath);
    for (const auto gather : {_getIpmiFruInstances, _getMpaFruInstances, _getRaidFruInstances}) {
        for (const CIMInstance& unit : gather())
            _insert(list, unit);
    }
    for (const CIMInstance& unit : list.getUnits())
        handler.deliver(unit);
    handler.complete();
}

void FruProvider::enumerateInstanceNames(const OperationContext& context,
                                         const CIMObjectPath& classPath,
                                         ObjectPathResponseHandler& handler) {
    SimpleInstanceResponseHandler collected;
    enumerateInstances(context, classPath, false, false, CIMPropertyList(), collected);
    handler.processing();
    const Array<CIMInstance>& units = collected.getInstances();
    for (Uint32 i = 0; i < units.size(); ++i)
        handler.deliver(units[i].getPath());
    handler.complete();
}

void FruProvider::getInstance(const OperationContext& context, const CIMObjectPath& instancePath,
                              const Boolean includeQualifiers, const Boolean includeClassOrigin,
                              const CIMPropertyList&, InstanceResponseHandler& handler) {
    SimpleInstanceResponseHandler collected;
    enumerateInstances(context, instancePath, includeQualifiers, includeClassOrigin,
                       CIMPropertyList(), collected);
    handler.processing();
    const CIMObjectPath asked = _localPath(instancePath);
    const Array<CIMInstance>& units = collected.getInstances();
    for (Uint32 i = 0; i < units.size(); ++i) {
        if (_localPath(units[i].getPath()) == asked) {
            handler.deliver(units[i]);
            break;
        }
    }
    handler.complete();
}

void FruProvider::createInstance(const OperationContext&, const CIMObjectPath& instancePath,
                                 const CIMInstance& instance, ObjectPathResponseHandler& handler) {
    _requireClass(instancePath);
    handler.processing();
    _changeStore("", [&](CimObjectFile& store) { store.createInstance(_keyed(instance)); });
    handler.complete();
}

void FruProvider::modifyInstance(const OperationContext&, const CIMObjectPath& instancePath,
                                 const CIMInstance& instance, const Boolean, const CIMPropertyList&,
                                 ResponseHandler& handler) {
    _requireClass(instancePath);
    handler.processing();
    _changeStore("...", [&](CimObjectFile& store) { store.modifyInstance(_keyed(instance)); });
    handler.complete();
}

void FruProvider::deleteInstance(const OperationContext&, const CIMObjectPath& instancePath,
                                 ResponseHandler& handler) {
    _requireClass(instancePath);
    handler.processing();
    _changeStore("...", [&](CimObjectFile& store) { store.deleteInstance(instancePath); });
    handler.complete();
}

}  // namespace QZ
