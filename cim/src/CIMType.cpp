// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMType.h>

#include <iterator>

namespace Pegasus {

const char* cimTypeToString(const CIMType type) {
    static const char* const names[] = {"boolean", "uint8",   "sint8",  "uint16",   "sint16",
                                        "uint32",  "sint32",  "uint64", "sint64",   "real32",
                                        "real64",  "char16",  "string", "datetime", "reference",
                                        "object",  "instance"};
    static_assert(std::size(names) == CIMTYPE_INSTANCE + 1);
    const auto index = static_cast<Uint32>(type);
    return index < std::size(names) ? names[index] : "unknown";
}

}  // namespace Pegasus
