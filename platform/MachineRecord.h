// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

namespace QZ {

// A machine as a folder: contents by path below its root, without a slash in front. A path that
// ends in a slash is a folder that may have nothing in it, one that ends in "@" a symbolic link to
// where the content says.
using MachineFiles = std::map<std::string, std::string>;

struct MachineRecord {
    MachineFiles files;
    // What is there and could not be read, or not whole, as sentences for the administrator.
    std::vector<std::string> problems;
};

// Everything that this machine (or the one under TAVQZ_HOST_ROOT) is asked for what it is: the
// files that MachinePaths names, the replies of its SCSI disks and what the kernel shows of disks
// and boards, but not our own data. Written to a folder, it answers as the machine does.
MachineRecord recordMachine();

// For those who record a part of it. Adds a file of the machine's, if it is there; a path below its
// root, as MachineFiles has it.
void recordFile(const std::string& path, MachineRecord& record);
std::string nameBelowRoot(const std::string& path);

// Makes the folder, which must be missing or empty. Throws Error.
void writeMachine(const MachineFiles& files, const std::string& folder);

}  // namespace QZ
