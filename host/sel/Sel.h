// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "Bmc.h"
#include "Commands.h"

namespace QZ {

// Reads the event log of a machine's management controller, and the names of its sensors, and lays
// it out in the request's format. The note takes what the log lacks, and why there is none, where
// the status is EXIT_NOT_FOUND. A log that could not be read to its end is laid out as far as it
// was, with EXIT_FAILED. Throws UsageError for a format that cannot hold it.
CommandResult listSel(const Request& request, Bmc& bmc, const Notes& note);

}  // namespace QZ
