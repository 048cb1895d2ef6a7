// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

namespace Pegasus {

// An indication is an instance of its class.
using CIMIndication = CIMInstance;

}  // namespace Pegasus
