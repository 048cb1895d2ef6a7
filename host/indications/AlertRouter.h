// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "DeliveryQueues.h"
#include "InProcessServer.h"
#include "SubscriptionStore.h"

namespace QZ {

// Connects subscriptions with the providers of the alerts that they want. A provider is told of
// each subscription, its indications are enabled with the first and disabled with the last; every
// alert of it goes once to each subscription whose filter wants it.
//
// What connects and disconnects is called by one thread at a time, and waits for the provider;
// alerts come from the providers' threads, and wait for nobody.
class AlertRouter {
public:
    using Deliver = std::function<void(const std::string& destination, DeliveryQueues::Alert)>;
    using Log = std::function<void(const std::string& line)>;

    // The providers must outlive this object.
    AlertRouter(InProcessServer& providers, Deliver deliver, Log log);

    // Disables what is enabled: no alert comes from then on.
    ~AlertRouter();

    // Tells the providers of the subscriptions of an earlier run, all before any of them is
    // enabled. What goes wrong is told to the log.
    void start(const std::vector<SubscriptionTerms>& kept);

    // Throws CIMException where a provider does not want the subscription: it is then told to
    // nobody. One that is disabled is left alone.
    void connect(const SubscriptionTerms& terms);

    // Tells the providers of a subscription that is not what it was. Throws CIMException where one
    // does not want that, after telling all of what it was.
    void change(const SubscriptionTerms& before, const SubscriptionTerms& after);

    // Alerts that a provider sends until it is disabled are delivered. What it throws at that is
    // told to the log.
    void disconnect(const SubscriptionTerms& terms);

private:
    class Handler;
    struct Source;
    using SourceKey = std::pair<std::string, std::string>;  // module and provider
    using ClassNames = Pegasus::Array<Pegasus::CIMObjectPath>;
    using Wanted = std::map<SourceKey, std::pair<const ProviderEntry*, ClassNames>>;
    using Active = std::map<std::string, SubscriptionTerms>;  // by the subscription's path

    Wanted _wanted(const SubscriptionTerms& terms) const;
    void _subscribe(const SubscriptionTerms& terms, const ProviderEntry& entry,
                    const ClassNames& classNames);
    void _tell(const SubscriptionTerms& changed);
    void _unsubscribe(const SubscriptionTerms& terms);
    void _enable(Source& source);
    void _disable(Source& source);
    void _setActive(const std::function<void(Active& active)>& change);
    void _route(const Pegasus::CIMInstance& alert);
    void _try(const char* what, const std::function<void()>& call);

    InProcessServer& _providers;
    const Deliver _deliver;
    const Log _log;
    std::map<SourceKey, std::unique_ptr<Source>> _sources;
    std::mutex _mutex;
    std::shared_ptr<const Active> _active;  // replaced, never changed
};

}  // namespace QZ
