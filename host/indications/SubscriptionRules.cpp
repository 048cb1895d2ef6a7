// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "SubscriptionRules.h"

#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Exception.h>

#include <algorithm>

#include "CimText.h"
#include "ClassConversion.h"
#include "ListenerUrl.h"
#include "SubscriptionProperties.h"
#include "SubscriptionTime.h"
#include "System.h"
#include "Text.h"

namespace QZ {

using namespace Pegasus;

namespace {

constexpr const char* SYSTEM_CLASS = "CIM_ComputerSystem";
constexpr const char* STATE = "SubscriptionState";
constexpr const char* LAST_CHANGE = "TimeOfLastStateChange";
// What a client has no say in.
constexpr const char* SERVERS_TIMES[] = {SUBSCRIPTION_START, SUBSCRIPTION_REMAINING, LAST_CHANGE};
constexpr Uint16 ENABLED = 2;    // SubscriptionState
constexpr Uint16 IGNORE = 2;     // OnFatalErrorPolicy
constexpr Uint16 NONE = 2;       // RepeatNotificationPolicy
constexpr Uint16 PERMANENT = 2;  // PersistenceType

[[noreturn]] void _refuse(CIMStatusCode status, const std::string& sentence) {
    throw CIMException(status, make_String(sentence));
}

[[noreturn]] void _refuse(const std::string& sentence) {
    _refuse(CIM_ERR_INVALID_PARAMETER, sentence);
}

std::string _lower(std::string text) {
    for (char& c : text) {
        c = c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
    }
    return text;
}

void _default(CIMInstance& instance, const char* property, const CIMValue& value) {
    if (valueOf(instance, property).isNull()) {
        setValue(instance, property, value);
    }
}

std::string _name(const CIMInstance& instance) {
    return make_string(instance.getClassName().getString());
}

CIMValue _string(const std::string& text) {
    return CIMValue(make_String(text));
}

void _fillIn(CIMInstance& instance, const std::string& className) {
    if (sameName(className, SUBSCRIPTION_CLASS)) {
        const CIMValue now(currentTime());
        _default(instance, STATE, CIMValue(ENABLED));
        _default(instance, "OnFatalErrorPolicy", CIMValue(IGNORE));
        _default(instance, "RepeatNotificationPolicy", CIMValue(NONE));
        _default(instance, SUBSCRIPTION_START, now);
        _default(instance, LAST_CHANGE, now);
        return;
    }
    _default(instance, "SystemCreationClassName", _string(SYSTEM_CLASS));
    const std::wstring system = System::getName();
    _default(instance, "SystemName", CIMValue(make_String(system.empty() ? L"localhost" : system)));
    _default(instance, "CreationClassName", _string(className));
    if (sameName(className, DESTINATION_CLASS)) {
        _default(instance, "PersistenceType", CIMValue(PERMANENT));
    }
}

void _checkDestination(const CIMInstance& destination) {
    try {
        (void)parseListenerUrl(textOf(destination, "Destination"));
    } catch (const Error& error) {
        _refuse(std::string("Destination: ") + error.what());
    }
}

void _refuseExpired(const CIMInstance& instance) {
    if (sameName(_name(instance), SUBSCRIPTION_CLASS) &&
        secondsRemaining(instance) == std::uint64_t(0)) {
        _refuse("SubscriptionDuration: that time is over already; null is for ever");
    }
}

}  // namespace

bool isSubscriptionClass(const std::string& className) {
    return sameName(className, FILTER_CLASS) || sameName(className, DESTINATION_CLASS) ||
           sameName(className, SUBSCRIPTION_CLASS);
}

const ClassDeclaration& SubscriptionRules::_class(const CIMNamespaceName& nameSpace,
                                                  const CIMName& name) const {
    const ClassRepository* const classes = _schema.find(make_string(nameSpace.getString()));
    if (!classes) {
        throw CIMException(CIM_ERR_INVALID_NAMESPACE, nameSpace.getString());
    }
    const ClassDeclaration* const declared = classes->find(make_string(name.getString()));
    if (!declared || !isSubscriptionClass(declared->name)) {
        throw CIMException(CIM_ERR_INVALID_CLASS, name.getString());
    }
    return *declared;
}

CIMInstance SubscriptionRules::made(const CIMNamespaceName& nameSpace,
                                    const CIMInstance& given) const {
    CIMInstance own = given.clone();
    for (const char* const property : SERVERS_TIMES) {
        const Uint32 at = own.findProperty(CIMName(property));
        if (at != PEG_NOT_FOUND && sameName(_name(own), SUBSCRIPTION_CLASS)) {
            own.removeProperty(at);
        }
    }
    CIMInstance instance = restored(nameSpace, own);
    _refuseExpired(instance);
    return instance;
}

CIMInstance SubscriptionRules::restored(const CIMNamespaceName& nameSpace,
                                        const CIMInstance& given) const {
    const ClassDeclaration& declared = _class(nameSpace, given.getClassName());
    CIMInstance instance(CIMName(make_String(declared.name)));
    instance.setPath(CIMObjectPath(String(), nameSpace, instance.getClassName()));
    for (Uint32 i = 0; i < given.getPropertyCount(); ++i) {
        takeProperty(declared, given.getProperty(i), instance);
    }
    _fillIn(instance, declared.name);
    for (const PropertyDeclaration& property : declared.properties) {
        const bool isNeeded = property.isKey() || property.qualifiers.isTrue("Required");
        if (isNeeded && textOf(instance, property.name.c_str()).empty()) {
            _refuse(declared.name + " needs a value of " + property.name);
        }
    }
    CIMObjectPath path = instance.buildPath(makeCimClass(declared));
    path.setNameSpace(nameSpace);
    instance.setPath(path);
    _check(instance);
    return completed(instance, declared);
}

CIMInstance SubscriptionRules::changed(const CIMInstance& kept, const CIMInstance& given,
                                       const CIMPropertyList& properties) const {
    const ClassDeclaration& declared =
        _class(kept.getPath().getNameSpace(), kept.getPath().getClassName());
    const auto isNamed = [&](const CIMName& name) {
        for (Uint32 i = 0; i < properties.size(); ++i) {
            if (properties[i].equal(name)) {
                return true;
            }
        }
        return properties.isNull() != 0;
    };
    CIMInstance instance = kept.clone();
    for (Uint32 i = 0; i < given.getPropertyCount(); ++i) {
        const CIMConstProperty property = given.getProperty(i);
        const PropertyDeclaration* const known =
            declared.find(make_string(property.getName().getString()));
        // A whole instance holds its keys, and what the server wrote, too.
        if (isNamed(property.getName()) && (!known || known->isWritable())) {
            takeProperty(declared, property, instance);
        }
    }
    _fillIn(instance, declared.name);
    if (sameName(declared.name, SUBSCRIPTION_CLASS) &&
        numberOf(instance, STATE) != numberOf(kept, STATE)) {
        setValue(instance, LAST_CHANGE, CIMValue(currentTime()));
    }
    _check(instance);
    _refuseExpired(instance);
    return instance;
}

void SubscriptionRules::_check(const CIMInstance& instance) const {
    const std::string className = _name(instance);
    if (sameName(className, FILTER_CLASS)) {
        filterTerms(instance);
    } else if (sameName(className, DESTINATION_CLASS)) {
        _checkDestination(instance);
    }
    if (!sameName(className, SUBSCRIPTION_CLASS) &&
        !sameName(textOf(instance, "CreationClassName"), className)) {
        _refuse("CreationClassName: " + className + " expected");
    }
}

std::string SubscriptionRules::identity(const CIMObjectPath& path) const {
    const ClassDeclaration& declared = _class(path.getNameSpace(), path.getClassName());
    std::string text =
        _lower(make_string(path.getNameSpace().getString())) + ":" + _lower(declared.name);
    for (const PropertyDeclaration& property : declared.properties) {
        if (!property.isKey()) {
            continue;
        }
        const CIMName name(make_String(property.name));
        const Array<CIMKeyBinding>& keys = path.getKeyBindings();
        Uint32 at = 0;
        while (at < keys.size() && !keys[at].getName().equal(name)) {
            ++at;
        }
        if (at == keys.size()) {
            _refuse("the path lacks the key " + property.name);
        }
        std::string value = make_string(keys[at].getValue());
        if (property.type == CIMTYPE_REFERENCE) {
            try {
                value =
                    identity(localPath(CIMObjectPath(keys[at].getValue()), path.getNameSpace()));
            } catch (const MalformedObjectNameException& exception) {
                _refuse(property.name + ": " + make_string(exception.getMessage()));
            }
        }
        text.append("\n").append(std::to_string(value.size())).append(" ").append(value);
    }
    return text;
}

void SubscriptionRules::_checkSource(const WqlQuery& query, const std::string& nameSpace) const {
    const ClassRepository* const classes = _schema.find(nameSpace);
    if (!classes) {
        _refuse("SourceNamespaces: the server has no namespace " + nameSpace);
    }
    const ClassDeclaration* const declared = classes->find(query.className);
    if (!declared || !declared->isIndication()) {
        _refuse(CIM_ERR_NOT_SUPPORTED,
                nameSpace + " has no indication class " + query.className +
                    (declared ? "" : "; SourceNamespaces says where a filter's class is"));
    }
    std::vector<const ClassDeclaration*> family = classes->subclasses(declared->name, true);
    family.push_back(declared);
    if (std::none_of(family.begin(), family.end(), [&](const ClassDeclaration* one) {
            return _schema.registration.indicationProvider(nameSpace, one->name) != nullptr;
        })) {
        _refuse(CIM_ERR_NOT_SUPPORTED, "nobody sends indications of " + query.className);
    }
    checkWql(query, *classes);
}

FilterTerms SubscriptionRules::filterTerms(const CIMInstance& filter) const {
    const std::string language = textOf(filter, "QueryLanguage");
    if (!sameName(language, "WQL")) {
        _refuse(CIM_ERR_QUERY_LANGUAGE_NOT_SUPPORTED,
                "QueryLanguage: WQL is spoken, " + language + " is not");
    }
    FilterTerms terms;
    const CIMValue sources = valueOf(filter, "SourceNamespaces");
    Array<String> names;
    if (!sources.isNull()) {
        sources.get(names);
    }
    for (Uint32 i = 0; i < names.size(); ++i) {
        terms.nameSpaces.push_back(make_string(names[i]));
    }
    const std::string source = textOf(filter, "SourceNamespace");
    if (terms.nameSpaces.empty()) {
        terms.nameSpaces.push_back(
            source.empty() ? make_string(filter.getPath().getNameSpace().getString()) : source);
    }
    terms.text = textOf(filter, "Query");
    try {
        terms.query = parseWql(terms.text);
        for (const std::string& nameSpace : terms.nameSpaces) {
            _checkSource(terms.query, nameSpace);
        }
    } catch (const WqlError& error) {
        _refuse(CIM_ERR_INVALID_QUERY, error.what());
    }
    return terms;
}

}  // namespace QZ
