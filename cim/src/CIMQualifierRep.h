// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMQualifier.h>

#include "CimOwnedList.h"

namespace Pegasus {

// What handles to one qualifier share.
class CIMQualifierRep {
public:
    CIMName name;
    CIMValue value;
    CIMFlavor flavor;
    Boolean propagated = false;
    CimOwnerCount owners;
};

}  // namespace Pegasus
