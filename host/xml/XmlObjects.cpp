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

CIMKeyBinding::Type _keyTypeOf(CIMType type) {
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return CIMKeyBinding::BOOLEAN;
        case CIMTYPE_STRING:
        case CIMTYPE_CHAR16:
        case CIMTYPE_DATETIME:
            return CIMKeyBinding::STRING;
        case CIMTYPE_REFERENCE:
            throw XmlValueError("KEYVALUE is of type reference");
        default:
            return CIMKeyBinding::NUMERIC;
    }
}

// What kind of key it is, by VALUETYPE or by TYPE, which must agree.
CIMKeyBinding::Type _keyType(const XmlElement& element) {
    const std::string* const kind = element.attribute("VALUETYPE");
    const bool isTyped = element.attribute("TYPE") != nullptr;
    CIMKeyBinding::Type type = CIMKeyBinding::STRING;
    if (kind) {
        type = *kind == "boolean"   ? CIMKeyBinding::BOOLEAN
               : *kind == "numeric" ? CIMKeyBinding::NUMERIC
                                    : CIMKeyBinding::STRING;
        if (isTyped && type != _keyTypeOf(_type(element))) {
            throw XmlValueError("VALUETYPE and TYPE of KEYVALUE do not go together");
        }
    } else if (isTyped) {
        type = _keyTypeOf(_type(element));
    }
    return type;
}

CIMType _numericType(const XmlElement& element) {
    if (element.attribute("TYPE")) {
        return _type(element);
    }
    // An integer of either sign: reals are no keys.
    const std::size_t first = element.text.find_first_not_of(" \t\r\n");
    return first != element.text.npos && element.text[first] == '-' ? CIMTYPE_SINT64
                                                                    : CIMTYPE_UINT64;
}

// Fails for a text that is no value of the key's type.
void _checkKey(const XmlElement& element, CIMKeyBinding::Type type) {
    CimUntypedValue value;
    value.isNull = false;
    value.texts.emplace_back(element.text);
    if (type == CIMKeyBinding::BOOLEAN) {
        typedValue(value, CIMTYPE_BOOLEAN, false);
    } else if (type == CIMKeyBinding::NUMERIC) {
        typedValue(value, _numericType(element), false);
    }
}

CIMKeyBinding _keyValue(const CIMName& name, const XmlElement& element) {
    if (!element.children.empty()) {
        throw XmlLayoutError("KEYVALUE holds elements");
    }
    const CIMKeyBinding::Type type = _keyType(element);
    _checkKey(element, type);
    try {
        return {name, _string(element.text), type};
    } catch (const Exception&) {
        throw XmlValueError("the key " + make_string(name.getString()) + " is \"" + element.text +
                            "\"");
    }
}

// Each path within a path doubles the escapes of the innermost one's text.
constexpr int MAX_NESTED_PATHS = 4;
constexpr Uint32 MAX_PATH_SIZE = Uint32(64) * 1024;

CIMObjectPath _instanceName(const XmlElement& element, int depth);
CIMObjectPath _anyPath(const XmlElement& element, int depth);

String _pathText(const XmlElement& element, int depth) {
    if (depth >= MAX_NESTED_PATHS) {
        throw XmlValueError("paths are nested too deeply");
    }
    String text = _anyPath(element, depth + 1).toString();
    if (text.size() > MAX_PATH_SIZE) {
        throw XmlValueError("a path is too long to be a key");
    }
    return text;
}

