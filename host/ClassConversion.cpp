// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassConversion.h"

#include "CimText.h"

namespace QZ {

using namespace Pegasus;

namespace {

CIMName _name(const std::string& text) {
    return text.empty() ? CIMName() : CIMName(make_String(text));
}

template <class Element>
void _addQualifiers(const QualifierList& list, Element& element) {
    for (const CIMQualifier& qualifier : list) {
        element.addQualifier(qualifier.clone());
    }
}

template <class Element>
QualifierList _qualifiers(const Element& element) {
    QualifierList list;
    for (Uint32 i = 0; i < element.getQualifierCount(); ++i) {
        list.add(element.getQualifier(i).clone());
    }
    return list;
}

// A default of the property's type, also where none is given.
CIMValue _default(const PropertyDeclaration& declared) {
    return declared.defaultValue.isNull()
               ? CIMValue(declared.type, declared.isArray, declared.arraySize)
               : declared.defaultValue;
}

PropertyDeclaration _declaration(const CIMConstProperty& property, const std::string& className) {
    PropertyDeclaration declared;
    declared.name = nameText(property.getName());
    declared.type = property.getType();
    declared.isArray = property.isArray();
    declared.arraySize = property.getArraySize();
    declared.referenceClass = nameText(property.getReferenceClassName());
    declared.origin =
        property.getClassOrigin().isNull() ? className : nameText(property.getClassOrigin());
    declared.isPropagated = property.getPropagated();
    declared.qualifiers = _qualifiers(property);
    declared.defaultValue = property.getValue();
    return declared;
}

}  // namespace

CIMClass makeCimClass(const ClassDeclaration& declared) {
    CIMClass result(_name(declared.name), _name(declared.superclass));
    _addQualifiers(declared.qualifiers, result);
    for (const PropertyDeclaration& property : declared.properties) {
        CIMProperty made(_name(property.name), _default(property), property.arraySize,
                         _name(property.referenceClass), _name(property.origin),
                         property.isPropagated);
        _addQualifiers(property.qualifiers, made);
        result.addProperty(made);
    }
    return result;
}

ClassDeclaration makeDeclaration(const CIMConstClass& cimClass) {
    ClassDeclaration declared;
    declared.name = nameText(cimClass.getClassName());
    declared.superclass = nameText(cimClass.getSuperClassName());
    declared.qualifiers = _qualifiers(cimClass);
    for (Uint32 i = 0; i < cimClass.getPropertyCount(); ++i) {
        declared.properties.push_back(_declaration(cimClass.getProperty(i), declared.name));
    }
    return declared;
}

std::string nameText(const CIMName& name) {
    return name.isNull() ? std::string() : make_string(name.getString());
}

}  // namespace QZ
