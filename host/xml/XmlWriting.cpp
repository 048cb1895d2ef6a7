// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "XmlWriting.h"

#include <stdexcept>

#include "XmlText.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _attribute(std::string& xml, const char* name, const String& value) {
    xml.append(" ").append(name).append("=\"");
    appendXmlText(xml, value);
    xml += '"';
}

void _attribute(std::string& xml, const char* name, const char* value) {
    xml.append(" ").append(name).append("=\"").append(value).append("\"");
}

// What of a flavor differs from the defaults of DSP0201.
void _flavor(std::string& xml, const CIMFlavor& flavor) {
    if (!flavor.hasFlavor(CIMFlavor::OVERRIDABLE)) {
        _attribute(xml, "OVERRIDABLE", "false");
    }
    if (!flavor.hasFlavor(CIMFlavor::TOSUBCLASS)) {
        _attribute(xml, "TOSUBCLASS", "false");
    }
    if (flavor.hasFlavor(CIMFlavor::TRANSLATABLE)) {
        _attribute(xml, "TRANSLATABLE", "true");
    }
}

void _qualifier(std::string& xml, const CIMConstQualifier& qualifier) {
    xml += "<QUALIFIER";
    _attribute(xml, "NAME", qualifier.getName().getString());
    _attribute(xml, "TYPE", cimTypeToString(qualifier.getType()));
    if (qualifier.getPropagated() != 0) {
        _attribute(xml, "PROPAGATED", "true");
    }
    _flavor(xml, qualifier.getFlavor());
    xml += '>';
    appendValue(xml, qualifier.getValue());
    xml += "</QUALIFIER>";
}

template <class Element>
void _qualifiers(std::string& xml, const Element& element, const XmlForm& form) {
    if (!form.includeQualifiers) {
        return;
    }
    for (Uint32 i = 0; i < element.getQualifierCount(); ++i) {
        _qualifier(xml, element.getQualifier(i));
    }
}

void _property(std::string& xml, const CIMConstProperty& property, const XmlForm& form,
               bool isPropagatedTold) {
    const CIMType type = property.getType();
    const bool isReference = type == CIMTYPE_REFERENCE;
    const bool isEmbedded = type == CIMTYPE_INSTANCE || type == CIMTYPE_OBJECT;
    const char* const element = isReference          ? "PROPERTY.REFERENCE"
                                : property.isArray() ? "PROPERTY.ARRAY"
                                                     : "PROPERTY";
    xml.append("<").append(element);
    _attribute(xml, "NAME", property.getName().getString());
    if (!isReference) {
        _attribute(xml, "TYPE", isEmbedded ? "string" : cimTypeToString(type));
        if (isEmbedded) {
            _attribute(xml, "EmbeddedObject", type == CIMTYPE_INSTANCE ? "instance" : "object");
        }
    } else if (!property.getReferenceClassName().isNull()) {
        _attribute(xml, "REFERENCECLASS", property.getReferenceClassName().getString());
    }
    if (property.isArray() && property.getArraySize() != 0) {
        _attribute(xml, "ARRAYSIZE", std::to_string(property.getArraySize()).c_str());
    }
    if (form.includeClassOrigin && !property.getClassOrigin().isNull()) {
        _attribute(xml, "CLASSORIGIN", property.getClassOrigin().getString());
    }
    if (isPropagatedTold && property.getPropagated()) {
        _attribute(xml, "PROPAGATED", "true");
    }
    xml += '>';
    _qualifiers(xml, property, form);
    appendValue(xml, property.getValue());
    xml.append("</").append(element).append(">");
}

template <class Object>
void _members(std::string& xml, const Object& object, const XmlForm& form, bool isPropagatedTold) {
    xml += '>';
    _qualifiers(xml, object, form);
    for (Uint32 i = 0; i < object.getPropertyCount(); ++i) {
        const CIMConstProperty property = object.getProperty(i);
        if (!form.selects || form.selects(property)) {
            _property(xml, property, form, isPropagatedTold);
        }
    }
}

// Whether a key's text may be a date or an interval: these are strings in a path.
bool _isDateTime(const String& text) {
    return text.size() == 25 && text[14] == Char16('.') &&
           (text[21] == Char16('+') || text[21] == Char16('-') || text[21] == Char16(':'));
}

