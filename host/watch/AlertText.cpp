// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertText.h"

#include <utility>

#include "AlertFields.h"
#include "Output.h"
#include "TerminalText.h"

namespace QZ {

using namespace Pegasus;

AlertText::AlertText(std::string format, const ClassRepository& classes)
    : _format(std::move(format)), _classes(classes) {}

std::string AlertText::next(const CIMInstance& alert) {
    if (_format == "json") {
        return jsonLine(alert);
    }
    if (_format == "mof") {
        return MofOutput().instances({alert});
    }
    if (_format != "csv") {
        return _line(alert);
    }
    const std::string text = CsvOutput().instances({alert});
    const std::size_t end = text.find("\r\n") + 2;  // names of properties have no line breaks
    const bool isKnown = text.compare(0, end, _header) == 0;
    _header = text.substr(0, end);
    return isKnown ? text.substr(end) : text;
}

std::string AlertText::_line(const CIMInstance& alert) const {
    const AlertFields fields = alertFields(alert, _classes);
    std::string line = fields.time.empty() ? "" : fields.time + " ";
    line += fields.severityName.empty() ? fields.className : fields.severityName;
    line += ": " + (fields.description.empty() ? fields.eventId : fields.description);
    return visibleText(line) + "\n";
}

}  // namespace QZ
