// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <random>

// Random numbers that are the same in every run, so that a failure can be looked at again.
inline std::mt19937 repeatableRandom(unsigned seed) {
    return std::mt19937(seed);
}
