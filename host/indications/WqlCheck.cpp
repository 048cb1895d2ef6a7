// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/CIMDateTime.h>

#include "CimText.h"
#include "WqlQuery.h"

namespace QZ {

using namespace Pegasus;

namespace {

const PropertyDeclaration& _property(const ClassDeclaration& declared, const std::string& name) {
    const PropertyDeclaration* const property = declared.find(name);
    if (!property) {
        throw WqlError("the class " + declared.name + " has no property " + name);
    }
    return *property;
}

const ClassDeclaration& _class(const ClassRepository& classes, const std::string& name) {
    const ClassDeclaration* const declared = classes.find(name);
    if (!declared) {
        throw WqlError("there is no class " + name);
    }
    return *declared;
}

bool _isDateTime(const std::string& text) {
    try {
        const CIMDateTime moment(make_String(text));
        return true;
    } catch (const Exception&) {
        return false;
    }
}

// Whether a value of that type can be held against the literal.
bool _isComparable(CIMType type, const WqlLiteral& literal) {
    switch (type) {
        case CIMTYPE_BOOLEAN:
            return literal.kind == WqlLiteral::Boolean;
        case CIMTYPE_STRING:
        case CIMTYPE_CHAR16:
            return literal.kind == WqlLiteral::String;
        case CIMTYPE_DATETIME:
            return literal.kind == WqlLiteral::String && _isDateTime(literal.text);
        case CIMTYPE_REFERENCE:
        case CIMTYPE_OBJECT:
        case CIMTYPE_INSTANCE:
            return false;
        default:
            return literal.kind == WqlLiteral::Integer || literal.kind == WqlLiteral::Real;
    }
}

void _checkComparison(const WqlCondition& condition, const PropertyDeclaration& property) {
    if (property.isArray) {
        throw WqlError("the property " + property.name +
                       " is an array, which is compared with nothing but NULL");
    }
    if (!_isComparable(property.type, condition.literal)) {
        throw WqlError("the property " + property.name + " is of type " +
                       cimTypeToString(property.type) + ", which does not go with what it is " +
                       "compared with");
    }
    if (property.type == CIMTYPE_BOOLEAN && condition.operation != WqlOperator::Equal &&
        condition.operation != WqlOperator::NotEqual) {
        throw WqlError("the property " + property.name + " is a boolean: = and <> compare it");
    }
}

void _check(const WqlCondition& condition, const ClassDeclaration& declared,
            const ClassRepository& classes) {
    for (const WqlCondition& part : condition.parts) {
        _check(part, declared, classes);
    }
    if (condition.kind == WqlCondition::IsA) {
        _class(classes, condition.className);
    }
    if (condition.property.empty()) {
        return;
    }
    const PropertyDeclaration& property = _property(declared, condition.property);
    if (condition.kind == WqlCondition::Comparison) {
        _checkComparison(condition, property);
    }
}

}  // namespace

void checkWql(const WqlQuery& query, const ClassRepository& classes) {
    const ClassDeclaration& declared = _class(classes, query.className);
    for (const std::string& property : query.properties) {
        _property(declared, property);
    }
    _check(query.condition, declared, classes);
}

}  // namespace QZ
