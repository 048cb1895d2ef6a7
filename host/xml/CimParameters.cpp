// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimParameters.h"

#include <Pegasus/Common/CIMValue.h>

#include "XmlObjects.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _expect(const XmlElement& value, const char* name) {
    if (value.name != name) {
        throw XmlValueError(std::string(name) + " expected, not " + value.name);
    }
}

CIMValue _typed(const XmlElement& value, CIMType type) {
    _expect(value, "VALUE");
    return typedValue(readUntypedValue(value), type, false);
}

template <std::optional<bool> CimRequest::*Member>
void _flag(const XmlElement& value, CimRequest& request) {
    Boolean flag = false;
    _typed(value, CIMTYPE_BOOLEAN).get(flag);
    request.*Member = flag;
}

template <std::optional<std::uint32_t> CimRequest::*Member>
void _number(const XmlElement& value, CimRequest& request) {
    Uint32 number = 0;
    _typed(value, CIMTYPE_UINT32).get(number);
    request.*Member = number;
}

template <auto Member>
void _text(const XmlElement& value, CimRequest& request) {
    _expect(value, "VALUE");
    request.*Member = *readUntypedValue(value).texts.front();
}

void _className(const XmlElement& value, CimRequest& request) {
    _expect(value, "CLASSNAME");
    request.className = readName(requiredAttribute(value, "NAME"));
}

void _instanceName(const XmlElement& value, CimRequest& request) {
    _expect(value, "INSTANCENAME");
    request.instanceName = readInstanceName(value);
}

void _newInstance(const XmlElement& value, CimRequest& request) {
    _expect(value, "INSTANCE");
    request.instance = readInstance(value);
}

void _modifiedInstance(const XmlElement& value, CimRequest& request) {
    _expect(value, "VALUE.NAMEDINSTANCE");
    const XmlElement* const name = value.child("INSTANCENAME");
    const XmlElement* const instance = value.child("INSTANCE");
    if (!name || !instance || value.children.size() != 2) {
        throw XmlLayoutError("VALUE.NAMEDINSTANCE holds no INSTANCENAME and INSTANCE");
    }
    request.instance = readInstance(*instance);
    request.instance.setPath(readInstanceName(*name));
}

void _propertyList(const XmlElement& value, CimRequest& request) {
    _expect(value, "VALUE.ARRAY");
    Array<CIMName> names;
    for (const auto& text : readUntypedValue(value).texts) {
        names.append(readName(text.value_or(std::string())));
    }
    request.propertyList = CIMPropertyList(names);
}

void _newValue(const XmlElement& value, CimRequest& request) {
    request.newValue = readUntypedValue(value);
}

constexpr bool REQUIRED = true;

constexpr CimParameter CLASS_NAME = {"ClassName", _className, REQUIRED};
constexpr CimParameter ANY_CLASS_NAME = {"ClassName", _className};
constexpr CimParameter INSTANCE_NAME = {"InstanceName", _instanceName, REQUIRED};
constexpr CimParameter PROPERTY_NAME = {"PropertyName", _text<&CimRequest::propertyName>, REQUIRED};
constexpr CimParameter PROPERTY_LIST = {"PropertyList", _propertyList};
constexpr CimParameter DEEP = {"DeepInheritance", _flag<&CimRequest::deepInheritance>};
constexpr CimParameter LOCAL = {"LocalOnly", _flag<&CimRequest::localOnly>};
constexpr CimParameter QUALIFIERS = {"IncludeQualifiers", _flag<&CimRequest::includeQualifiers>};
constexpr CimParameter ORIGIN = {"IncludeClassOrigin", _flag<&CimRequest::includeClassOrigin>};
constexpr CimParameter CONTEXT = {"EnumerationContext", _text<&CimRequest::enumerationContext>,
                                  REQUIRED};
constexpr CimParameter MAX_COUNT = {"MaxObjectCount", _number<&CimRequest::maxObjectCount>};
constexpr CimParameter MAX_COUNT_REQUIRED = {"MaxObjectCount", _number<&CimRequest::maxObjectCount>,
                                             REQUIRED};
