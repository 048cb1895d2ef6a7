// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RemoteSchema.h"

#include <algorithm>

#include "CimText.h"
#include "ClassConversion.h"

namespace QZ {

using namespace Pegasus;

namespace {

// PG_ProviderCapabilities.ProviderType of a provider of instances.
constexpr Uint16 _instanceProviderType = 2;

// The value of a property, or nothing where it is not there, null or of another type.
template <class Value>
Value _value(const CIMInstance& instance, const char* name, CIMType type, bool isArray) {
    Value value = Value();
    const Uint32 at = instance.findProperty(name);
    if (at != PEG_NOT_FOUND) {
        const CIMValue& found = instance.getProperty(at).getValue();
        if (found.getType() == type && bool(found.isArray()) == isArray && !found.isNull()) {
            found.get(value);
        }
    }
    return value;
}

std::string _string(const CIMInstance& instance, const char* name) {
    return make_string(_value<String>(instance, name, CIMTYPE_STRING, false));
}

bool _isOfInstances(const CIMInstance& capability) {
    const auto types = _value<Array<Uint16>>(capability, "ProviderType", CIMTYPE_UINT16, true);
    for (Uint32 i = 0; i < types.size(); ++i) {
        if (types[i] == _instanceProviderType) {
            return true;
        }
    }
    return false;
}

void _register(const CIMInstance& capability, Registration& registration) {
    const ProviderEntry provider = {_string(capability, "ProviderModuleName"), "",
                                    _string(capability, "ProviderName")};
    const auto spaces = _value<Array<String>>(capability, "Namespaces", CIMTYPE_STRING, true);
    for (Uint32 i = 0; i < spaces.size(); ++i) {
        registration.add(provider, make_string(spaces[i]), _string(capability, "ClassName"));
    }
}

// A class whose instances are not those of another one, too.
bool _canHaveInstances(const ClassRepository& classes, const ClassDeclaration& declared) {
    return !declared.isAbstract() && !declared.isIndication() &&
           classes.subclasses(declared.name, false).empty();
}

}  // namespace

Schema makeRemoteSchema(const std::vector<CIMClass>& classes,
                        const std::vector<CIMInstance>& capabilities) {
    Schema schema;
    for (const CIMClass& found : classes) {
        schema.classes.add(makeDeclaration(found));
    }
    for (const CIMInstance& capability : capabilities) {
        if (_isOfInstances(capability)) {
            _register(capability, schema.registration);
        }
    }
    if (capabilities.empty()) {
        for (const auto& declared : schema.classes.classes()) {
            if (_canHaveInstances(schema.classes, *declared)) {
                schema.registration.add({}, MODEL_NAMESPACE, declared->name);
            }
        }
    }
    return schema;
}

}  // namespace QZ
