// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "CimRequest.h"

namespace QZ {

// The CIM-XML of an intrinsic method call: with the parameters that the request holds, and no
// others. What decodeRequest reads from it is the same again.
std::string encodeRequest(const CimRequest& request);

}  // namespace QZ
