// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "InteropInstances.h"

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Exception.h>

#include <set>

#include "CimText.h"
#include "ClassConversion.h"
#include "Product.h"
#include "System.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* SYSTEM_CLASS = "CIM_ComputerSystem";
constexpr const char* MANAGER_CLASS = "CIM_ObjectManager";
constexpr const char* MANAGER_NAME = "tavqz";

// Codes of the DMTF's classes.
constexpr Uint16 INFO_UNKNOWN = 0;       // CIM_Namespace.ClassInfo
constexpr Uint16 ORGANIZATION_DMTF = 2;  // CIM_RegisteredProfile.RegisteredOrganization
constexpr Uint16 NOT_ADVERTISED = 2;     // CIM_RegisteredProfile.AdvertiseTypes
constexpr Uint16 ENABLED = 2;            // CIM_EnabledLogicalElement.EnabledState
constexpr Uint16 INSTANCES = 2;          // PG_ProviderCapabilities.ProviderType
constexpr Uint16 INDICATIONS = 4;        // the same

// An instance in the making.
class Maker {
public:
    explicit Maker(const char* className) : _instance(CIMName(className)) {}

    template <class T>
    Maker& set(const char* property, const T& value) {
        _instance.addProperty(CIMProperty(CIMName(property), CIMValue(value)));
        return *this;
    }
    Maker& set(const char* property, const std::string& value) {
        return set(property, make_String(value));
    }
    Maker& set(const char* property, const char* value) { return set(property, String(value)); }

    CIMInstance make(const ClassRepository& classes) const {
        CIMInstance instance = _instance;
        const std::string name = make_string(instance.getClassName().getString());
        CIMObjectPath path = instance.buildPath(makeCimClass(*classes.find(name)));
        path.setNameSpace(CIMNamespaceName(INTEROP_NAMESPACE));
        instance.setPath(path);
        return instance;
    }

private:
    CIMInstance _instance;
};

template <class T>
Array<T> _one(const T& value) {
    Array<T> array;
    array.append(value);
    return array;
}

}  // namespace

String hostName() {
    const String name = make_String(System::getName());
    try {
        CIMObjectPath().setHost(name);
        return name.size() == 0 ? "localhost" : name;
    } catch (const Exception&) {
        return "localhost";
    }
}

std::vector<CIMInstance> InteropInstances::_namespaces() const {
    std::vector<CIMInstance> found;
    for (const char* const name : {INTEROP_NAMESPACE, MODEL_NAMESPACE}) {
        found.push_back(Maker("CIM_Namespace")
                            .set("SystemCreationClassName", SYSTEM_CLASS)
                            .set("SystemName", hostName())
                            .set("ObjectManagerCreationClassName", MANAGER_CLASS)
                            .set("ObjectManagerName", MANAGER_NAME)
                            .set("CreationClassName", "CIM_Namespace")
                            .set("Name", name)
                            .set("ClassInfo", INFO_UNKNOWN)
                            .make(_schema.interop));
    }
    return found;
}

std::vector<CIMInstance> InteropInstances::_objectManager() const {
    return {Maker(MANAGER_CLASS)
                .set("SystemCreationClassName", SYSTEM_CLASS)
                .set("SystemName", hostName())
                .set("CreationClassName", MANAGER_CLASS)
                .set("Name", MANAGER_NAME)
                .set("ElementName", "tavqz")
                .set("Description", "The embedded CIM server of tavqz")
                .set("Version", make_string(make_String(Product::getVersion())))
                .set("GatherStatisticalData", Boolean(false))
                .set("EnabledState", ENABLED)
                .make(_schema.interop)};
}

// How a client finds the profiles of a server at all: the one that says so of itself.
std::vector<CIMInstance> InteropInstances::_profiles() const {
    return {Maker("CIM_RegisteredProfile")
                .set("InstanceID", "tavqz:ProfileRegistration:1.0.0")
                .set("RegisteredOrganization", ORGANIZATION_DMTF)
                .set("RegisteredName", "Profile Registration")
                .set("RegisteredVersion", "1.0.0")
                .set("AdvertiseTypes", _one(NOT_ADVERTISED))
                .make(_schema.interop)};
}

// The names of what is registered, each once, in the order of the classes.
std::vector<CIMInstance> InteropInstances::_modules() const {
    std::vector<CIMInstance> found;
    std::set<std::string> seen;
    for (const auto& declared : _schema.classes.classes()) {
        const ProviderEntry* const entry =
            _schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        if (entry && seen.insert(entry->module).second) {
            found.push_back(Maker("PG_ProviderModule")
                                .set("Name", entry->module)
                                .set("Location", entry->location)
                                .make(_schema.interop));
        }
    }
    return found;
}

std::vector<CIMInstance> InteropInstances::_providers() const {
    std::vector<CIMInstance> found;
    std::set<std::pair<std::string, std::string>> seen;
    for (const auto& declared : _schema.classes.classes()) {
        const ProviderEntry* const entry =
            _schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        if (entry && seen.emplace(entry->module, entry->name).second) {
            found.push_back(Maker("PG_Provider")
                                .set("ProviderModuleName", entry->module)
                                .set("Name", entry->name)
                                .make(_schema.interop));
        }
    }
    return found;
}

std::vector<CIMInstance> InteropInstances::_capabilities() const {
    const struct {
        const ProviderEntry* (Registration::*find)(const std::string&, const std::string&) const;
        Uint16 type;
    } KINDS[] = {{&Registration::instanceProvider, INSTANCES},
                 {&Registration::indicationProvider, INDICATIONS}};
    std::vector<CIMInstance> found;
    for (const auto& declared : _schema.classes.classes()) {
        for (const auto& kind : KINDS) {
            const ProviderEntry* const entry =
                (_schema.registration.*kind.find)(MODEL_NAMESPACE, declared->name);
            if (entry) {
                found.push_back(Maker("PG_ProviderCapabilities")
                                    .set("ProviderModuleName", entry->module)
                                    .set("ProviderName", entry->name)
                                    .set("CapabilityID", declared->name)
                                    .set("ClassName", declared->name)
                                    .set("Namespaces", _one(String(MODEL_NAMESPACE)))
                                    .set("ProviderType", _one(kind.type))
                                    .make(_schema.interop));
            }
        }
    }
    return found;
}

std::vector<CIMInstance> InteropInstances::instances(const std::string& className) const {
    static const struct {
        const char* className;
        std::vector<CIMInstance> (InteropInstances::*make)() const;
    } CLASSES[] = {
        {"CIM_Namespace", &InteropInstances::_namespaces},
        {MANAGER_CLASS, &InteropInstances::_objectManager},
        {"CIM_RegisteredProfile", &InteropInstances::_profiles},
        {"PG_ProviderModule", &InteropInstances::_modules},
        {"PG_Provider", &InteropInstances::_providers},
        {"PG_ProviderCapabilities", &InteropInstances::_capabilities},
    };
    for (const auto& known : CLASSES) {
        if (sameName(known.className, className)) {
            return (this->*known.make)();
        }
    }
    return {};
}

}  // namespace QZ
