// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RaidProvider.h"

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/Exception.h>

#include <exception>

#include "CimText.h"
#include "RaidUnits.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* _key = "DeviceID";

constexpr struct {
    const char* name;
    std::vector<RaidUnit> (*read)();
} _classes[] = {{"TAVIRA_PhysicalDiskDrive", readRaidDisks},
                {"TAVIRA_RAIDController", readRaidControllers}};

// In the order in which the model declares them.
constexpr struct {
    const char* name;
    std::string RaidUnit::*text;
    bool isKeyOfUnits = false;  // which need it, if only to be empty
} _properties[] = {{_key, &RaidUnit::id},
                   {"FRU", &RaidUnit::fru},
                   {"Model", &RaidUnit::model, true},
                   {"Manufacturer", &RaidUnit::manufacturer, true},
                   {"Name", &RaidUnit::name},
                   {"Description", &RaidUnit::description}};

CIMInstance _instanceOf(const char* className, const CIMNamespaceName& nameSpace,
                        const RaidUnit& unit) {
    CIMInstance instance{CIMName(className)};
    for (const auto& property : _properties) {
        const std::string& text = unit.*property.text;
        if (!text.empty() || property.isKeyOfUnits)
            instance.addProperty(CIMProperty(CIMName(property.name), CIMValue(make_String(text))));
    }
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName(_key), make_String(unit.id), CIMKeyBinding::STRING));
    instance.setPath(CIMObjectPath(String(), nameSpace, CIMName(className), keys));
    return instance;
}

// The instances of the path's class now.
std::vector<CIMInstance> _instances(const CIMObjectPath& path) {
    const String asked = path.getClassName().getString();
    for (const auto& row : _classes) {
        if (!String::equalNoCase(asked, row.name))
            continue;
        try {
            std::vector<CIMInstance> instances;
            for (const RaidUnit& unit : row.read())
                instances.push_back(_instanceOf(row.name, path.getNameSpace(), unit));
            return instances;
        } catch (const std::exception& failure) {
            throw CIMException(CIM_ERR_FAILED, make_String(std::string(failure.what())));
        }
    }
    throw CIMException(CIM_ERR_INVALID_CLASS, asked);
}

bool _hasKeys(const CIMInstance& instance, const CIMObjectPath& path) {
    const auto local = [&](const CIMObjectPath& whole) {
        return CIMObjectPath(String(), CIMNamespaceName(), path.getClassName(),
                             whole.getKeyBindings());
    };
    return local(instance.getPath()) == local(path);
}

[[noreturn]] void _refuse(const char* operation) {
    throw CIMException(CIM_ERR_NOT_SUPPORTED, operation);
}

}  // namespace

void RaidProvider::initialize(CIMOMHandle&) {}

void RaidProvider::terminate() {
    delete this;
}

void RaidProvider::enumerateInstances(const OperationContext&, const CIMObjectPath& classPath,
                                      const Boolean, const Boolean, const CIMPropertyList&,
                                      InstanceResponseHandler& handler) {
    const std::vector<CIMInstance> instances = _instances(classPath);
    handler.processing();
    for (const CIMInstance& instance : instances)
        handler.deliver(instance);
    handler.complete();
}

void RaidProvider::enumerateInstanceNames(const OperationContext&, const CIMObjectPath& classPath,
                                          ObjectPathResponseHandler& handler) {
    const std::vector<CIMInstance> instances = _instances(classPath);
    handler.processing();
    for (const CIMInstance& instance : instances)
        handler.deliver(instance.getPath());
    handler.complete();
}

void RaidProvider::getInstance(const OperationContext&, const CIMObjectPath& instancePath,
                               const Boolean, const Boolean, const CIMPropertyList&,
                               InstanceResponseHandler& handler) {
    for (const CIMInstance& instance : _instances(instancePath)) {
        if (!_hasKeys(instance, instancePath))
            continue;
        handler.processing();
        handler.deliver(instance);
        handler.complete();
        return;
    }
    throw CIMException(CIM_ERR_NOT_FOUND, instancePath.toString());
}

void RaidProvider::createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                                  ObjectPathResponseHandler&) {
    _refuse("RaidProvider::createInstance");
}

void RaidProvider::modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                                  const Boolean, const CIMPropertyList&, ResponseHandler&) {
    _refuse("RaidProvider::modifyInstance");
}

void RaidProvider::deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) {
    _refuse("RaidProvider::deleteInstance");
}

}  // namespace QZ
