// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ClassBuilder.h"

#include <algorithm>

#include "CimText.h"
#include "Text.h"
#include "ValueMaker.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _setFlavor(CIMFlavor& flavor, const CIMFlavor& flag, const std::optional<bool>& isSet) {
    if (isSet) {
        *isSet ? flavor.addFlavor(flag) : flavor.removeFlavor(flag);
    }
}

CIMFlavor _resolved(CIMFlavor flavor, const MofFlavor& given) {
    _setFlavor(flavor, CIMFlavor::OVERRIDABLE, given.isOverridable);
    _setFlavor(flavor, CIMFlavor::TOSUBCLASS, given.isToSubclass);
    _setFlavor(flavor, CIMFlavor::TRANSLATABLE, given.isTranslatable);
    return flavor;
}

bool _isGiven(const std::vector<MofQualifier>& list, const char* name) {
    return std::any_of(list.begin(), list.end(), [&](const MofQualifier& qualifier) {
        return sameName(qualifier.name, name) &&
               (!qualifier.value || qualifier.value->kind != MofLiteral::Boolean ||
                qualifier.value->number != 0);
    });
}

// Associations and indications are classes, too.
unsigned _scopeOf(const MofClass& declared, const QualifierList* inherited) {
    unsigned scope = SCOPE_CLASS;
    if (_isGiven(declared.qualifiers, "Association") ||
        (inherited && inherited->isTrue("Association"))) {
        scope |= SCOPE_ASSOCIATION;
    }
    if (_isGiven(declared.qualifiers, "Indication") ||
        (inherited && inherited->isTrue("Indication"))) {
        scope |= SCOPE_INDICATION;
    }
    return scope;
}

// A reference is a kind of property.
unsigned _scopeOf(const MofProperty& declared) {
    return declared.type == CIMTYPE_REFERENCE ? SCOPE_PROPERTY | SCOPE_REFERENCE : SCOPE_PROPERTY;
}

}  // namespace

QualifierDeclaration ClassBuilder::makeQualifier(const MofQualifierDeclaration& declared) const {
    if (_repository.findQualifier(declared.name)) {
        _document.fail(declared.position, "qualifier \"" + declared.name + "\" is declared twice");
    }
    QualifierDeclaration result;
    result.name = declared.name;
    result.type = declared.type;
    result.isArray = declared.isArray;
    result.defaultValue =
        makeValue(_document, declared.defaultValue, declared.type, declared.isArray);
    result.scope = declared.scope;
    result.flavor = _resolved(CIMFlavor::DEFAULTS, declared.flavor);
    return result;
}

ClassDeclaration ClassBuilder::makeClass(const MofClass& declared) const {
    if (_repository.find(declared.name)) {
        _document.fail(declared.position, "class \"" + declared.name + "\" is declared twice");
    }
    ClassDeclaration result;
    result.name = declared.name;
    _inherit(declared, result);
    for (const MofProperty& property : declared.properties) {
        _addProperty(property, result);
    }
    return result;
}

void ClassBuilder::_inherit(const MofClass& declared, ClassDeclaration& result) const {
    const ClassDeclaration* super = nullptr;
    if (!declared.superclass.empty()) {
        super = _repository.find(declared.superclass);
        if (!super) {
            _document.fail(declared.position,
                           "superclass \"" + declared.superclass + "\" is not declared");
        }
        result.superclass = super->name;
        for (PropertyDeclaration property : super->properties) {
            property.isPropagated = true;
            property.qualifiers = _makeQualifiers({}, SCOPE_PROPERTY, &property.qualifiers);
            result.properties.push_back(std::move(property));
        }
    }
    const QualifierList* inherited = super ? &super->qualifiers : nullptr;
    result.qualifiers =
        _makeQualifiers(declared.qualifiers, _scopeOf(declared, inherited), inherited);
}

