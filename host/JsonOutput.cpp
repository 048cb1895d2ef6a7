// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <cmath>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "CimText.h"
#include "Output.h"
#include "ValueText.h"
#include "ValueVisitor.h"

namespace QZ {

using namespace Pegasus;
using Json = nlohmann::ordered_json;

namespace {

Json _value(const CIMValue& value);

template <class Object>
Json _properties(const Object& object) {
    Json properties = Json::object();
    for (Uint32 i = 0; i < object.getPropertyCount(); ++i) {
        const CIMConstProperty property = object.getProperty(i);
        properties[make_string(property.getName().getString())] = _value(property.getValue());
    }
    return properties;
}

struct JsonValue {
    Json operator()(Boolean truth) const { return bool(truth); }
    Json operator()(const String& text) const { return make_string(text); }
    Json operator()(const Char16& c) const { return make_string(String(&c, 1)); }
    Json operator()(const CIMDateTime& date) const { return make_string(date.toString()); }
    Json operator()(const CIMObjectPath& path) const { return make_string(path.toString()); }
    Json operator()(const CIMObject& object) const { return _embedded(object); }
    Json operator()(const CIMInstance& instance) const { return _embedded(instance); }
    Json operator()(Real32 number) const { return _real(number); }
    Json operator()(Real64 number) const { return _real(number); }
    template <class Integer>
    Json operator()(Integer number) const {
        return number;
    }
    template <class T>
    Json operator()(const Array<T>& array) const {
        Json elements = Json::array();
        for (Uint32 i = 0; i < array.size(); ++i) {
            elements.push_back((*this)(array[i]));
        }
        return elements;
    }

private:
    // By way of its text: 0.1 in 32 bits is to read 0.1, not 0.10000000149011612.
    template <class Real>
    Json _real(Real number) const {
        return std::isfinite(number) ? Json(std::strtod(realText(number).c_str(), nullptr))
                                     : Json();
    }

    template <class Object>
    Json _embedded(const Object& object) const {
        Json embedded;
        embedded["class"] = make_string(object.getClassName().getString());
        embedded["properties"] = _properties(object);
        return embedded;
    }
};

Json _value(const CIMValue& value) {
    return value.isNull() ? Json() : visitValue(value, JsonValue());
}

Json _textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

Json _element(const CIMInstance& instance) {
    Json element;
    element["path"] = make_string(instance.getPath().toString());
    element["properties"] = _properties(instance);
    return element;
}

// Indented by so many blanks; on one line where that is negative.
std::string _text(const Json& json, int indent = 2) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string jsonLine(const CIMInstance& instance) {
    return _text(_element(instance), -1);
}

std::string JsonOutput::instances(const std::vector<CIMInstance>& list) const {
    Json array = Json::array();
    for (const CIMInstance& instance : list) {
        array.push_back(_element(instance));
    }
    return _text(array);
}

std::string JsonOutput::names(const std::vector<CIMObjectPath>& list) const {
    Json array = Json::array();
    for (const CIMObjectPath& path : list) {
        array.push_back(make_string(path.toString()));
    }
    return _text(array);
}

std::string JsonOutput::classes(const Schema& schema) const {
    Json array = Json::array();
    for (const auto& declared : schema.classes.classes()) {
        const ProviderEntry* provider =
            schema.registration.instanceProvider(MODEL_NAMESPACE, declared->name);
        Json properties = Json::array();
        for (const PropertyDeclaration& property : declared->properties) {
            properties.push_back({{"name", property.name},
                                  {"type", cimTypeToString(property.type)},
                                  {"array", property.isArray},
                                  {"key", property.isKey()},
                                  {"writable", property.isWritable()}});
        }
        array.push_back({{"name", declared->name},
                         {"superclass", _textOrNull(declared->superclass)},
                         {"provider", _textOrNull(provider ? provider->name : "")},
                         {"properties", std::move(properties)}});
    }
    return _text(array);
}

}  // namespace QZ
