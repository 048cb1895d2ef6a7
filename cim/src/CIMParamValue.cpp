// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMParamValue.h>

#include <utility>

namespace Pegasus {

template class Array<CIMParamValue>;

class CIMParamValueRep {
public:
    String name;
    CIMValue value;
    Boolean isTyped = true;
};

// By value because the interface says so. NOLINTNEXTLINE(performance-unnecessary-value-param)
CIMParamValue::CIMParamValue(String parameterName, CIMValue value, Boolean isTyped)
    : _rep(std::make_shared<CIMParamValueRep>()) {
    _rep->name = parameterName;
    _rep->value = value;
    _rep->isTyped = isTyped;
}

CIMParamValueRep& CIMParamValue::_get() const {
    if (!_rep)
        throw UninitializedObjectException();
    return *_rep;
}

String CIMParamValue::getParameterName() const {
    return _get().name;
}

CIMValue CIMParamValue::getValue() const {
    return _get().value;
}

Boolean CIMParamValue::isTyped() const {
    return _get().isTyped;
}

void CIMParamValue::setParameterName(String& parameterName) {
    _get().name = parameterName;
}

void CIMParamValue::setValue(CIMValue& value) {
    _get().value = value;
}

void CIMParamValue::setIsTyped(Boolean isTyped) {
    _get().isTyped = isTyped;
}

CIMParamValue CIMParamValue::clone() const {
    const CIMParamValueRep& rep = _get();
    return CIMParamValue(rep.name, rep.value, rep.isTyped);
}

Boolean CIMParamValue::isUninitialized() const {
    return !_rep;
}

}  // namespace Pegasus
