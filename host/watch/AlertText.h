// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>

#include "ClassRepository.h"

namespace QZ {

// Writes alerts one after the other, in one of the formats of --format: a line each for people,
// "TIME SEVERITY: DESCRIPTION", that cannot steer a terminal; a JSON object on a line, as
// jsonLine() has it; a line of CSV, with the header before it where the last one does not fit; or
// MOF.
class AlertText {
public:
    // The classes must outlive it.
    AlertText(std::string format, const ClassRepository& classes);

    std::string next(const Pegasus::CIMInstance& alert);

private:
    std::string _line(const Pegasus::CIMInstance& alert) const;

    std::string _format;
    const ClassRepository& _classes;
    std::string _header;  // the last that was written
};

}  // namespace QZ
