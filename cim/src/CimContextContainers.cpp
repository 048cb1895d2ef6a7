// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

const String IdentityContainer::NAME = "IdentityContainer";

IdentityContainer::IdentityContainer(const OperationContext::Container& container)
    : IdentityContainer(_from(container)) {}

IdentityContainer::IdentityContainer(const String& userName) : _userName(userName) {}

IdentityContainer::~IdentityContainer() = default;

String IdentityContainer::getUserName() const {
    return _userName;
}

const String SubscriptionInstanceContainer::NAME = "SubscriptionInstanceContainer";

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const OperationContext::Container& container)
    : SubscriptionInstanceContainer(_from(container)) {}

SubscriptionInstanceContainer::SubscriptionInstanceContainer(
    const CIMInstance& subscriptionInstance)
    : _instance(subscriptionInstance) {}

SubscriptionInstanceContainer::~SubscriptionInstanceContainer() = default;

CIMInstance SubscriptionInstanceContainer::getInstance() const {
    return _instance;
}

const String SubscriptionFilterConditionContainer::NAME = "SubscriptionFilterConditionContainer";

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const OperationContext::Container& container)
    : SubscriptionFilterConditionContainer(_from(container)) {}

SubscriptionFilterConditionContainer::SubscriptionFilterConditionContainer(
    const String& filterCondition, const String& queryLanguage)
    : _filterCondition(filterCondition), _queryLanguage(queryLanguage) {}

SubscriptionFilterConditionContainer::~SubscriptionFilterConditionContainer() = default;

String SubscriptionFilterConditionContainer::getFilterCondition() const {
    return _filterCondition;
}

String SubscriptionFilterConditionContainer::getQueryLanguage() const {
    return _queryLanguage;
}

const String SubscriptionFilterQueryContainer::NAME = "SubscriptionFilterQueryContainer";

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const OperationContext::Container& container)
    : SubscriptionFilterQueryContainer(_from(container)) {}

SubscriptionFilterQueryContainer::SubscriptionFilterQueryContainer(
    const String& filterQuery, const String& queryLanguage, const CIMNamespaceName& sourceNameSpace)
    : _filterQuery(filterQuery), _queryLanguage(queryLanguage), _sourceNameSpace(sourceNameSpace) {}

SubscriptionFilterQueryContainer::~SubscriptionFilterQueryContainer() = default;

String SubscriptionFilterQueryContainer::getFilterQuery() const {
    return _filterQuery;
}

String SubscriptionFilterQueryContainer::getQueryLanguage() const {
    return _queryLanguage;
}

CIMNamespaceName SubscriptionFilterQueryContainer::getSourceNameSpace() const {
    return _sourceNameSpace;
}

const String SubscriptionInstanceNamesContainer::NAME = "SubscriptionInstanceNamesContainer";

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const OperationContext::Container& container)
    : SubscriptionInstanceNamesContainer(_from(container)) {}

SubscriptionInstanceNamesContainer::SubscriptionInstanceNamesContainer(
    const Array<CIMObjectPath>& subscriptionInstanceNames)
    : _instanceNames(subscriptionInstanceNames) {}

SubscriptionInstanceNamesContainer::~SubscriptionInstanceNamesContainer() = default;

Array<CIMObjectPath> SubscriptionInstanceNamesContainer::getInstanceNames() const {
    return _instanceNames;
}

const String TimeoutContainer::NAME = "TimeoutContainer";

TimeoutContainer::TimeoutContainer(const OperationContext::Container& container)
    : TimeoutContainer(_from(container)) {}

TimeoutContainer::TimeoutContainer(Uint32 timeout) : _milliseconds(timeout) {}

TimeoutContainer::~TimeoutContainer() = default;

Uint32 TimeoutContainer::getTimeOut() const {
    return _milliseconds;
}

const String AcceptLanguageListContainer::NAME = "AcceptLanguageListContainer";

AcceptLanguageListContainer::AcceptLanguageListContainer(
    const OperationContext::Container& container)
    : AcceptLanguageListContainer(_from(container)) {}

AcceptLanguageListContainer::AcceptLanguageListContainer(const AcceptLanguageList& languages)
    : _languages(languages) {}

AcceptLanguageListContainer::~AcceptLanguageListContainer() = default;

AcceptLanguageList AcceptLanguageListContainer::getLanguages() const {
    return _languages;
}

const String ContentLanguageListContainer::NAME = "ContentLanguageListContainer";

ContentLanguageListContainer::ContentLanguageListContainer(
    const OperationContext::Container& container)
    : ContentLanguageListContainer(_from(container)) {}

ContentLanguageListContainer::ContentLanguageListContainer(const ContentLanguageList& languages)
    : _languages(languages) {}

ContentLanguageListContainer::~ContentLanguageListContainer() = default;

ContentLanguageList ContentLanguageListContainer::getLanguages() const {
    return _languages;
}

const String SnmpTrapOidContainer::NAME = "SnmpTrapOidContainer";

SnmpTrapOidContainer::SnmpTrapOidContainer(const OperationContext::Container& container)
    : SnmpTrapOidContainer(_from(container)) {}

SnmpTrapOidContainer::SnmpTrapOidContainer(const String& snmpTrapOid) : _snmpTrapOid(snmpTrapOid) {}

SnmpTrapOidContainer::~SnmpTrapOidContainer() = default;

String SnmpTrapOidContainer::getSnmpTrapOid() const {
    return _snmpTrapOid;
}

}  // namespace Pegasus
