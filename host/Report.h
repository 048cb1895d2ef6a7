// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <vector>

#include "ClassRepository.h"

namespace QZ {

// A class's instances as a section of a report for people: a heading, then a line for each property
// that says something, under the names and with the units and meanings that the declaration has.
// Null, empty text and a declared default say nothing; where only keys are left, the section says
// that nothing is recorded. Empty for no instances.
std::string reportSection(const ClassDeclaration& declared,
                          const std::vector<Pegasus::CIMInstance>& instances);

}  // namespace QZ
