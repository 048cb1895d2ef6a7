// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMPropertyList.h>

namespace Pegasus {

static Boolean _contains(const Array<CIMName>& names, const CIMName& name) {
    for (Uint32 i = 0; i < names.size(); ++i) {
        if (names[i] == name)
            return true;
    }
    return false;
}

CIMPropertyList::CIMPropertyList(const Array<CIMName>& propertyNames) {
    set(propertyNames);
}

void CIMPropertyList::set(const Array<CIMName>& propertyNames) {
    for (Uint32 i = 0; i < propertyNames.size(); ++i) {
        if (propertyNames[i].isNull())
            throw UninitializedObjectException();
    }
    _names = propertyNames;
    _null = false;
}

void CIMPropertyList::clear() {
    _names.clear();
    _null = true;
}

Boolean CIMPropertyList::isNull() const {
    return _null;
}

Uint32 CIMPropertyList::size() const {
    return _names.size();
}

const CIMName& CIMPropertyList::operator[](Uint32 index) const {
    return _names[index];
}

Array<CIMName> CIMPropertyList::getPropertyNameArray() const {
    return _names;
}

void CIMPropertyList::append(Array<String>& propertyListArray) {
    const Array<String>& texts = propertyListArray;
    Array<CIMName> names;
    for (Uint32 i = 0; i < texts.size(); ++i) {
        const CIMName name(texts[i]);
        if (!_contains(names, name))
            names.append(name);
    }
    if (names.size() > 0)
        _names = names;
    _null = false;
}

Boolean CIMPropertyList::contains(const CIMName& name) const {
    return _contains(_names, name);
}

Boolean CIMPropertyList::useThisProperty(const CIMName& name) const {
    return _null || contains(name);
}

String CIMPropertyList::toString() const {
    if (_null)
        return "NULL";
    if (_names.size() == 0)
        return "EMPTY";
    String text = _names[0].getString();
    for (Uint32 i = 1; i < _names.size(); ++i)
        text.append(", ").append(_names[i].getString());
    return text;
}

}  // namespace Pegasus
