// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

struct CPUInfo {
    std::string vendor;
    std::string modelName;
};

// Non-zero where the kernel describes the processors; then each text that it gives is that of the
// last one, and the others are as they were.
int getCPUInfo(CPUInfo& info);

// The same of a description.
void decodeCPUInfo(const std::string& text, CPUInfo& info);

}  // namespace QZ
