// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "InProcessServer.h"
#include "Workplace.h"

namespace QZ {

// The server of a workplace's model and modules, of which none is loaded yet. Throws nothing for
// what is wrong with them: what asks finds out.
std::unique_ptr<InProcessServer> makeModuleServer(const Workplace& place, ModuleBinding binding);

}  // namespace QZ
