// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Provider/CIMOMHandle.h>

#include <atomic>
#include <vector>

namespace QZ {

// The server that loaded the module, which two of the gatherers ask; null until it is known.
extern std::atomic<Pegasus::CIMOMHandle*> _fruServer;

// Each makes "TAVIRA_FRU" instances of what its source tells now, in the source's order. Whatever
// fails ends it, and what it has by then is the answer: nothing is ever thrown. What a source does
// not tell is no property, except of the first, which always tells all. Any thread may call them.

// Of the machine's IPMI inventory. ElementName is "IPMI".
std::vector<Pegasus::CIMInstance> _getIpmiFruInstances();

// Of the service processor's "TAVIRA_VigilComponentVPD". ElementName is "MPA".
std::vector<Pegasus::CIMInstance> _getMpaFruInstances();

// Of "TAVIRA_PhysicalDiskDrive", then of "TAVIRA_RAIDController", also where the disks cannot be
// had. ElementName is "RAID".
std::vector<Pegasus::CIMInstance> _getRaidFruInstances();

}  // namespace QZ
