// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace QZ {

// A disk or a controller; empty texts are not known.
struct RaidUnit {
    std::string id;   // tells it from the others of its kind while the machine runs
    std::string fru;  // what people order or know it by: see README.md
    std::string model;
    std::string manufacturer;
    std::string name;
    std::string description;
};

// The disks behind hardware controllers by their addresses, then the other ones in arrays of the
// kernel's, each once. A machine without any, or without the kernel's folders, has none. Nothing of
// the machine is written; any thread may call.
std::vector<RaidUnit> readRaidDisks();

// The hardware controllers, in the order of their hosts, each once.
std::vector<RaidUnit> readRaidControllers();

}  // namespace QZ
