// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

// The containers of OperationContext, through whose header they are included.

#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

// What all containers have in common. Self has a static String NAME and can be copied.
template <class Self>
class PEGASUS_COMMON_LINKAGE CimContextContainer : virtual public OperationContext::Container {
public:
    String getName() const override { return Self::NAME; }
    OperationContext::Container* clone() const override {
        return new Self(static_cast<const Self&>(*this));
    }
    void destroy() override { delete static_cast<Self*>(this); }

protected:
    // Every container can be made from a container of unknown kind, as OperationContext::get()
    // returns it; this throws DynamicCastFailedException where the kind is another.
    static const Self& _from(const OperationContext::Container& container) {
        const Self* self = dynamic_cast<const Self*>(&container);
        if (!self)
            throw DynamicCastFailedException();
        return *self;
    }
};

// The user who asks, as the server authenticated him.
class PEGASUS_COMMON_LINKAGE IdentityContainer : public CimContextContainer<IdentityContainer> {
public:
    static const String NAME;

    IdentityContainer(const OperationContext::Container& container);
    IdentityContainer(const String& userName);
    IdentityContainer(const IdentityContainer& container) = default;
    IdentityContainer& operator=(const IdentityContainer& container) = default;
    ~IdentityContainer() override;
    String getUserName() const;

private:
    String _userName;
};

// The subscription that is created, modified or deleted.
class PEGASUS_COMMON_LINKAGE SubscriptionInstanceContainer
    : public CimContextContainer<SubscriptionInstanceContainer> {
public:
    static const String NAME;

    SubscriptionInstanceContainer(const OperationContext::Container& container);
    SubscriptionInstanceContainer(const CIMInstance& subscriptionInstance);
    SubscriptionInstanceContainer(const SubscriptionInstanceContainer& container) = default;
    SubscriptionInstanceContainer& operator=(const SubscriptionInstanceContainer& container) =
        default;
    ~SubscriptionInstanceContainer() override;
    CIMInstance getInstance() const;

private:
    CIMInstance _instance;
};

// The condition (WHERE) of the subscription's filter.
class PEGASUS_COMMON_LINKAGE SubscriptionFilterConditionContainer
    : public CimContextContainer<SubscriptionFilterConditionContainer> {
public:
    static const String NAME;

    SubscriptionFilterConditionContainer(const OperationContext::Container& container);
    SubscriptionFilterConditionContainer(const String& filterCondition,
                                         const String& queryLanguage);
    SubscriptionFilterConditionContainer(const SubscriptionFilterConditionContainer& container) =
        default;
    SubscriptionFilterConditionContainer& operator=(
        const SubscriptionFilterConditionContainer& container) = default;
    ~SubscriptionFilterConditionContainer() override;
    String getFilterCondition() const;
    String getQueryLanguage() const;

private:
    String _filterCondition;
    String _queryLanguage;
};

// The whole query of the subscription's filter, and the namespace that it is about.
class PEGASUS_COMMON_LINKAGE SubscriptionFilterQueryContainer
    : public CimContextContainer<SubscriptionFilterQueryContainer> {
public:
    static const String NAME;

    SubscriptionFilterQueryContainer(const OperationContext::Container& container);
    SubscriptionFilterQueryContainer(const String& filterQuery, const String& queryLanguage,
                                     const CIMNamespaceName& sourceNameSpace);
    SubscriptionFilterQueryContainer(const SubscriptionFilterQueryContainer& container) = default;
    SubscriptionFilterQueryContainer& operator=(const SubscriptionFilterQueryContainer& container) =
        default;
    ~SubscriptionFilterQueryContainer() override;
    String getFilterQuery() const;
    String getQueryLanguage() const;
    CIMNamespaceName getSourceNameSpace() const;

private:
    String _filterQuery;
    String _queryLanguage;
    CIMNamespaceName _sourceNameSpace;
};

// The subscriptions that a delivered indication is meant for.
class PEGASUS_COMMON_LINKAGE SubscriptionInstanceNamesContainer
    : public CimContextContainer<SubscriptionInstanceNamesContainer> {
public:
    static const String NAME;

    SubscriptionInstanceNamesContainer(const OperationContext::Container& container);
    SubscriptionInstanceNamesContainer(const Array<CIMObjectPath>& subscriptionInstanceNames);
    SubscriptionInstanceNamesContainer(const SubscriptionInstanceNamesContainer& container) =
        default;
    SubscriptionInstanceNamesContainer& operator=(
        const SubscriptionInstanceNamesContainer& container) = default;
    ~SubscriptionInstanceNamesContainer() override;
    Array<CIMObjectPath> getInstanceNames() const;

private:
    Array<CIMObjectPath> _instanceNames;
};

// How long a call back into the server may take, in milliseconds.
class PEGASUS_COMMON_LINKAGE TimeoutContainer : public CimContextContainer<TimeoutContainer> {
public:
    static const String NAME;

    TimeoutContainer(const OperationContext::Container& container);
    TimeoutContainer(Uint32 timeout);
    TimeoutContainer(const TimeoutContainer& container) = default;
    TimeoutContainer& operator=(const TimeoutContainer& container) = default;
    ~TimeoutContainer() override;
    Uint32 getTimeOut() const;

private:
    Uint32 _milliseconds;
};

// The languages in which the client wants its answer.
class PEGASUS_COMMON_LINKAGE AcceptLanguageListContainer
    : public CimContextContainer<AcceptLanguageListContainer> {
public:
    static const String NAME;

    AcceptLanguageListContainer(const OperationContext::Container& container);
    AcceptLanguageListContainer(const AcceptLanguageList& languages);
    AcceptLanguageListContainer(const AcceptLanguageListContainer& container) = default;
    AcceptLanguageListContainer& operator=(const AcceptLanguageListContainer& container) = default;
    ~AcceptLanguageListContainer() override;
    AcceptLanguageList getLanguages() const;

private:
    AcceptLanguageList _languages;
};

// The languages in which a request or an answer is written.
class PEGASUS_COMMON_LINKAGE ContentLanguageListContainer
    : public CimContextContainer<ContentLanguageListContainer> {
public:
    static const String NAME;

    ContentLanguageListContainer(const OperationContext::Container& container);
    ContentLanguageListContainer(const ContentLanguageList& languages);
    ContentLanguageListContainer(const ContentLanguageListContainer& container) = default;
    ContentLanguageListContainer& operator=(const ContentLanguageListContainer& container) =
        default;
    ~ContentLanguageListContainer() override;
    ContentLanguageList getLanguages() const;

private:
    ContentLanguageList _languages;
};

// The object identifier that an indication has as an SNMP trap.
class PEGASUS_COMMON_LINKAGE SnmpTrapOidContainer
    : public CimContextContainer<SnmpTrapOidContainer> {
public:
    static const String NAME;

    SnmpTrapOidContainer(const OperationContext::Container& container);
    SnmpTrapOidContainer(const String& snmpTrapOid);
    SnmpTrapOidContainer(const SnmpTrapOidContainer& container) = default;
    SnmpTrapOidContainer& operator=(const SnmpTrapOidContainer& container) = default;
    ~SnmpTrapOidContainer() override;
    String getSnmpTrapOid() const;

private:
    String _snmpTrapOid;
};

}  // namespace Pegasus
