// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMClass.h>

#include "ClassRepository.h"

namespace QZ {

// A declared class as the provider interface has it: all its properties, inherited ones with
// `propagated` set, all with their origin, and the qualifiers that hold, inherited ones marked,
// too. Nothing is shared with what another call returned.
Pegasus::CIMClass makeCimClass(const ClassDeclaration& declared);

// The same the other way: the class's own and inherited properties in its order. A property or
// qualifier without an origin counts as the class's own.
ClassDeclaration makeDeclaration(const Pegasus::CIMConstClass& cimClass);

// A name as declarations have it; empty for a null one.
std::string nameText(const Pegasus::CIMName& name);

}  // namespace QZ
