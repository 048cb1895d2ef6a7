// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>

// Marks what the shared library offers. Host and module must see one copy of each class, or a
// cast or a catch of one would not know the other's objects.
#define PEGASUS_COMMON_LINKAGE PEGASUS_EXPORT
