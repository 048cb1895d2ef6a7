// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <mutex>
#include <string>
#include <vector>

#include "AlertRouter.h"
#include "DeliveryQueues.h"
#include "ExpiryThread.h"
#include "HttpTrust.h"
#include "SubscriptionStore.h"

namespace QZ {

// The subscriptions of a server: what clients make by instance operations is kept in a file, and
// has alerts sent, until it expires. Any thread may call; a call that changes a subscription waits
// for the provider. Operations throw CIMException.
class Subscriptions {
public:
    using Log = std::function<void(const std::string& line)>;

    // Reads the file; the providers must outlive this object. The trust is for listeners over
    // https.
    Subscriptions(InProcessServer& providers, const std::string& file, const Log& log,
                  const HttpTrust& trust = {});

    // Takes up the subscriptions of an earlier run that have not expired meanwhile. Called once,
    // before any other. Throws Error where the system has no thread to give.
    void start();

    static bool serves(const std::string& className) { return isSubscriptionClass(className); }

    std::vector<Pegasus::CIMInstance> instances(const Pegasus::CIMNamespaceName& nameSpace,
                                                const std::string& className) const {
        return _store.instances(nameSpace, className);
    }
    Pegasus::CIMInstance get(const Pegasus::CIMObjectPath& path) const { return _store.get(path); }

    Pegasus::CIMObjectPath create(const Pegasus::CIMNamespaceName& nameSpace,
                                  const Pegasus::CIMInstance& given);
    void modify(const Pegasus::CIMObjectPath& path, const Pegasus::CIMInstance& given,
                const Pegasus::CIMPropertyList& properties);
    void remove(const Pegasus::CIMObjectPath& path);

private:
    static bool _isSubscription(const Pegasus::CIMObjectPath& path);
    void _removeExpired();

    const Log _log;
    std::mutex _changes;
    SubscriptionStore _store;
    // Outlives the router, which fills it.
    DeliveryQueues _queues;
    AlertRouter _router;
    // Works with all of them.
    ExpiryThread _expiry;
};

}  // namespace QZ
