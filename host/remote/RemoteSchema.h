// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMInstance.h>

#include <vector>

#include "Schema.h"

namespace QZ {

// A model out of what a server answers: the classes of the model's namespace, and the instances of
// PG_ProviderCapabilities. Without any of those, whoever that server is does not tell who serves
// what: then all classes that can have instances count as served, by a provider without a name.
Schema makeRemoteSchema(const std::vector<Pegasus::CIMClass>& classes,
                        const std::vector<Pegasus::CIMInstance>& capabilities);

}  // namespace QZ
