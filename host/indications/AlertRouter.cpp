// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertRouter.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/OperationContext.h>

#include <algorithm>

#include "CimText.h"
#include "Text.h"
#include "WqlMatch.h"

namespace QZ {

using namespace Pegasus;

namespace {

std::string _key(const SubscriptionTerms& terms) {
    return make_string(terms.subscription.getPath().toString());
}

// What the query asks of an alert, as text.
std::string _condition(const WqlQuery& query) {
    static const std::string WHERE = " WHERE ";
    const std::string text = wqlText(query);
    const std::size_t at = text.find(WHERE);
    return at == std::string::npos ? "" : text.substr(at + WHERE.size());
}

// What a provider is told of who subscribes. The server does, for people who may be gone.
OperationContext _context(const SubscriptionTerms& terms) {
    OperationContext context;
    context.insert(IdentityContainer(String()));
    context.insert(SubscriptionInstanceContainer(terms.subscription));
    const FilterTerms& wanted = terms.wanted;
    context.insert(
        SubscriptionFilterConditionContainer(make_String(_condition(wanted.query)), "WQL"));
    context.insert(SubscriptionFilterQueryContainer(
        make_String(wanted.text), "WQL", CIMNamespaceName(make_String(wanted.nameSpaces.front()))));
    context.insert(AcceptLanguageListContainer(AcceptLanguageList()));
    context.insert(ContentLanguageListContainer(ContentLanguageList()));
    return context;
}

}  // namespace

// Where a provider puts its alerts. Valid until its indications are disabled.
class AlertRouter::Handler : public IndicationResponseHandler {
public:
    explicit Handler(AlertRouter& router) : _router(router) {}

    void processing() override {}
    void complete() override {}
    void deliver(const CIMIndication& alert) override { _router._route(alert); }
    void deliver(const Array<CIMIndication>& alerts) override {
        for (Uint32 i = 0; i < alerts.size(); ++i) {
            _router._route(alerts[i]);
        }
    }
    void deliver(const OperationContext&, const CIMIndication& alert) override { deliver(alert); }
    void deliver(const OperationContext&, const Array<CIMIndication>& alerts) override {
        deliver(alerts);
    }

private:
    AlertRouter& _router;
};

// A provider, and which subscriptions it knows of.
struct AlertRouter::Source {
    Source(const ProviderEntry& provider, AlertRouter& router) : entry(provider), handler(router) {}

