// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

#include <memory>

namespace Pegasus {

class CIMParamValueRep;

// A handle to a method's parameter with its value. Copies share it; clone() makes another. Calls
// on a handle that holds nothing throw UninitializedObjectException.
class PEGASUS_COMMON_LINKAGE CIMParamValue {
public:
    CIMParamValue() = default;
    CIMParamValue(String parameterName, CIMValue value, Boolean isTyped = true);

    String getParameterName() const;
    CIMValue getValue() const;
    // Whether the type of the value was stated, or guessed from its text.
    Boolean isTyped() const;
    void setParameterName(String& parameterName);
    void setValue(CIMValue& value);
    void setIsTyped(Boolean isTyped);

    CIMParamValue clone() const;
    Boolean isUninitialized() const;

private:
    CIMParamValueRep& _get() const;

    std::shared_ptr<CIMParamValueRep> _rep;
};

extern template class PEGASUS_COMMON_LINKAGE Array<CIMParamValue>;

}  // namespace Pegasus
