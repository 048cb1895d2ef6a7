// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <string>
#include <vector>

#include "Schema.h"
#include "SubscriptionProperties.h"
#include "WqlQuery.h"

namespace QZ {

constexpr const char* FILTER_CLASS = "CIM_IndicationFilter";
constexpr const char* DESTINATION_CLASS = "CIM_ListenerDestinationCIMXML";
constexpr const char* SUBSCRIPTION_CLASS = "CIM_IndicationSubscription";

// Whether the instances of exactly that class are subscriptions or what they refer to.
bool isSubscriptionClass(const std::string& className);

// What a filter wants.
struct FilterTerms {
    WqlQuery query;
    std::string text;                     // the query as it was given
    std::vector<std::string> nameSpaces;  // one at least
};

// What the instances that one subscribes with must be. Pure; throws CIMException with a status and
// a sentence.
class SubscriptionRules {
public:
    explicit SubscriptionRules(const Schema& schema) : _schema(schema) {}

    // A client's new instance of such a class in a namespace as it is kept: every property of its
    // declared type, keys and what has a default filled in, and its path. A subscription begins
    // now, whatever the client says.
    Pegasus::CIMInstance made(const Pegasus::CIMNamespaceName& nameSpace,
                              const Pegasus::CIMInstance& given) const;

    // The same of one that was kept, with the times that it had.
    Pegasus::CIMInstance restored(const Pegasus::CIMNamespaceName& nameSpace,
                                  const Pegasus::CIMInstance& kept) const;

    // The kept instance with those properties of the given one that are named, or with all that it
    // has. Keys stay.
    Pegasus::CIMInstance changed(const Pegasus::CIMInstance& kept,
                                 const Pegasus::CIMInstance& given,
                                 const Pegasus::CIMPropertyList& properties) const;

    // The same for any spelling of one path. Throws CIM_ERR_INVALID_PARAMETER where a key is
    // missing.
    std::string identity(const Pegasus::CIMObjectPath& path) const;

    FilterTerms filterTerms(const Pegasus::CIMInstance& filter) const;

private:
    const ClassDeclaration& _class(const Pegasus::CIMNamespaceName& nameSpace,
                                   const Pegasus::CIMName& name) const;
    void _checkSource(const WqlQuery& query, const std::string& nameSpace) const;
    void _check(const Pegasus::CIMInstance& instance) const;

    const Schema& _schema;
};

}  // namespace QZ