CIMKeyBinding _key(const CIMName& name, const XmlElement& element, int depth) {
    if (element.name == "KEYVALUE") {
        return _keyValue(name, element);
    }
    if (element.name == "VALUE.REFERENCE") {
        return {name, _pathText(element, depth), CIMKeyBinding::REFERENCE};
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
CIMObjectPath _fullPath(const XmlElement& element, const char* space, const char* object,
                        int depth) {
    CIMObjectPath path;
    const XmlElement& last = _requiredChild(element, object);
    if (last.name == "CLASSNAME") {
        path.setClassName(readName(requiredAttribute(last, "NAME")));
    } else {
        path = _instanceName(last, depth);
    }
    const XmlElement* local = &_requiredChild(element, space);
    if (local->name == "NAMESPACEPATH") {
        const std::string& host = _requiredChild(*local, "HOST").text;
        try {
            path.setHost(_string(host));
        } catch (const Exception&) {
            throw XmlValueError("\"" + host + "\" is no host");
        }
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

Uint32 _arraySize(const XmlElement& element) {
    const std::string* const text = element.attribute("ARRAYSIZE");
    if (!text) {
        return 0;
    }
    Uint32 size = 0;
    const auto [stop, error] = std::from_chars(text->data(), text->data() + text->size(), size);
    if (error != std::errc() || stop != text->data() + text->size()) {
        throw XmlValueError("ARRAYSIZE is \"" + *text + "\"");
    }
    return size;
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
    const CIMValue value = _propertyValue(element, _type(element), isArray);
    try {
        return CIMProperty(name, value, _arraySize(element), CIMName(), origin, isPropagated);
    } catch (const Exception&) {
        throw XmlValueError(make_string(name.getString()) + " has not as many values as ARRAYSIZE");
    }
}

// Of properties and of keys: each is compared with all before it.
constexpr std::size_t MAX_MEMBERS = 512;

void _checkCount(std::size_t count, const XmlElement& element) {
    if (count > MAX_MEMBERS) {
        throw XmlValueError(element.name + " holds more than " + std::to_string(MAX_MEMBERS) +
                            " properties or keys");
    }
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
            _checkCount(object.getPropertyCount() + std::size_t(1), element);
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

bool _hasKey(const Array<CIMKeyBinding>& keys, const CIMName& name) {
    for (Uint32 i = 0; i < keys.size(); ++i) {
        if (keys[i].getName().equal(name)) {
            return true;
        }
    }
    return false;
}

CIMObjectPath _instanceName(const XmlElement& element, int depth) {
    Array<CIMKeyBinding> keys;
    for (const XmlElement& child : element.children) {
        if (child.name == "KEYBINDING") {
            _checkCount(keys.size() + std::size_t(1), element);
            const CIMName name = readName(requiredAttribute(child, "NAME"));
            if (_hasKey(keys, name)) {
                throw XmlValueError("the key " + make_string(name.getString()) +
                                    " stands there twice");
            }
            keys.append(_key(name, _onlyChild(child), depth));
        } else if (element.children.size() == 1) {
            keys.append(_key(CIMName(UNNAMED_KEY), child, depth));
        } else {
            throw XmlLayoutError("INSTANCENAME holds " + child.name);
        }
    }
    return CIMObjectPath(String(), CIMNamespaceName(),
                         readName(requiredAttribute(element, "CLASSNAME")), keys);
}

CIMObjectPath _anyPath(const XmlElement& element, int depth) {
    const XmlElement& path = _onlyChild(element);
    if (path.name == "INSTANCENAME") {
        return _instanceName(path, depth);
    }
    if (path.name == "LOCALINSTANCEPATH") {
        return _fullPath(path, "LOCALNAMESPACEPATH", "INSTANCENAME", depth);
    }
    if (path.name == "INSTANCEPATH") {
        return _fullPath(path, "NAMESPACEPATH", "INSTANCENAME", depth);
    }
    if (path.name == "LOCALCLASSPATH") {
        return _fullPath(path, "LOCALNAMESPACEPATH", "CLASSNAME", depth);
    }
    if (path.name == "CLASSPATH") {
        return _fullPath(path, "NAMESPACEPATH", "CLASSNAME", depth);
    }
    if (path.name == "CLASSNAME") {
        return CIMObjectPath(String(), CIMNamespaceName(),
                             readName(requiredAttribute(path, "NAME")));
    }
    throw XmlLayoutError("a path expected, not " + path.name);
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
    return _instanceName(element, 0);
}

CIMObjectPath readAnyPath(const XmlElement& element) {
    return _anyPath(element, 0);
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
