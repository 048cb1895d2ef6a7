// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlObjects.h"

#include <Pegasus/Common/Exception.h>

#include <charconv>

#include "CimText.h"
#include "MofSyntax.h"

namespace QZ {

using namespace Pegasus;

namespace {

String _string(const std::string& text) {
    return String(text.data(), Uint32(text.size()));
}

bool _flag(const XmlElement& element, const char* name, bool absent) {
    const std::string* const text = element.attribute(name);
    return text ? *text == "true" : absent;
}

CIMType _type(const XmlElement& element) {
    CIMType type = CIMTYPE_STRING;
    const std::string& name = requiredAttribute(element, "TYPE");
    if (!mofType(name, type)) {
        throw XmlValueError("\"" + name + "\" is no type");
    }
    return type;
}

CIMKeyBinding _keyValue(const CIMName& name, const XmlElement& element) {
    const std::string* const kind = element.attribute("VALUETYPE");
    CIMKeyBinding::Type type = CIMKeyBinding::STRING;
    if (kind && *kind == "boolean") {
        type = CIMKeyBinding::BOOLEAN;
    } else if (kind && *kind == "numeric") {
        type = CIMKeyBinding::NUMERIC;
    } else if (kind && *kind != "string") {
        throw XmlLayoutError("VALUETYPE is \"" + *kind + "\"");
    }
    if (!element.children.empty()) {
        throw XmlLayoutError("KEYVALUE holds elements");
    }
    try {
        return {name, _string(element.text), type};
    } catch (const Exception&) {
        throw XmlValueError("the key " + make_string(name.getString()) + " is \"" + element.text +
                            "\"");
    }
}

CIMKeyBinding _key(const CIMName& name, const XmlElement& element) {
    if (element.name == "KEYVALUE") {
        return _keyValue(name, element);
    }
    if (element.name == "VALUE.REFERENCE") {
        return {name, readAnyPath(element).toString(), CIMKeyBinding::REFERENCE};
    }
    throw XmlLayoutError("KEYVALUE or VALUE.REFERENCE expected, not " + element.name);
}

const XmlElement& _onlyChild(const XmlElement& element) {
    if (element.children.size() != 1) {
        throw XmlLayoutError(element.name + " holds " + std::to_string(element.children.size()) +
                             " elements, not one");
    }
    return element.children.front();
}

const XmlElement& _requiredChild(const XmlElement& element, const char* name) {
    const XmlElement* const child = element.child(name);
    if (!child) {
        throw XmlLayoutError(element.name + " has no " + name);
    }
    return *child;
}

// A path within its namespace, and perhaps its host.
CIMObjectPath _fullPath(const XmlElement& element, const char* space, const char* object) {
    CIMObjectPath path;
    const XmlElement& last = _requiredChild(element, object);
    if (last.name == "CLASSNAME") {
        path.setClassName(readName(requiredAttribute(last, "NAME")));
    } else {
        path = readInstanceName(last);
    }
    const XmlElement* local = &_requiredChild(element, space);
    if (local->name == "NAMESPACEPATH") {
        path.setHost(_string(_requiredChild(*local, "HOST").text));
        local = &_requiredChild(*local, "LOCALNAMESPACEPATH");
    }
    path.setNameSpace(readNamespacePath(*local));
    return path;
}

CIMValue _propertyValue(const XmlElement& element, CIMType type, bool isArray) {
    const XmlElement* const value = element.child(isArray ? "VALUE.ARRAY" : "VALUE");
    return value ? typedValue(readUntypedValue(*value), type, isArray) : CIMValue(type, isArray);
}

CIMQualifier _qualifier(const XmlElement& element) {
    const bool isArray = element.child("VALUE.ARRAY") != nullptr;
    const CIMValue value = _propertyValue(element, _type(element), isArray);
    CIMFlavor flavor(CIMFlavor::NONE);
    flavor.addFlavor(_flag(element, "OVERRIDABLE", true) ? CIMFlavor::OVERRIDABLE
                                                         : CIMFlavor::DISABLEOVERRIDE);
    flavor.addFlavor(_flag(element, "TOSUBCLASS", true) ? CIMFlavor::TOSUBCLASS
                                                        : CIMFlavor::RESTRICTED);
    if (_flag(element, "TRANSLATABLE", false)) {
        flavor.addFlavor(CIMFlavor::TRANSLATABLE);
    }
    return CIMQualifier(readName(requiredAttribute(element, "NAME")), value, flavor,
                        _flag(element, "PROPAGATED", false));
}

template <class Object>
void _addQualifiers(const XmlElement& element, Object& object) {
    for (const XmlElement& child : element.children) {
        if (child.name == "QUALIFIER") {
            object.addQualifier(_qualifier(child));
        }
    }
}

CIMProperty _property(const XmlElement& element) {
    const CIMName name = readName(requiredAttribute(element, "NAME"));
    const std::string* const originText = element.attribute("CLASSORIGIN");
    const CIMName origin = originText ? readName(*originText) : CIMName();
    const bool isPropagated = _flag(element, "PROPAGATED", false);
    if (element.attribute("EmbeddedObject") || element.attribute("EMBEDDEDOBJECT")) {
        throw XmlValueError("embedded objects are not taken");
    }
    if (element.name == "PROPERTY.REFERENCE") {
        const std::string* const target = element.attribute("REFERENCECLASS");
        const XmlElement* const value = element.child("VALUE.REFERENCE");
        return CIMProperty(
            name, value ? CIMValue(readAnyPath(*value)) : CIMValue(CIMTYPE_REFERENCE, false), 0,
            target ? readName(*target) : CIMName(), origin, isPropagated);
    }
    const bool isArray = element.name == "PROPERTY.ARRAY";
    Uint32 arraySize = 0;
    if (const std::string* const size = element.attribute("ARRAYSIZE")) {
        std::from_chars(size->data(), size->data() + size->size(), arraySize);
    }
    return CIMProperty(name, _propertyValue(element, _type(element), isArray), arraySize, CIMName(),
                       origin, isPropagated);
}

bool _isProperty(const XmlElement& element) {
    return element.name == "PROPERTY" || element.name == "PROPERTY.ARRAY" ||
           element.name == "PROPERTY.REFERENCE";
}

// Adds what the class or instance holds; `withQualifiers` also those of it and its properties.
template <class Object>
void _addMembers(const XmlElement& element, Object& object, bool withQualifiers) {
    for (const XmlElement& child : element.children) {
        if (_isProperty(child)) {
            CIMProperty property = _property(child);
            if (withQualifiers) {
                _addQualifiers(child, property);
            }
            try {
                object.addProperty(property);
            } catch (const Exception&) {
                throw XmlValueError("the property " + make_string(property.getName().getString()) +
                                    " stands there twice");
            }
        } else if (child.name != "QUALIFIER" && child.name != "METHOD") {
            throw XmlLayoutError(element.name + " holds " + child.name);
        }
    }
    if (withQualifiers) {
        _addQualifiers(element, object);
    }
}

}  // namespace

const std::string& requiredAttribute(const XmlElement& element, const char* name) {
    const std::string* const value = element.attribute(name);
    if (!value) {
        throw XmlLayoutError(element.name + " has no " + name);
    }
    return *value;
}

CIMName readName(const std::string& text) {
    try {
        return CIMName(_string(text));
    } catch (const Exception&) {
        throw XmlValueError("\"" + text + "\" is no name");
    }
}

CIMNamespaceName readNamespacePath(const XmlElement& element) {
    std::string name;
    for (const XmlElement& child : element.children) {
        if (child.name != "NAMESPACE") {
            throw XmlLayoutError(element.name + " holds " + child.name);
        }
        name.append(name.empty() ? "" : "/").append(requiredAttribute(child, "NAME"));
    }
    if (name.empty()) {
        throw XmlLayoutError(element.name + " names no NAMESPACE");
    }
    try {
        return CIMNamespaceName(_string(name));
    } catch (const Exception&) {
        throw XmlValueError("\"" + name + "\" is no name of a namespace");
    }
}

CIMObjectPath readInstanceName(const XmlElement& element) {
    Array<CIMKeyBinding> keys;
    for (const XmlElement& child : element.children) {
        if (child.name == "KEYBINDING") {
            keys.append(_key(readName(requiredAttribute(child, "NAME")), _onlyChild(child)));
        } else if (element.children.size() == 1) {
            keys.append(_key(CIMName(UNNAMED_KEY), child));
        } else {
            throw XmlLayoutError("INSTANCENAME holds " + child.name);
        }
    }
    return CIMObjectPath(String(), CIMNamespaceName(),
                         readName(requiredAttribute(element, "CLASSNAME")), keys);
}

CIMObjectPath readAnyPath(const XmlElement& element) {
    const XmlElement& path = _onlyChild(element);
    if (path.name == "INSTANCENAME") {
        return readInstanceName(path);
    }
    if (path.name == "LOCALINSTANCEPATH") {
        return _fullPath(path, "LOCALNAMESPACEPATH", "INSTANCENAME");
    }
    if (path.name == "INSTANCEPATH") {
        return _fullPath(path, "NAMESPACEPATH", "INSTANCENAME");
    }
    if (path.name == "LOCALCLASSPATH") {
        return _fullPath(path, "LOCALNAMESPACEPATH", "CLASSNAME");
    }
    if (path.name == "CLASSPATH") {
        return _fullPath(path, "NAMESPACEPATH", "CLASSNAME");
    }
    if (path.name == "CLASSNAME") {
        return CIMObjectPath(String(), CIMNamespaceName(),
                             readName(requiredAttribute(path, "NAME")));
    }
    throw XmlLayoutError("a path expected, not " + path.name);
}

CIMInstance readInstance(const XmlElement& element) {
    CIMInstance instance(readName(requiredAttribute(element, "CLASSNAME")));
    // A client's qualifiers say nothing that the class does not.
    _addMembers(element, instance, false);
    return instance;
}

CIMClass readClass(const XmlElement& element) {
    const std::string* const superclass = element.attribute("SUPERCLASS");
    CIMClass result(readName(requiredAttribute(element, "NAME")),
                    superclass ? readName(*superclass) : CIMName());
    _addMembers(element, result, true);
    return result;
}

}  // namespace QZ