void _key(std::string& xml, const CIMKeyBinding& key) {
    xml += "<KEYBINDING";
    _attribute(xml, "NAME", key.getName().getString());
    xml += '>';
    if (key.getType() == CIMKeyBinding::REFERENCE) {
        xml += "<VALUE.REFERENCE>";
        appendInstancePath(xml, CIMObjectPath(key.getValue()));
        xml += "</VALUE.REFERENCE>";
    } else {
        xml += "<KEYVALUE";
        _attribute(xml, "VALUETYPE",
                   key.getType() == CIMKeyBinding::BOOLEAN   ? "boolean"
                   : key.getType() == CIMKeyBinding::NUMERIC ? "numeric"
                                                             : "string");
        // A number may be of any type, and a path does not say of which.
        if (key.getType() == CIMKeyBinding::BOOLEAN) {
            _attribute(xml, "TYPE", "boolean");
        } else if (key.getType() == CIMKeyBinding::STRING && !_isDateTime(key.getValue())) {
            _attribute(xml, "TYPE", "string");
        }
        xml += '>';
        appendXmlText(xml, key.getValue());
        xml += "</KEYVALUE>";
    }
    xml += "</KEYBINDING>";
}

}  // namespace

void appendInstance(std::string& xml, const CIMConstInstance& instance, const XmlForm& form) {
    xml += "<INSTANCE";
    _attribute(xml, "CLASSNAME", instance.getClassName().getString());
    // Of an instance it is of interest only to those who ask where a property comes from.
    _members(xml, instance, form, form.includeClassOrigin);
    xml += "</INSTANCE>";
}

void appendClass(std::string& xml, const CIMConstClass& declared, const XmlForm& form) {
    xml += "<CLASS";
    _attribute(xml, "NAME", declared.getClassName().getString());
    if (!declared.getSuperClassName().isNull()) {
        _attribute(xml, "SUPERCLASS", declared.getSuperClassName().getString());
    }
    _members(xml, declared, form, true);
    xml += "</CLASS>";
}

void appendClassName(std::string& xml, const std::string& name) {
    xml += "<CLASSNAME NAME=\"";
    appendXmlText(xml, name);
    xml += "\"/>";
}

void appendInstanceName(std::string& xml, const CIMObjectPath& path) {
    xml += "<INSTANCENAME";
    _attribute(xml, "CLASSNAME", path.getClassName().getString());
    xml += '>';
    const Array<CIMKeyBinding>& keys = path.getKeyBindings();
    for (Uint32 i = 0; i < keys.size(); ++i) {
        _key(xml, keys[i]);
    }
    xml += "</INSTANCENAME>";
}

void appendLocalNamespace(std::string& xml, const CIMNamespaceName& space) {
    xml += "<LOCALNAMESPACEPATH>";
    const String& name = space.getString();
    Uint32 begin = 0;
    while (begin < name.size()) {
        Uint32 end = name.find(begin, Char16('/'));
        end = end == PEG_NOT_FOUND ? name.size() : end;
        xml += "<NAMESPACE";
        _attribute(xml, "NAME", name.subString(begin, end - begin));
        xml += "/>";
        begin = end + 1;
    }
    xml += "</LOCALNAMESPACEPATH>";
}

void appendInstancePath(std::string& xml, const CIMObjectPath& path) {
    if (path.getNameSpace().isNull()) {
        appendInstanceName(xml, path);
        return;
    }
    const bool hasHost = path.getHost().size() != 0;
    if (hasHost) {
        xml += "<INSTANCEPATH><NAMESPACEPATH><HOST>";
        appendXmlText(xml, path.getHost());
        xml += "</HOST>";
        appendLocalNamespace(xml, path.getNameSpace());
        xml += "</NAMESPACEPATH>";
    } else {
        xml += "<LOCALINSTANCEPATH>";
        appendLocalNamespace(xml, path.getNameSpace());
    }
    appendInstanceName(xml, path);
    xml += hasHost ? "</INSTANCEPATH>" : "</LOCALINSTANCEPATH>";
}

void appendFullInstancePath(std::string& xml, const CIMObjectPath& path) {
    if (path.getNameSpace().isNull()) {
        throw std::logic_error("a full path without a namespace");
    }
    if (path.getHost().size() != 0) {
        appendInstancePath(xml, path);
        return;
    }
    CIMObjectPath full = path;
    full.setHost("localhost");
    appendInstancePath(xml, full);
}

void appendQualifierDeclaration(std::string& xml, const XmlQualifierDeclaration& declared) {
    xml += "<QUALIFIER.DECLARATION NAME=\"";
    appendXmlText(xml, declared.name);
    xml += '"';
    _attribute(xml, "TYPE", cimTypeToString(declared.defaultValue.getType()));
    _attribute(xml, "ISARRAY", declared.defaultValue.isArray() ? "true" : "false");
    _flavor(xml, declared.flavor);
    xml.append("><SCOPE").append(declared.scope).append("/>");
    appendValue(xml, declared.defaultValue);
    xml += "</QUALIFIER.DECLARATION>";
}

}  // namespace QZ
