// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofSyntax.h"

#include <strings.h>

namespace QZ {

bool sameName(const std::string& left, const std::string& right) {
    return left.size() == right.size() && strcasecmp(left.c_str(), right.c_str()) == 0;
}

bool NameLess::operator()(const std::string& left, const std::string& right) const {
    return strcasecmp(left.c_str(), right.c_str()) < 0;
}

const MofLiteral* MofInstance::find(const std::string& property) const {
    for (const MofAssignment& assignment : properties) {
        if (sameName(assignment.name, property)) {
            return &assignment.value;
        }
    }
    return nullptr;
}

void MofDocument::fail(MofPosition position, const std::string& what) const {
    throw MofError(file, position, what);
}

bool mofType(const std::string& name, Pegasus::CIMType& type) {
    // CIMTYPE_REFERENCE and the embedded objects have no name in MOF: a reference is written
    // "CLASS ref", embedded objects are strings with a qualifier.
    for (int candidate = 0; candidate <= Pegasus::CIMTYPE_DATETIME; ++candidate) {
        type = Pegasus::CIMType(candidate);
        if (sameName(name, Pegasus::cimTypeToString(type))) {
            return true;
        }
    }
    return false;
}

}  // namespace QZ
