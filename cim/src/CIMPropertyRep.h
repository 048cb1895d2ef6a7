// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMProperty.h>

#include "CIMQualifierRep.h"

namespace Pegasus {

// What handles to one property share.
class CIMPropertyRep {
public:
    CIMName name;
    CIMValue value;
    Uint32 arraySize = 0;
    CIMName referenceClassName;
    CIMName classOrigin;
    Boolean propagated = false;
    CimOwnedList<CIMQualifier> qualifiers;
    CimOwnerCount owners;
};

}  // namespace Pegasus
