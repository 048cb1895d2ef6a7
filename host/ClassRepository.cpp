// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassRepository.h"

#include <algorithm>

#include "ValueMaker.h"

namespace QZ {

namespace {

// The element of that name, ignoring case, of a list of things with names.
template <class List>
auto _named(List& list, const std::string& name) {
    return std::find_if(list.begin(), list.end(),
                        [&](const auto& element) { return sameName(element.name, name); });
}

std::string _text(const std::vector<MofQualifier>& qualifiers, const char* name) {
    const auto found = _named(qualifiers, name);
    return found != qualifiers.end() && found->value ? found->value->text : std::string();
}

const std::vector<MofLiteral>* _elements(const std::vector<MofQualifier>& qualifiers,
                                         const char* name) {
    const auto found = _named(qualifiers, name);
    return found != qualifiers.end() && found->value ? &found->value->elements : nullptr;
}

void _checkUnique(const MofDocument& document, const std::vector<MofQualifier>& list) {
    for (auto at = list.begin(); at != list.end(); ++at) {
        if (std::any_of(list.begin(), at,
                        [&](const auto& earlier) { return sameName(earlier.name, at->name); })) {
            document.fail(at->position, "qualifier \"" + at->name + "\" is given twice");
        }
    }
}

}  // namespace

bool PropertyDeclaration::isTrue(const char* qualifier) const {
    const auto found = _named(qualifiers, qualifier);
    return found != qualifiers.end() && (!found->value || found->value->number != 0);
}

std::string PropertyDeclaration::text(const char* qualifier) const {
    return _text(qualifiers, qualifier);
}

std::string PropertyDeclaration::meaning(const std::string& code) const {
    const auto* codes = _elements(qualifiers, "ValueMap");
    const auto* texts = _elements(qualifiers, "Values");
    if (codes && texts) {
        for (std::size_t i = 0; i < codes->size() && i < texts->size(); ++i) {
            if ((*codes)[i].text == code) {
                return (*texts)[i].text;
            }
        }
    }
    return {};
}

const PropertyDeclaration* ClassDeclaration::find(const std::string& property) const {
    const auto found = _named(properties, property);
    return found == properties.end() ? nullptr : &*found;
}

std::string ClassDeclaration::text(const char* qualifier) const {
    return _text(qualifiers, qualifier);
}

const ClassDeclaration* ClassRepository::find(const std::string& name) const {
    for (const auto& declared : _classes) {
        if (sameName(declared->name, name)) {
            return declared.get();
        }
    }
    return nullptr;
}

void ClassRepository::add(const MofDocument& document) {
    for (const MofQualifierDeclaration& declared : document.qualifiers) {
        if (_named(_qualifiers, declared.name) != _qualifiers.end()) {
            document.fail(declared.position,
                          "qualifier \"" + declared.name + "\" is declared twice");
        }
        makeValue(document, declared.defaultValue, declared.type, declared.isArray);
        _qualifiers.push_back(declared);
    }
    for (const MofClass& declared : document.classes) {
        _addClass(document, declared);
    }
}

void ClassRepository::_checkQualifiers(const MofDocument& document,
                                       const std::vector<MofQualifier>& list) const {
    _checkUnique(document, list);
    for (const MofQualifier& qualifier : list) {
        const auto declared = _named(_qualifiers, qualifier.name);
        if (declared == _qualifiers.end()) {
            document.fail(qualifier.position,
                          "qualifier \"" + qualifier.name + "\" is not declared");
        }
        if (qualifier.value) {
            makeValue(document, *qualifier.value, declared->type, declared->isArray);
        } else if (declared->type != Pegasus::CIMTYPE_BOOLEAN || declared->isArray) {
            document.fail(qualifier.position, "qualifier \"" + qualifier.name + "\" needs a value");
        }
    }
}

void ClassRepository::_addClass(const MofDocument& document, const MofClass& declared) {
    if (find(declared.name)) {
        document.fail(declared.position, "class \"" + declared.name + "\" is declared twice");
    }
    auto result = std::make_unique<ClassDeclaration>();
    result->name = declared.name;
    if (!declared.superclass.empty()) {
        const ClassDeclaration* super = find(declared.superclass);
        if (!super) {
            document.fail(declared.position,
                          "superclass \"" + declared.superclass + "\" is not declared");
        }
        result->superclass = super->name;
        result->properties = super->properties;
    }
    _checkQualifiers(document, declared.qualifiers);
    result->qualifiers = declared.qualifiers;
    for (const MofProperty& property : declared.properties) {
        _addProperty(document, property, *result);
    }
    _classes.push_back(std::move(result));
}

void ClassRepository::_addProperty(const MofDocument& document, const MofProperty& declared,
                                   ClassDeclaration& result) const {
    _checkQualifiers(document, declared.qualifiers);
    PropertyDeclaration property;
    property.name = declared.name;
    property.type = declared.type;
    property.isArray = declared.isArray;
    property.referenceClass = declared.referenceClass;
    property.origin = result.name;
    property.qualifiers = declared.qualifiers;
    property.defaultValue =
        makeValue(document, declared.defaultValue, declared.type, declared.isArray);

    const auto inherited = _named(result.properties, declared.name);
    if (inherited == result.properties.end()) {
        result.properties.push_back(std::move(property));
        return;
    }
    if (inherited->origin == result.name) {
        document.fail(declared.position, "\"" + declared.name + "\" is declared twice");
    }
    if (inherited->type != property.type || inherited->isArray != property.isArray) {
        document.fail(declared.position,
                      "\"" + declared.name + "\" has another type in " + inherited->origin);
    }
    // A property that is declared again replaces the inherited one where that stands; what it does
    // not say of itself anew still holds.
    for (const MofQualifier& qualifier : inherited->qualifiers) {
        if (_named(property.qualifiers, qualifier.name) == property.qualifiers.end()) {
            property.qualifiers.push_back(qualifier);
        }
    }
    *inherited = std::move(property);
}

}  // namespace QZ
