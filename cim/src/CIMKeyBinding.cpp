// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMValue.h>

#include "KeyNumber.h"

namespace Pegasus {

template class Array<CIMKeyBinding>;

// The type of a key whose value has the type `type`; throws where it cannot be a key.
static CIMKeyBinding::Type _keyType(CIMType type) {
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return CIMKeyBinding::BOOLEAN;
        case CIMTYPE_CHAR16:
        case CIMTYPE_STRING:
        case CIMTYPE_DATETIME:
            return CIMKeyBinding::STRING;
        case CIMTYPE_REFERENCE:
            return CIMKeyBinding::REFERENCE;
        case CIMTYPE_OBJECT:
        case CIMTYPE_INSTANCE:
            throw TypeMismatchException();
        default:
            return CIMKeyBinding::NUMERIC;
    }
}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const String& value, Type type)
    : _name(name), _value(value), _type(type) {}

CIMKeyBinding::CIMKeyBinding(const CIMName& name, const CIMValue& value) : _name(name) {
    if (value.isArray())
        throw TypeMismatchException();
    _type = _keyType(value.getType());
    _value = value.toString();
}

const CIMName& CIMKeyBinding::getName() const {
    return _name;
}

void CIMKeyBinding::setName(const CIMName& name) {
    _name = name;
}

const String& CIMKeyBinding::getValue() const {
    return _value;
}

void CIMKeyBinding::setValue(const String& value) {
    _value = value;
}

CIMKeyBinding::Type CIMKeyBinding::getType() const {
    return _type;
}

void CIMKeyBinding::setType(Type type) {
    _type = type;
}

// The text of a key as a value of type `type`. Throws where it is none.
static CIMValue _readValue(const String& text, CIMType type) {
    CIMValue value;
    switch (type) {
        case CIMTYPE_STRING:
            return CIMValue(text);
        case CIMTYPE_CHAR16:
            return CIMValue(Char16(text[0]));
        case CIMTYPE_DATETIME:
            return CIMValue(CIMDateTime(text));
        case CIMTYPE_REFERENCE:
            return CIMValue(CIMObjectPath(text));
        case CIMTYPE_BOOLEAN:
            if (String::equalNoCase(text, "TRUE"))
                return CIMValue(Boolean(true));
            if (String::equalNoCase(text, "FALSE"))
                return CIMValue(Boolean(false));
            break;
        default:
            if (readNumber(text, type, value))
                return value;
    }
    throw TypeMismatchException();
}

// By value because the interface says so. NOLINTNEXTLINE(performance-unnecessary-value-param)
Boolean CIMKeyBinding::equal(CIMValue value) {
    try {
        return !value.isArray() && _keyType(value.getType()) == _type &&
               value.equal(_readValue(_value, value.getType()));
    } catch (const Exception&) {
        return false;
    }
}

static Boolean _equalNumbers(const String& x, const String& y) {
    Uint64 naturalX = 0;
    Uint64 naturalY = 0;
    if (readUnsigned(x, naturalX) && readUnsigned(y, naturalY))
        return naturalX == naturalY;
    Sint64 integerX = 0;
    Sint64 integerY = 0;
    if (readSigned(x, integerX) && readSigned(y, integerY))
        return integerX == integerY;
    return String::equal(x, y);
}

static Boolean _equalReferences(const String& x, const String& y) {
    try {
        return CIMObjectPath(x) == CIMObjectPath(y);
    } catch (const Exception&) {
        return String::equal(x, y);
    }
}

Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y) {
    if (x.getName() != y.getName() || x.getType() != y.getType())
        return false;
    switch (x.getType()) {
        case CIMKeyBinding::REFERENCE:
            return _equalReferences(x.getValue(), y.getValue());
        case CIMKeyBinding::BOOLEAN:
            return String::equalNoCase(x.getValue(), y.getValue());
        case CIMKeyBinding::NUMERIC:
            return _equalNumbers(x.getValue(), y.getValue());
        default:
            return String::equal(x.getValue(), y.getValue());
    }
}

}  // namespace Pegasus