    const ProviderEntry& entry;
    Handler handler;
    std::map<std::string, ClassNames> subscriptions;
    bool isEnabled = false;
};

AlertRouter::AlertRouter(InProcessServer& providers, Deliver deliver, Log log)
    : _providers(providers),
      _deliver(std::move(deliver)),
      _log(std::move(log)),
      _active(std::make_shared<Active>()) {}

AlertRouter::~AlertRouter() {
    for (const auto& [key, source] : _sources) {
        _disable(*source);
    }
}

void AlertRouter::_try(const char* what, const std::function<void()>& call) {
    try {
        call();
    } catch (const Exception& exception) {
        _log(what + (": " + make_string(exception.getMessage())));
    } catch (const std::exception& error) {
        _log(what + std::string(": ") + error.what());
    }
}

// The providers of the query's class and of those below it, each with its own.
AlertRouter::Wanted AlertRouter::_wanted(const SubscriptionTerms& terms) const {
    Wanted wanted;
    const Schema& schema = _providers.schema();
    for (const std::string& nameSpace : terms.wanted.nameSpaces) {
        const ClassRepository& classes = *schema.find(nameSpace);
        const ClassDeclaration& top = *classes.find(terms.wanted.query.className);
        std::vector<const ClassDeclaration*> family = classes.subclasses(top.name, true);
        family.insert(family.begin(), &top);
        for (const ClassDeclaration* const declared : family) {
            const ProviderEntry* const entry =
                schema.registration.indicationProvider(nameSpace, declared->name);
            if (entry) {
                auto& [provider, names] = wanted[{entry->module, entry->name}];
                provider = entry;
                names.append(CIMObjectPath(String(), CIMNamespaceName(make_String(nameSpace)),
                                           CIMName(make_String(declared->name))));
            }
        }
    }
    return wanted;
}

void AlertRouter::_subscribe(const SubscriptionTerms& terms, const ProviderEntry& entry,
                             const ClassNames& classNames) {
    auto& source = _sources[{entry.module, entry.name}];
    if (!source) {
        source = std::make_unique<Source>(entry, *this);
    }
    _providers.askIndications(entry, [&](CIMIndicationProvider& provider) {
        provider.createSubscription(_context(terms), terms.subscription.getPath(), classNames,
                                    CIMPropertyList(),
                                    numberOf(terms.subscription, "RepeatNotificationPolicy"));
    });
    source->subscriptions[_key(terms)] = classNames;
}

void AlertRouter::_tell(const SubscriptionTerms& changed) {
    for (const auto& [key, source] : _sources) {
        const auto found = source->subscriptions.find(_key(changed));
        if (found == source->subscriptions.end()) {
            continue;
        }
        const ClassNames& classNames = found->second;
        _providers.askIndications(source->entry, [&](CIMIndicationProvider& provider) {
            provider.modifySubscription(_context(changed), changed.subscription.getPath(),
                                        classNames, CIMPropertyList(),
                                        numberOf(changed.subscription, "RepeatNotificationPolicy"));
        });
    }
}

void AlertRouter::_unsubscribe(const SubscriptionTerms& terms) {
    for (const auto& [key, source] : _sources) {
        const auto found = source->subscriptions.find(_key(terms));
        if (found == source->subscriptions.end()) {
            continue;
        }
        const ClassNames classNames = found->second;
        source->subscriptions.erase(found);
        _try("a subscription is deleted", [&, &from = *source] {
            _providers.askIndications(from.entry, [&](CIMIndicationProvider& provider) {
                provider.deleteSubscription(_context(terms), terms.subscription.getPath(),
                                            classNames);
            });
        });
        if (source->subscriptions.empty()) {
            _disable(*source);
        }
    }
}

void AlertRouter::_enable(Source& source) {
    if (source.isEnabled || source.subscriptions.empty()) {
        return;
    }
    _providers.askIndications(source.entry, [&](CIMIndicationProvider& provider) {
        provider.enableIndications(source.handler);
    });
    source.isEnabled = true;
}

void AlertRouter::_disable(Source& source) {
    if (!source.isEnabled) {
        return;
    }
    source.isEnabled = false;
    _try("indications are disabled", [&] {
        _providers.askIndications(
            source.entry, [](CIMIndicationProvider& provider) { provider.disableIndications(); });
    });
}

void AlertRouter::_setActive(const std::function<void(Active& active)>& change) {
    const std::lock_guard<std::mutex> lock(_mutex);
    auto active = std::make_shared<Active>(*_active);
    change(*active);
    _active = std::move(active);
}

void AlertRouter::start(const std::vector<SubscriptionTerms>& kept) {
    for (const SubscriptionTerms& terms : kept) {
        if (!terms.isEnabled) {
            continue;
        }
        _setActive([&](Active& active) { active.emplace(_key(terms), terms); });
        for (const auto& [key, one] : _wanted(terms)) {
            _try("a subscription is taken up",
                 [&, &wanted = one] { _subscribe(terms, *wanted.first, wanted.second); });
        }
    }
    for (const auto& [key, source] : _sources) {
        _try("indications are enabled", [this, &from = *source] { _enable(from); });
    }
}

void AlertRouter::connect(const SubscriptionTerms& terms) {
    if (!terms.isEnabled) {
        return;
    }
    // First, for a provider may send something as soon as it is asked to.
    _setActive([&](Active& active) { active.emplace(_key(terms), terms); });
    try {
        const Wanted wanted = _wanted(terms);
        for (const auto& [key, one] : wanted) {
            _subscribe(terms, *one.first, one.second);
        }
        for (const auto& [key, one] : wanted) {
            _enable(*_sources[key]);
        }
    } catch (...) {
        disconnect(terms);
        throw;
    }
}

void AlertRouter::change(const SubscriptionTerms& before, const SubscriptionTerms& after) {
    try {
        _tell(after);
    } catch (...) {
        _try("a change of a subscription is taken back", [&] { _tell(before); });
        throw;
    }
}

void AlertRouter::disconnect(const SubscriptionTerms& terms) {
    // Last, for a provider may send something while it is disabled, and never again.
    _unsubscribe(terms);
    _setActive([&](Active& active) { active.erase(_key(terms)); });
}

// Called by a provider, through whose code nothing is thrown.
void AlertRouter::_route(const CIMInstance& alert) {
    _try("an alert is delivered", [&] {
        std::shared_ptr<const Active> active;
        {
            const std::lock_guard<std::mutex> lock(_mutex);
            active = _active;
        }
        const CIMNamespaceName from = alert.getPath().getNameSpace();
        const std::string nameSpace =
            from.isNull() ? MODEL_NAMESPACE : make_string(from.getString());
        const ClassRepository* const classes = _providers.schema().find(nameSpace);
        if (!classes) {
            throw Error("there is no namespace " + nameSpace);
        }
        for (const auto& [key, terms] : *active) {
            const std::vector<std::string>& sources = terms.wanted.nameSpaces;
            const bool isFromThere =
                std::any_of(sources.begin(), sources.end(),
                            [&](const std::string& source) { return sameName(source, nameSpace); });
            if (isFromThere && matchesWql(terms.wanted.query, alert, *classes)) {
                _deliver(terms.destination, {terms.url, selectWql(terms.wanted.query, alert)});
            }
        }
    });
}

}  // namespace QZ
