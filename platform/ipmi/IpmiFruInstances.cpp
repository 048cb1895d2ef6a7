// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "IpmiFru.h"

namespace QZ {

// No controller is asked yet.
std::vector<IpmiFru> GetIpmiFruInstances() {
    return {};
}

}  // namespace QZ
