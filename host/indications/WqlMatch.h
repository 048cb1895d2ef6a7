// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include "WqlQuery.h"

namespace QZ {

// Whether a query wants an indication: it is of the query's class or of one below it, and the
// condition holds. As in SQL a comparison with null is neither true nor false, and so is its
// opposite; texts are compared by code unit, and case counts; dates are compared as moments. Reads
// the indication alone; any thread may call.
bool matchesWql(const WqlQuery& query, const Pegasus::CIMInstance& indication,
                const ClassRepository& classes);

// A copy of the indication with what the query selects of it.
Pegasus::CIMInstance selectWql(const WqlQuery& query, const Pegasus::CIMInstance& indication);

}  // namespace QZ
