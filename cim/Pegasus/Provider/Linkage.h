// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

// Common and provider interface are one library here.
#ifndef PEGASUS_PROVIDER_LINKAGE
#define PEGASUS_PROVIDER_LINKAGE PEGASUS_COMMON_LINKAGE
#endif
