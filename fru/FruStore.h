// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "CimObjectFile.h"
#include "Mutex.h"

namespace QZ {

// Serialises every access to "fru.dat" in this process. Constant-initialised, so that it may be
// locked at any time.
extern Mutex _storeMutex;

// The path of "fru.dat", in the data folder as it is configured now.
std::wstring FruFilePath();

// The module's one store, closed or left open by whoever used it last. Only under _storeMutex.
CimObjectFile& _fruStore();

}  // namespace QZ
