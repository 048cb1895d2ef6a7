// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FoundTable.h"

namespace QZ {
namespace {

// Stands for "before the first": no structure of the firmware's may bear it (DSP0134, 6.1.2).
constexpr unsigned short noHandle = 0xFFFF;

}  // namespace

bool FoundTable(SmBios::Table& out, unsigned char type) {
    return FoundNextTable(out, type, noHandle);
}

bool FoundNextTable(SmBios::Table& out, unsigned char type, unsigned short handle) {
    const SmBios smBios;
    bool passed = handle == noHandle;
    for (const SmBios::Table& table : smBios.getTables()) {
        if (table.getType() != type) {
            continue;
        }
        if (passed) {
            out = table;
            return true;
        }
        passed = table.getHandle() == handle;
    }
    return false;
}

}  // namespace QZ
