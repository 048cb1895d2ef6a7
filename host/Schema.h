// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "ClassRepository.h"
#include "Registration.h"

namespace QZ {

// The namespace of our model.
constexpr const char* MODEL_NAMESPACE = "root/tavqz";

// The namespace in which a client finds out what the server has.
constexpr const char* INTEROP_NAMESPACE = "root/interop";

// A model: its classes, and who answers for them.
struct Schema {
    ClassRepository classes;  // of MODEL_NAMESPACE
    ClassRepository interop;  // of INTEROP_NAMESPACE
    Registration registration;

    // Reads every *.mof file of a folder, in the order of their names, those of its folder
    // "interop" where it has one, and into both namespaces those of "subscriptions". Throws Error
    // where the folder has none or one cannot be read, MofError for what is wrong in one.
    static Schema load(const std::string& folder);

    // The classes of the namespace of that name, ignoring case; null where there is none.
    const ClassRepository* find(const std::string& nameSpace) const;
};

}  // namespace QZ
