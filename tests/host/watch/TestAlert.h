// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMInstance.h>

#include <string>

#include "CimText.h"
#include "Schema.h"

// The model of the test module's alerts.
inline const QZ::ClassRepository& testClasses() {
    static const QZ::Schema schema = QZ::Schema::load(TEST_SCHEMA);
    return schema.classes;
}

// An alert that says everything.
inline Pegasus::CIMInstance testAlert(const std::string& description) {
    using namespace Pegasus;
    CIMInstance alert(CIMName("TEST_First"));
    const auto add = [&alert](const char* name, const CIMValue& value) {
        alert.addProperty(CIMProperty(CIMName(name), value));
    };
    add("Description", CIMValue(QZ::make_String(description)));
    add("PerceivedSeverity", CIMValue(Uint16(4)));
    add("EventTime", CIMValue(CIMDateTime("20270131120305.250000+060")));
    add("EventID", CIMValue(String("TEST_Record.Id=\"1\"")));
    add("SystemName", CIMValue(String("asset-host")));
    add("ProviderName", CIMValue(String("The provider")));
    add("UniqueSystemID", CIMValue(String("4711")));
    alert.setPath(CIMObjectPath(String(), CIMNamespaceName("root/tavqz"), CIMName("TEST_First")));
    return alert;
}
