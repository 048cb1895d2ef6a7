// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <list>
#include <vector>

#include "PartInfo.h"

namespace QZ {

// Makes the list of the machine's parts: the system first, then boards, enclosures, memory,
// processor, IDE drives, monitor, video card and SCSI disks, each numbered from 0.
class PartInfoFactory {
public:
    // Reads the machine afresh at every call, its firmware tables once. There is always a system,
    // if a nameless one. The parts are the caller's, to be given to deleteList. Any thread may
    // call it.
    static std::list<PartInfo*> newList();

    static void deleteList(std::list<PartInfo*> parts);
};

// The parts for those who ask by number through plain functions; empty until somebody fills it.
// Not locked.
extern std::vector<PartInfo*> partinfos;

}  // namespace QZ