void ClassBuilder::_addProperty(const MofProperty& declared, ClassDeclaration& result) const {
    PropertyDeclaration property;
    property.name = declared.name;
    property.type = declared.type;
    property.isArray = declared.isArray;
    property.arraySize = declared.arraySize;
    property.referenceClass = declared.referenceClass;
    property.origin = result.name;
    property.defaultValue =
        makeValue(_document, declared.defaultValue, declared.type, declared.isArray);

    const auto same =
        std::find_if(result.properties.begin(), result.properties.end(),
                     [&](const auto& earlier) { return sameName(earlier.name, declared.name); });
    if (same == result.properties.end()) {
        if (_isGiven(declared.qualifiers, "Override")) {
            _document.fail(declared.position,
                           "\"" + declared.name + "\" overrides nothing: no superclass has it");
        }
        property.qualifiers = _makeQualifiers(declared.qualifiers, _scopeOf(declared), nullptr);
        result.properties.push_back(std::move(property));
        return;
    }
    if (!same->isPropagated) {
        _document.fail(declared.position, "\"" + declared.name + "\" is declared twice");
    }
    _override(declared, *same, property);
    result.properties.erase(same);
    result.properties.push_back(std::move(property));
}

void ClassBuilder::_override(const MofProperty& declared, const PropertyDeclaration& inherited,
                             PropertyDeclaration& property) const {
    if (!_isGiven(declared.qualifiers, "Override")) {
        _document.fail(declared.position, "\"" + declared.name + "\" is in " + inherited.origin +
                                              " already: qualifier Override expected");
    }
    if (inherited.type != declared.type || inherited.isArray != declared.isArray ||
        inherited.arraySize != declared.arraySize) {
        _document.fail(declared.position,
                       "\"" + declared.name + "\" has another type in " + inherited.origin);
    }
    property.origin = inherited.origin;
    property.qualifiers =
        _makeQualifiers(declared.qualifiers, _scopeOf(declared), &inherited.qualifiers);
    if (property.defaultValue.isNull()) {
        property.defaultValue = inherited.defaultValue;
    }
}

QualifierList ClassBuilder::_makeQualifiers(const std::vector<MofQualifier>& given, unsigned scope,
                                            const QualifierList* inherited) const {
    _checkUnique(given);
    QualifierList result;
    for (const MofQualifier& qualifier : given) {
        const CIMQualifier made = _makeQualifier(qualifier, scope);
        const CIMQualifier* above = inherited ? inherited->find(qualifier.name) : nullptr;
        if (above && above->getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS) &&
            !above->getFlavor().hasFlavor(CIMFlavor::OVERRIDABLE) &&
            above->getValue() != made.getValue()) {
            _document.fail(qualifier.position,
                           "qualifier \"" + qualifier.name + "\" may not be changed here");
        }
        result.add(made);
    }
    if (!inherited) {
        return result;
    }
    for (const CIMQualifier& above : *inherited) {
        if (above.getFlavor().hasFlavor(CIMFlavor::TOSUBCLASS) &&
            !result.find(make_string(above.getName().getString()))) {
            result.add(CIMQualifier(above.getName(), above.getValue(), above.getFlavor(), true));
        }
    }
    return result;
}

CIMQualifier ClassBuilder::_makeQualifier(const MofQualifier& given, unsigned scope) const {
    const QualifierDeclaration* declared = _repository.findQualifier(given.name);
    if (!declared) {
        _document.fail(given.position, "qualifier \"" + given.name + "\" is not declared");
    }
    if (!(declared->scope & scope)) {
        _document.fail(given.position, "qualifier \"" + given.name + "\" may not stand here");
    }
    if (!given.value && (declared->type != CIMTYPE_BOOLEAN || declared->isArray)) {
        _document.fail(given.position, "qualifier \"" + given.name + "\" needs a value");
    }
    return CIMQualifier(make_String(declared->name),
                        given.value
                            ? makeValue(_document, *given.value, declared->type, declared->isArray)
                            : CIMValue(true),
                        _resolved(declared->flavor, given.flavor));
}

void ClassBuilder::_checkUnique(const std::vector<MofQualifier>& given) const {
    for (auto at = given.begin(); at != given.end(); ++at) {
        if (std::any_of(given.begin(), at,
                        [&](const auto& earlier) { return sameName(earlier.name, at->name); })) {
            _document.fail(at->position, "qualifier \"" + at->name + "\" is given twice");
        }
    }
}

}  // namespace QZ
