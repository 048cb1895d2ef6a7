// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ClassRepository.h"
#include "Registration.h"

namespace QZ {

// The namespace of our model.
constexpr const char* MODEL_NAMESPACE = "root/tavqz";

// A model: its classes, and who answers for them.
struct Schema {
    ClassRepository classes;
    Registration registration;

    // Reads every *.mof file of a folder, in the order of their names. Throws Error where the
    // folder has none or one cannot be read, MofError for what is wrong in one.
    static Schema load(const std::string& folder);
};

}  // namespace QZ
