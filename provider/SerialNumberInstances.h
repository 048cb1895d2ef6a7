// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <list>

#include "PartInfo.h"
#include "RecordClasses.h"

namespace QZ {

// The class whose instances are the machine's parts; clients may only read it.
extern const RecordClass<PartInfo> serialNumberClass;

// Delivers an instance for each part of the list, in its order, and two for two parts of one name.
void deliverParts(const std::list<PartInfo*>& parts, const Pegasus::CIMObjectPath& classPath,
                  Pegasus::InstanceResponseHandler& handler);

// The same for the parts that this machine has now.
void deliverSerialNumbers(const Pegasus::CIMObjectPath& classPath,
                          Pegasus::InstanceResponseHandler& handler);

}  // namespace QZ
