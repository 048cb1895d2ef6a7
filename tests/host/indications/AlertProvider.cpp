// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT

// A provider of alerts that a test rings for, and that says what it was called with.

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMIndicationProvider.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

#include <mutex>
#include <string>
#include <thread>

using namespace Pegasus;

namespace {

class AlertProvider : public CIMInstanceProvider, public CIMIndicationProvider {
public:
    void initialize(CIMOMHandle&) override {}
    void terminate() override { delete this; }

    void enableIndications(IndicationResponseHandler& handler) override {
        _called("enable");
        _handler = &handler;
        handler.processing();
        // Nobody may miss what comes at once.
        _send("TEST_Alert", 0, 0);
    }
    void disableIndications() override {
        _called("disable");
        if (_lastNumber != 0) {
            _send("TEST_Alert", _lastNumber, 0);
        }
        _handler->complete();
        _handler = nullptr;
    }
    void createSubscription(const OperationContext& context, const CIMObjectPath& path,
                            const Array<CIMObjectPath>& classNames, const CIMPropertyList&,
                            const Uint16 repeat) override {
        context.get(SubscriptionInstanceContainer::NAME);
        _called("create " + _key(path, "Filter") + _classes(classNames) + " " +
                std::to_string(repeat) + _condition(context));
        for (Uint32 i = 0; i < classNames.size(); ++i) {
            if (classNames[i].getClassName().equal(CIMName("TEST_RefusedAlert"))) {
                throw CIMException(CIM_ERR_ACCESS_DENIED, "nobody may have that");
            }
        }
    }
    // Refuses the policy Delay.
    void modifySubscription(const OperationContext& context, const CIMObjectPath& path,
                            const Array<CIMObjectPath>& classNames, const CIMPropertyList&,
                            const Uint16 repeat) override {
        context.get(SubscriptionInstanceContainer::NAME);
        _called("modify " + _key(path, "Filter") + _classes(classNames) + " " +
                std::to_string(repeat));
        if (repeat == 4) {
            throw CIMException(CIM_ERR_NOT_SUPPORTED, "nothing is delayed");
        }
    }
    void deleteSubscription(const OperationContext&, const CIMObjectPath& path,
                            const Array<CIMObjectPath>& classNames) override {
        _called("delete " + _key(path, "Filter") + _classes(classNames));
    }

    // Rings, from a thread of the provider's own; "at the end", as a last check does.
    void createInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance& bell,
                        ObjectPathResponseHandler& handler) override {
        Uint32 number = 0;
        Uint16 severity = 0;
        bell.getProperty(bell.findProperty("Number")).getValue().get(number);
        bell.getProperty(bell.findProperty("PerceivedSeverity")).getValue().get(severity);
        String alert;
        bell.getProperty(bell.findProperty("Id")).getValue().get(alert);
        if (alert == "at the end") {
            _lastNumber = number;
        } else if (_handler != nullptr) {
            std::thread([&] { _send(alert, number, severity); }).join();
        }
        handler.processing();
        handler.complete();
    }

    // What the provider was called with since somebody asked last.
    void enumerateInstances(const OperationContext&, const CIMObjectPath& path, const Boolean,
                            const Boolean, const CIMPropertyList&,
                            InstanceResponseHandler& handler) override {
        const std::lock_guard<std::mutex> lock(_mutex);
        CIMInstance instance(path.getClassName());
        instance.setPath(path);
        instance.addProperty(CIMProperty("Calls", CIMValue(_calls)));
        _calls.clear();
        handler.processing();
        handler.deliver(instance);
        handler.complete();
    }
    void getInstance(const OperationContext&, const CIMObjectPath&, const Boolean, const Boolean,
                     const CIMPropertyList&, InstanceResponseHandler&) override {}
    void enumerateInstanceNames(const OperationContext&, const CIMObjectPath&,
                                ObjectPathResponseHandler&) override {}
    void modifyInstance(const OperationContext&, const CIMObjectPath&, const CIMInstance&,
                        const Boolean, const CIMPropertyList&, ResponseHandler&) override {}
    void deleteInstance(const OperationContext&, const CIMObjectPath&, ResponseHandler&) override {}

private:
    void _called(const std::string& what) {
        const std::lock_guard<std::mutex> lock(_mutex);
        _calls.append(what.c_str());
    }

    void _send(const String& className, Uint32 number, Uint16 severity) {
        CIMInstance alert{CIMName(className)};
        alert.setPath(CIMObjectPath(String(), "root/tavqz", className));
        alert.addProperty(CIMProperty("Number", CIMValue(number)));
        alert.addProperty(CIMProperty("PerceivedSeverity", CIMValue(severity)));
        _handler->deliver(alert);
    }

    // The name of what a subscription refers to.
    static std::string _key(const CIMObjectPath& path, const char* reference) {
        const Array<CIMKeyBinding>& keys = path.getKeyBindings();
        for (Uint32 i = 0; i < keys.size(); ++i) {
            if (keys[i].getName().equal(CIMName(reference))) {
                const Array<CIMKeyBinding> inner =
                    CIMObjectPath(keys[i].getValue()).getKeyBindings();
                for (Uint32 j = 0; j < inner.size(); ++j) {
                    if (inner[j].getName().equal(CIMName("Name"))) {
                        return inner[j].getValue().getCString().operator const char*();
                    }
                }
            }
        }
        return "?";
    }

    static std::string _classes(const Array<CIMObjectPath>& names) {
        std::string text;
        for (Uint32 i = 0; i < names.size(); ++i) {
            text += " ";
            text += names[i].getClassName().getString().getCString().operator const char*();
        }
        return text;
    }

    // Of a filter that has one, with the query that it stands in.
    static std::string _condition(const OperationContext& context) {
        const SubscriptionFilterConditionContainer condition =
            context.get(SubscriptionFilterConditionContainer::NAME);
        const SubscriptionFilterQueryContainer query =
            context.get(SubscriptionFilterQueryContainer::NAME);
        const auto text = [](const String& value) {
            return std::string(value.getCString().operator const char*());
        };
        const std::string asked = text(condition.getFilterCondition());
        return asked.empty() ? asked
                             : " if " + asked + " of " + text(query.getFilterQuery()) + " in " +
                                   text(query.getSourceNameSpace().getString()) + " by " +
                                   text(condition.getQueryLanguage()) + " and " +
                                   text(query.getQueryLanguage());
    }

    std::mutex _mutex;
    Array<String> _calls;
    IndicationResponseHandler* _handler = nullptr;
    Uint32 _lastNumber = 0;
};

}  // namespace

extern "C" PEGASUS_EXPORT CIMProvider* PegasusCreateProvider(const String& name) {
    return name == "AlertProvider" ? new AlertProvider : nullptr;
}