constexpr CimParameter TIMEOUT = {"OperationTimeout", _number<&CimRequest::operationTimeout>};
constexpr CimParameter CONTINUE = {"ContinueOnError", _flag<&CimRequest::continueOnError>};
constexpr CimParameter FILTER = {"FilterQuery", _text<&CimRequest::filterQuery>};
constexpr CimParameter FILTER_LANGUAGE = {"FilterQueryLanguage",
                                          _text<&CimRequest::filterQueryLanguage>};

constexpr CimParameter CLASS_NAMES[] = {ANY_CLASS_NAME, DEEP};
constexpr CimParameter CLASSES[] = {ANY_CLASS_NAME, DEEP, LOCAL, QUALIFIERS, ORIGIN};
constexpr CimParameter GET_CLASS[] = {CLASS_NAME, LOCAL, QUALIFIERS, ORIGIN, PROPERTY_LIST};
constexpr CimParameter INSTANCES[] = {CLASS_NAME, LOCAL, DEEP, QUALIFIERS, ORIGIN, PROPERTY_LIST};
constexpr CimParameter INSTANCE_NAMES[] = {CLASS_NAME};
constexpr CimParameter GET_INSTANCE[] = {INSTANCE_NAME, LOCAL, QUALIFIERS, ORIGIN, PROPERTY_LIST};
constexpr CimParameter MODIFY[] = {
    {"ModifiedInstance", _modifiedInstance, REQUIRED}, QUALIFIERS, PROPERTY_LIST};
constexpr CimParameter CREATE[] = {{"NewInstance", _newInstance, REQUIRED}};
constexpr CimParameter DELETE[] = {INSTANCE_NAME};
constexpr CimParameter GET_PROPERTY[] = {INSTANCE_NAME, PROPERTY_NAME};
constexpr CimParameter SET_PROPERTY[] = {INSTANCE_NAME, PROPERTY_NAME, {"NewValue", _newValue}};
constexpr CimParameter GET_QUALIFIER[] = {
    {"QualifierName", _text<&CimRequest::qualifierName>, REQUIRED}};
constexpr CimParameter OPEN_INSTANCES[] = {
    CLASS_NAME, DEEP, ORIGIN, PROPERTY_LIST, FILTER, FILTER_LANGUAGE, TIMEOUT, CONTINUE, MAX_COUNT};
constexpr CimParameter OPEN_PATHS[] = {CLASS_NAME, FILTER,   FILTER_LANGUAGE,
                                       TIMEOUT,    CONTINUE, MAX_COUNT};
constexpr CimParameter PULL[] = {CONTEXT, MAX_COUNT_REQUIRED};
constexpr CimParameter CLOSE[] = {CONTEXT};

template <std::size_t Count>
constexpr CimMethod _method(const char* name, const CimParameter (&parameters)[Count]) {
    return {name, parameters, Count};
}

constexpr CimMethod METHODS[] = {
    _method("EnumerateInstances", INSTANCES),
    _method("EnumerateInstanceNames", INSTANCE_NAMES),
    _method("GetInstance", GET_INSTANCE),
    _method("ModifyInstance", MODIFY),
    _method("CreateInstance", CREATE),
    _method("DeleteInstance", DELETE),
    _method("GetProperty", GET_PROPERTY),
    _method("SetProperty", SET_PROPERTY),
    _method("EnumerateClassNames", CLASS_NAMES),
    _method("EnumerateClasses", CLASSES),
    _method("GetClass", GET_CLASS),
    {"EnumerateQualifiers", nullptr, 0},
    _method("GetQualifier", GET_QUALIFIER),
    _method("OpenEnumerateInstances", OPEN_INSTANCES),
    _method("OpenEnumerateInstancePaths", OPEN_PATHS),
    _method("PullInstancesWithPath", PULL),
    _method("PullInstancePaths", PULL),
    _method("CloseEnumeration", CLOSE),
};

}  // namespace

const CimMethod* findMethod(const std::string& name) {
    for (const CimMethod& method : METHODS) {
        if (name == method.name) {
            return &method;
        }
    }
    return nullptr;
}

}  // namespace QZ
