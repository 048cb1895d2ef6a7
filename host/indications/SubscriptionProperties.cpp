// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionProperties.h"

#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "XmlObjects.h"

namespace QZ {

using namespace Pegasus;

namespace {

[[noreturn]] void _refuse(const std::string& sentence) {
    throw CIMException(CIM_ERR_INVALID_PARAMETER, make_String(sentence));
}

// A client may send what it wrote as text.
CIMValue _typed(const PropertyDeclaration& property, const CIMValue& given) {
    if (given.isNull()) {
        return CIMValue(property.type, property.isArray);
    }
    if (given.getType() == property.type && given.isArray() == property.isArray) {
        return given;
    }
    if (given.isArray() || property.isArray) {
        _refuse(property.name + ": a value of another type expected");
    }
    CimUntypedValue untyped;
    untyped.isNull = false;
    untyped.texts.emplace_back(make_string(given.toString()));
    try {
        if (property.type == CIMTYPE_REFERENCE) {
            return CIMValue(CIMObjectPath(given.toString()));
        }
        return typedValue(untyped, property.type, false);
    } catch (const std::exception& error) {
        _refuse(property.name + ": " + error.what());
    } catch (const Exception& exception) {
        _refuse(property.name + ": " + make_string(exception.getMessage()));
    }
}

// Values of a property that has a list of them.
void _checkMapped(const PropertyDeclaration& property, const CIMValue& value) {
    if (property.type != CIMTYPE_UINT16 || property.isArray || value.isNull() ||
        !property.qualifiers.find("ValueMap")) {
        return;
    }
    if (property.meaning(make_string(value.toString())).empty()) {
        _refuse(property.name + ": the server knows no value " + make_string(value.toString()));
    }
}

}  // namespace

CIMValue valueOf(const CIMConstInstance& instance, const char* property) {
    const Uint32 at = instance.findProperty(CIMName(property));
    return at == PEG_NOT_FOUND ? CIMValue() : instance.getProperty(at).getValue();
}

std::string textOf(const CIMConstInstance& instance, const char* property) {
    const CIMValue value = valueOf(instance, property);
    return value.isNull() ? std::string() : make_string(value.toString());
}

Uint16 numberOf(const CIMConstInstance& instance, const char* property) {
    Uint16 number = 0;
    const CIMValue value = valueOf(instance, property);
    if (!value.isNull()) {
        value.get(number);
    }
    return number;
}

CIMObjectPath referenceOf(const CIMConstInstance& instance, const char* property) {
    CIMObjectPath path;
    const CIMValue value = valueOf(instance, property);
    if (!value.isNull()) {
        value.get(path);
    }
    return localPath(path, instance.getPath().getNameSpace());
}

CIMObjectPath localPath(CIMObjectPath path, const CIMNamespaceName& nameSpace) {
    path.setHost(String());
    if (path.getNameSpace().isNull()) {
        path.setNameSpace(nameSpace);
    }
    return path;
}

void setValue(CIMInstance& instance, const std::string& property, const CIMValue& value) {
    const CIMName name(make_String(property));
    const Uint32 at = instance.findProperty(name);
    if (at != PEG_NOT_FOUND) {
        instance.getProperty(at).setValue(value);
    } else {
        instance.addProperty(CIMProperty(name, value));
    }
}

void takeProperty(const ClassDeclaration& declared, const CIMConstProperty& given,
                  CIMInstance& instance) {
    const std::string name = make_string(given.getName().getString());
    const PropertyDeclaration* const property = declared.find(name);
    if (!property) {
        _refuse(declared.name + " has no property " + name);
    }
    CIMValue value = _typed(*property, given.getValue());
    _checkMapped(*property, value);
    if (property->type == CIMTYPE_REFERENCE && !value.isNull()) {
        CIMObjectPath path;
        value.get(path);
        value.set(localPath(path, instance.getPath().getNameSpace()));
    }
    setValue(instance, property->name, value);
}

CIMInstance completed(const CIMInstance& instance, const ClassDeclaration& declared) {
    CIMInstance complete(instance.getClassName());
    complete.setPath(instance.getPath());
    for (const PropertyDeclaration& property : declared.properties) {
        const CIMName name(make_String(property.name));
        const Uint32 at = instance.findProperty(name);
        complete.addProperty(CIMProperty(name, at == PEG_NOT_FOUND
                                                   ? CIMValue(property.type, property.isArray)
                                                   : instance.getProperty(at).getValue()));
    }
    return complete;
}

}  // namespace QZ
