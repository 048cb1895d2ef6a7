// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertFields.h"

#include "CimDateTimes.h"
#include "CimText.h"
#include "ValueText.h"

namespace QZ {

using namespace Pegasus;

namespace {

CIMValue _value(const CIMInstance& alert, const char* property) {
    const Uint32 index = alert.findProperty(CIMName(property));
    return index == PEG_NOT_FOUND ? CIMValue() : alert.getProperty(index).getValue();
}

std::string _text(const CIMInstance& alert, const char* property) {
    return plainText(_value(alert, property));
}

std::string _time(const CIMInstance& alert) {
    const CIMValue value = _value(alert, "EventTime");
    if (value.isNull() || value.isArray() || value.getType() != CIMTYPE_DATETIME) {
        return {};
    }
    CIMDateTime time;
    value.get(time);
    return make_DateTime(time).toString();
}

std::string _meaning(const CIMInstance& alert, const char* property, const std::string& code,
                     const ClassRepository& classes) {
    const ClassDeclaration* const declared =
        classes.find(make_string(alert.getClassName().getString()));
    const PropertyDeclaration* const declaration = declared ? declared->find(property) : nullptr;
    return declaration ? declaration->meaning(code) : std::string();
}

}  // namespace

AlertFields alertFields(const CIMInstance& alert, const ClassRepository& classes) {
    AlertFields fields;
    fields.className = make_string(alert.getClassName().getString());
    fields.description = _text(alert, "Description");
    fields.eventId = _text(alert, "EventID");
    fields.provider = _text(alert, "ProviderName");
    fields.severity = _text(alert, "PerceivedSeverity");
    fields.severityName = _meaning(alert, "PerceivedSeverity", fields.severity, classes);
    fields.system = _text(alert, "SystemName");
    fields.systemId = _text(alert, "UniqueSystemID");
    fields.time = _time(alert);
    return fields;
}

}  // namespace QZ
