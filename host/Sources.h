// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// One sentence, with path and reason, for each source of the report's data that this machine lacks
// or does not let us read: the SMBIOS tables, the machine id, the data folder, the service
// processor's library, the management controller. Empty when all are there. Looks at the machine
// that MachinePaths names, from the working folder, and changes nothing.
std::vector<std::string> missingSources();

}  // namespace QZ
