// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/Exception.h>

#include <string>
#include <vector>

#include "BuildPaths.h"
#include "CimText.h"
#include "InProcessServer.h"
#include "MofParser.h"
#include "Schema.h"

// The model of the tests: alerts of a provider of ours, and what one subscribes with.
inline QZ::Schema makeAlertSchema() {
    QZ::Schema schema = QZ::Schema::load(TAVQZ_SOURCE_DIR "/schema");
    const QZ::MofDocument document =
        QZ::parseMofFile(TAVQZ_SOURCE_DIR "/tests/host/indications/schema/alerts.mof");
    schema.classes.add(document);
    schema.registration.add(document);
    return schema;
}

inline const QZ::Schema& alertSchema() {
    static const QZ::Schema SCHEMA = makeAlertSchema();
    return SCHEMA;
}

// An instance in the making.
class Parts {
public:
    explicit Parts(const char* className) : instance(Pegasus::CIMName(className)) {}

    template <class T>
    Parts& set(const char* property, const T& value) {
        instance.addProperty(
            Pegasus::CIMProperty(Pegasus::CIMName(property), Pegasus::CIMValue(value)));
        return *this;
    }
    Parts& set(const char* property, const char* value) {
        return set(property, Pegasus::String(value));
    }
    Parts& set(const char* property, const std::string& value) {
        return set(property, QZ::make_String(value));
    }

    operator const Pegasus::CIMInstance&() const { return instance; }

    Pegasus::CIMInstance instance;
};

inline Parts filter(const char* name, const std::string& query = "SELECT * FROM TEST_Alert") {
    return Parts("CIM_IndicationFilter")
        .set("Name", name)
        .set("SourceNamespace", "root/tavqz")
        .set("Query", query)
        .set("QueryLanguage", "WQL");
}

inline Parts destination(const char* name, const std::string& url = "http://127.0.0.1:1/") {
    return Parts("CIM_ListenerDestinationCIMXML").set("Name", name).set("Destination", url);
}

inline Parts subscription(const Pegasus::CIMObjectPath& ofFilter,
                          const Pegasus::CIMObjectPath& toDestination) {
    return Parts("CIM_IndicationSubscription")
        .set("Filter", ofFilter)
        .set("Handler", toDestination);
}

// "7 text" of what a call throws.
template <class Call>
std::string refusal(Call call) {
    try {
        call();
    } catch (const Pegasus::CIMException& exception) {
        return std::to_string(exception.getCode()) + " " + QZ::make_string(exception.getMessage());
    }
    return "accepted";
}

// What the provider of the alerts was called with since somebody asked last.
inline std::vector<std::string> calls(QZ::InProcessServer& providers) {
    using namespace Pegasus;
    const CIMInstance found =
        providers.enumerateInstances(CIMObjectPath(String(), "root/tavqz", "TEST_Calls"))[0];
    Array<String> made;
    found.getProperty(0).getValue().get(made);
    std::vector<std::string> texts;
    for (Uint32 i = 0; i < made.size(); ++i) {
        texts.push_back(QZ::make_string(made[i]));
    }
    return texts;
}
