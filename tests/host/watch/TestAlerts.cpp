// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A provider module that raises alerts when indications are enabled and disabled, and writes every
// call to the file that TAVQZ_TEST_CALLS names. The call that TAVQZ_TEST_REFUSED names is refused.

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

using namespace Pegasus;

namespace {

std::string _variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

class AlertProvider : public CIMInstanceProvider, public CIMIndicationProvider {
public:
    explicit AlertProvider(const String& name) : _name(name.getCString()) {}

    void initialize(CIMOMHandle&) override {}
    void terminate() override {
        _call("terminate");
        delete this;
    }

    void createSubscription(const OperationContext& context, const CIMObjectPath& subscription,
                            const Array<CIMObjectPath>& classNames, const CIMPropertyList&,
                            const Uint16) override {
        const SubscriptionFilterQueryContainer query(
            context.get(SubscriptionFilterQueryContainer::NAME));
        _call("create " + _list(classNames) + std::string(query.getFilterQuery().getCString()));
        _subscription = subscription;
    }
    void modifySubscription(const OperationContext&, const CIMObjectPath&,
                            const Array<CIMObjectPath>&, const CIMPropertyList&,
                            const Uint16) override {}
    void deleteSubscription(const OperationContext&, const CIMObjectPath& subscription,
                            const Array<CIMObjectPath>& classNames) override {
        _call("delete " + _list(classNames) +
              (subscription.identical(_subscription) ? "same" : "other"));
    }
    void enableIndications(IndicationResponseHandler& handler) override {
        _call("enable");
        _handler = &handler;
        handler.processing();
        std::thread([this] { _raise("enabled"); }).join();
    }
    void disableIndications() override {
        _raise("disabled");
        _handler->complete();
        _call("disable");
    }

    void enumerateInstances(const OperationContext&, const CIMObjectPath&, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler&) override {}
    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {}
    void getInstance(const OperationContext&, const CIMObjectPath&, const Boolean, const Boolean,
                     const CIMPropertyList&, InstanceResponseHandler&) override {}
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {}
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        ObjectPathResponseHandler&) override {}
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {}

private:
    // "enable" is refused where TAVQZ_TEST_REFUSED is "Second enable".
    void _call(const std::string& what) const {
        const std::string line = _name + " " + what;
        std::ofstream(_variable("TAVQZ_TEST_CALLS"), std::ios::app) << line << "\n";
        const std::string refused = _variable("TAVQZ_TEST_REFUSED");
        if (!refused.empty() && line.rfind(refused, 0) == 0) {
            throw CIMException(CIM_ERR_ACCESS_DENIED, "not today");
        }
    }

    // In each of the ways that a handler has.
    void _raise(const char* what) {
        CIMIndication alert(CIMName(String("TEST_") + _name.c_str()));
        alert.addProperty(CIMProperty(CIMName("Description"), String(what)));
        Array<CIMIndication> alerts;
        alerts.append(alert);
        if (_name == "Second") {
            _handler->deliver(OperationContext(), alerts);
            _handler->deliver(CIMIndication());
            return;
        }
        _handler->deliver(OperationContext(), alert);
        // The instance stays the provider's.
        alert.removeProperty(0);
    }

    static std::string _list(const Array<CIMObjectPath>& paths) {
        std::string list;
        for (Uint32 i = 0; i < paths.size(); ++i) {
            list.append(paths[i].toString().getCString()).append(" ");
        }
        return list;
    }

    std::string _name;
    CIMObjectPath _subscription;
    IndicationResponseHandler* _handler = nullptr;
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& name) {
    return static_cast<CIMInstanceProvider*>(new AlertProvider(name));
}
