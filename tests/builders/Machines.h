// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

// Writes each test machine into a folder of its own below `folder`, laid out as the machine's own
// root is; what stood under the same names is replaced. Throws std::exception.
//
//   rack-server       a whole server: SMBIOS 3.5, two boards, eight memory devices, SCSI disks,
//                     two RAIDs, asset data, a service processor
//   old-server        SMBIOS 2.2, from before memory devices had serial numbers; IDE drives, an X
//                     server
//   damaged-firmware  SMBIOS 2.8, wrong checksum, count and length, the table cut off in a text;
//                     disks and X configuration cut off too; service processors that fail
//   hostile-texts     texts that nobody should trust: controls, markup, bytes that are not UTF-8
//   bare              no firmware tables and no service processor at all
void writeMachines(const std::string& folder);
