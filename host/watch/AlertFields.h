// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>

#include "ClassRepository.h"

namespace QZ {

// What people want to know of an alert, as text; empty for what it does not say.
struct AlertFields {
    std::string className;
    std::string description;
    std::string eventId;
    std::string provider;
    std::string severity;      // PerceivedSeverity's number
    std::string severityName;  // and what it means, which the class knows
    std::string system;
    std::string systemId;
    std::string time;  // ISO 8601
};

AlertFields alertFields(const Pegasus::CIMInstance& alert, const ClassRepository& classes);

}  // namespace QZ
