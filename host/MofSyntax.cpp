// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "MofSyntax.h"

#include "Text.h"

namespace QZ {

bool NameLess::operator()(const std::string& left, const std::string& right) const {
    return lessName(left, right);
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
