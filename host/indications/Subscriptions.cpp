// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Subscriptions.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

#include "CimText.h"
#include "SendAlert.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

// What a provider is told of a subscription, beside its filter.
Uint16 _policy(const SubscriptionTerms& terms) {
    return numberOf(terms.subscription, "RepeatNotificationPolicy");
}

}  // namespace

Subscriptions::Subscriptions(InProcessServer& providers, const std::string& file, const Log& log,
                             const HttpTrust& trust)
    : _log(log),
      _store(providers.schema(), file, log),
      _queues([trust](const DeliveryQueues::Alert& alert) { sendAlert(alert, trust); }, log),
      _router(
          providers,
          [this](const std::string& destination, DeliveryQueues::Alert alert) {
              _queues.push(destination, std::move(alert));
          },
          log),
      _expiry([this] {
          const std::lock_guard<std::mutex> lock(_changes);
          _removeExpired();
          return _store.secondsToExpiry();
      }) {}

bool Subscriptions::_isSubscription(const CIMObjectPath& path) {
    return sameName(make_string(path.getClassName().getString()), SUBSCRIPTION_CLASS);
}

void Subscriptions::start() {
    const std::lock_guard<std::mutex> lock(_changes);
    _removeExpired();
    _router.start(_store.allTerms());
    _expiry.start();
}

void Subscriptions::_removeExpired() {
    for (const SubscriptionTerms& terms : _store.removeExpired(_log)) {
        _router.disconnect(terms);
    }
}

CIMObjectPath Subscriptions::create(const CIMNamespaceName& nameSpace, const CIMInstance& given) {
    const std::lock_guard<std::mutex> lock(_changes);
    _removeExpired();
    CIMObjectPath path = _store.create(nameSpace, given);
    if (!_isSubscription(path)) {
        return path;
    }
    try {
        _router.connect(_store.terms(path));
    } catch (...) {
        _store.remove(path);
        throw;
    }
    _expiry.wake();
    return path;
}

void Subscriptions::modify(const CIMObjectPath& path, const CIMInstance& given,
                           const CIMPropertyList& properties) {
    const std::lock_guard<std::mutex> lock(_changes);
    if (!_isSubscription(path)) {
        _store.modify(path, given, properties);
        return;
    }
    const SubscriptionTerms before = _store.terms(path);
    _store.modify(path, given, properties);
    _expiry.wake();
    const SubscriptionTerms after = _store.terms(path);
    if (!after.isEnabled) {
        if (before.isEnabled) {
            _router.disconnect(before);
        }
        return;
    }
    try {
        if (!before.isEnabled) {
            _router.connect(after);
        } else if (_policy(before) != _policy(after)) {
            _router.change(before, after);
        }
    } catch (...) {
        _store.modify(path, before.subscription, CIMPropertyList());
        throw;
    }
}

void Subscriptions::remove(const CIMObjectPath& path) {
    const std::lock_guard<std::mutex> lock(_changes);
    _removeExpired();
    if (_isSubscription(path)) {
        const SubscriptionTerms terms = _store.terms(path);
        _store.remove(path);
        _router.disconnect(terms);
        return;
    }
    const std::string identity = _store.identity(path);
    _store.remove(path);
    _queues.forget(identity);
}

}  // namespace QZ
