// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// A block device in an array of the kernel's own RAID, and what it does there, for people:
// "member 0 of md0 (raid1)", "spare of md0 (raid1)", "faulty member of md0 (raid1, degraded)".
struct MdMember {
    std::string block;
    std::string role;
};

// The members of one array, of the folder "md" of its block device's, in the order of their names.
// Who was removed from it is none. Not a thing where the folder is missing.
std::vector<MdMember> readMdMembers(const std::string& folder, const std::string& array);

// The members of all arrays, in the order of their arrays.
std::vector<MdMember> readMdMembers();

// The disks that a block device lies on, itself or those of the partitions, mappings and arrays
// below it; none where it lies on no device, as one in a file does.
std::vector<std::string> disksBelow(const std::string& block);

}  // namespace QZ
