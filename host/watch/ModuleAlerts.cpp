// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ModuleAlerts.h"

#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>

#include <algorithm>
#include <mutex>
#include <utility>

#include "CimText.h"
#include "Error.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* _alertClass = "CIM_AlertIndication";

// CIM_IndicationSubscription.RepeatNotificationPolicy: none.
constexpr Uint16 _noPolicy = 2;

CIMObjectPath _interopPath(const char* className, const Array<CIMKeyBinding>& keys) {
    return CIMObjectPath(String(), CIMNamespaceName(INTEROP_NAMESPACE), CIMName(className), keys);
}

CIMObjectPath _namedPath(const char* className) {
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Name"), String("tavqz watch"), CIMKeyBinding::STRING));
    return _interopPath(className, keys);
}

// There are no such instances, but a provider is to see what a server would show it.
CIMInstance _subscription() {
    const CIMObjectPath filter = _namedPath("CIM_IndicationFilter");
    const CIMObjectPath handler = _namedPath("CIM_ListenerDestination");
    Array<CIMKeyBinding> keys;
    keys.append(CIMKeyBinding(CIMName("Filter"), CIMValue(filter)));
    keys.append(CIMKeyBinding(CIMName("Handler"), CIMValue(handler)));
    CIMInstance subscription(CIMName("CIM_IndicationSubscription"));
    subscription.addProperty(CIMProperty(CIMName("Filter"), CIMValue(filter)));
    subscription.addProperty(CIMProperty(CIMName("Handler"), CIMValue(handler)));
    subscription.setPath(_interopPath("CIM_IndicationSubscription", keys));
    return subscription;
}

OperationContext _context() {
    OperationContext context;
    context.insert(IdentityContainer(String()));
    context.insert(AcceptLanguageListContainer(AcceptLanguageList()));
    context.insert(ContentLanguageListContainer(ContentLanguageList()));
    context.insert(SubscriptionInstanceContainer(_subscription()));
    context.insert(SubscriptionFilterConditionContainer(String(), "WQL"));
    context.insert(SubscriptionFilterQueryContainer(String("SELECT * FROM ") + _alertClass, "WQL",
                                                    CIMNamespaceName(MODEL_NAMESPACE)));
    return context;
}

}  // namespace

// Hands on what the providers deliver, from whichever of their threads.
class ModuleAlerts::Relay : public IndicationResponseHandler {
public:
    explicit Relay(Take take) : _take(std::move(take)) {}

    void processing() override {}
    void complete() override {}
    void deliver(const CIMIndication& alert) override {
        const std::lock_guard<std::mutex> lock(_mutex);
        if (!alert.isUninitialized()) {
            // The provider may go on with its own.
            _take(alert.clone());
        }
    }
    void deliver(const Array<CIMIndication>& alerts) override {
        for (Uint32 i = 0; i < alerts.size(); ++i) {
            deliver(alerts[i]);
        }
    }
    void deliver(const OperationContext&, const CIMIndication& alert) override { deliver(alert); }
    void deliver(const OperationContext&, const Array<CIMIndication>& alerts) override {
        deliver(alerts);
    }

private:
    std::mutex _mutex;
    Take _take;
};

// A provider of alerts, and how far it has been subscribed to.
struct ModuleAlerts::Subscribed {
    const ProviderEntry* entry;
    Array<CIMObjectPath> classes;
    bool isCreated = false;
    bool isEnabled = false;
};

ModuleAlerts::ModuleAlerts(InProcessServer& server) : _server(server) {}

ModuleAlerts::~ModuleAlerts() {
    ModuleAlerts::stop();
}

void ModuleAlerts::start(Take take) {
    _findProviders();
    _relay = std::make_unique<Relay>(std::move(take));
    try {
        // As a server starts: every subscription is there before any indication is enabled.
        for (Subscribed& provider : _providers) {
            _server.askIndications(*provider.entry, [&](CIMIndicationProvider& indications) {
                indications.createSubscription(_context(), _subscription().getPath(),
                                               provider.classes, CIMPropertyList(), _noPolicy);
            });
            provider.isCreated = true;
        }
        for (Subscribed& provider : _providers) {
            _server.askIndications(*provider.entry, [&](CIMIndicationProvider& indications) {
                indications.enableIndications(*_relay);
            });
            provider.isEnabled = true;
        }
    } catch (...) {
        stop();
        throw;
    }
}

void ModuleAlerts::stop() noexcept {
    for (Subscribed& provider : _providers) {
        if (provider.isEnabled) {
            _tell(provider,
                  [](CIMIndicationProvider& indications) { indications.disableIndications(); });
        }
    }
    for (Subscribed& provider : _providers) {
        if (provider.isCreated) {
            _tell(provider, [&provider](CIMIndicationProvider& indications) {
                indications.deleteSubscription(_context(), _subscription().getPath(),
                                               provider.classes);
            });
        }
    }
    _providers.clear();
    _relay.reset();
}

// What a provider throws at its end changes nothing.
void ModuleAlerts::_tell(const Subscribed& provider,
                         const std::function<void(CIMIndicationProvider&)>& call) noexcept {
    try {
        _server.askIndications(*provider.entry, call);
    } catch (...) {
        // It is left to its terminate().
    }
}

void ModuleAlerts::_findProviders() {
    const Schema& schema = _server.schema();
    for (const ClassDeclaration* alert : schema.classes.subclasses(_alertClass, true)) {
        const ProviderEntry* const entry =
            schema.registration.indicationProvider(MODEL_NAMESPACE, alert->name);
        if (!entry) {
            continue;
        }
        auto found = std::find_if(_providers.begin(), _providers.end(),
                                  [entry](const Subscribed& one) { return one.entry == entry; });
        if (found == _providers.end()) {
            found = _providers.insert(found, Subscribed{entry, {}});
        }
        found->classes.append(CIMObjectPath(String(), CIMNamespaceName(MODEL_NAMESPACE),
                                            CIMName(make_String(alert->name))));
    }
    if (_providers.empty()) {
        throw Error("Nobody in the model raises alerts");
    }
}

}  // namespace QZ
