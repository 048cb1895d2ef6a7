// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Assignment.h"

#include <Pegasus/Common/CIMDateTime.h>
#include <Pegasus/Common/CIMObjectPath.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "CimDateTimes.h"
#include "CimText.h"
#include "CommandLine.h"
#include "Text.h"
#include "ValueMaker.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Marks properties that a modification replaces as a group, those that it leaves out with nothing.
constexpr const char* _replacedTogether = "TAVIRA_ReplacedTogether";

std::string _writableNames(const ClassDeclaration& declared) {
    std::string names;
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isWritable()) {
            names += names.empty() ? property.name : ", " + property.name;
        }
    }
    return names.empty() ? declared.name + " has no writable property"
                         : "Writable properties of " + declared.name + ": " + names;
}

std::optional<CIMValue> _integer(const std::string& text, CIMType type) {
    const bool negative = !text.empty() && text[0] == '-';
    const char* const start = text.data() + negative;
    const char* const end = text.data() + text.size();
    std::uint64_t magnitude = 0;
    const auto [stop, error] = std::from_chars(start, end, magnitude);
    if (stop != end || error != std::errc()) {
        return std::nullopt;
    }
    return makeInteger(type, negative, magnitude);
}

std::optional<CIMValue> _boolean(const std::string& text) {
    if (sameName(text, "true")) {
        return CIMValue(Boolean(true));
    }
    return sameName(text, "false") ? std::optional(CIMValue(Boolean(false))) : std::nullopt;
}

std::optional<CIMValue> _date(const std::string& text) {
    if (text.empty()) {
        return CIMValue(CIMDateTime());
    }
    const DateTime date(text, DateTime::CalendarDate | DateTime::TimeOfDay);
    return date.isSet() ? std::optional(CIMValue(make_CIMDateTime(date))) : std::nullopt;
}

std::optional<CIMValue> _character(const String& text) {
    return text.size() == 1 ? std::optional(CIMValue(text[0])) : std::nullopt;
}

std::optional<CIMValue> _value(const std::string& text, CIMType type) {
    const String string(text.data(), Uint32(text.size()));
    switch (type) {
        case CIMTYPE_STRING:
            return CIMValue(string);
        case CIMTYPE_BOOLEAN:
            return _boolean(text);
        case CIMTYPE_DATETIME:
            return _date(text);
        case CIMTYPE_CHAR16:
            return _character(string);
        case CIMTYPE_REFERENCE:
            return CIMValue(CIMObjectPath(string));
        case CIMTYPE_REAL32:
        case CIMTYPE_REAL64:
            return makeReal(type, text);
        default:
            return _integer(text, type);
    }
}

const char* _expectation(CIMType type) {
    switch (type) {
        case CIMTYPE_DATETIME:
            return "a date such as 2027-01-31, or nothing to clear it";
        case CIMTYPE_BOOLEAN:
            return "true or false";
        case CIMTYPE_STRING:
            return "text in UTF-8";
        default:
            return cimTypeToString(type);
    }
}

CIMValue _valueOrRefuse(const PropertyDeclaration& property, const std::string& text) {
    try {
        // There is no syntax for arrays yet, and no class that needs one.
        if (!property.isArray) {
            if (const std::optional<CIMValue> value = _value(text, property.type)) {
                return *value;
            }
        }
    } catch (const Exception&) {
        // Text that is no UTF-8, or no path: refused like every other value that does not fit.
    }
    throw UsageError("\"" + text + "\" is no value of " + property.name + ": " +
                     (property.isArray ? "arrays cannot be set"
                                       : std::string(_expectation(property.type)) + " expected"));
}

Assignment _parse(const ClassDeclaration& declared, const std::string& text, bool isNew) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) {
        throw UsageError("\"" + text + "\" is not of the form Property=value");
    }
    const std::string name = text.substr(0, equals);
    const PropertyDeclaration* property = declared.find(name);
    if (!property) {
        throw UsageError(declared.name + " has no property \"" + name + "\"" +
                         (isNew ? std::string() : ". " + _writableNames(declared)));
    }
    if (!isNew && !property->isWritable()) {
        throw UsageError(property->name + " is read-only. " + _writableNames(declared));
    }
    return {property, _valueOrRefuse(*property, text.substr(equals + 1))};
}

std::vector<Assignment> _parseAll(const ClassDeclaration& declared,
                                  const std::vector<std::string>& texts, bool isNew) {
    std::vector<Assignment> assignments;
    for (const std::string& text : texts) {
        Assignment assignment = _parse(declared, text, isNew);
        if (std::any_of(assignments.begin(), assignments.end(), [&](const Assignment& earlier) {
                return earlier.property == assignment.property;
            })) {
            throw UsageError(assignment.property->name + " is given twice");
        }
        assignments.push_back(std::move(assignment));
    }
    return assignments;
}

}  // namespace

Assignment parseAssignment(const ClassDeclaration& declared, const std::string& text) {
    return _parse(declared, text, false);
}

std::vector<Assignment> parseAssignments(const ClassDeclaration& declared,
                                         const std::vector<std::string>& texts) {
    return _parseAll(declared, texts, false);
}

CIMInstance modifiedInstance(const ClassDeclaration& declared, const CIMInstance& current,
                             const std::vector<Assignment>& assignments) {
    CIMInstance modified(current.getClassName());
    modified.setPath(current.getPath());
    for (const Assignment& assignment : assignments) {
        modified.addProperty(CIMProperty(make_String(assignment.property->name), assignment.value));
    }
    for (const PropertyDeclaration& property : declared.properties) {
        const CIMName name = make_String(property.name);
        const Uint32 index = current.findProperty(name);
        if (property.qualifiers.isTrue(_replacedTogether) && index != PEG_NOT_FOUND &&
            modified.findProperty(name) == PEG_NOT_FOUND) {
            modified.addProperty(CIMProperty(name, current.getProperty(index).getValue()));
        }
    }
    return modified;
}

CIMInstance createdInstance(const ClassDeclaration& declared,
                            const std::vector<std::string>& texts) {
    CIMInstance created(make_String(declared.name));
    for (const Assignment& assignment : _parseAll(declared, texts, true)) {
        created.addProperty(CIMProperty(make_String(assignment.property->name), assignment.value));
    }
    for (const PropertyDeclaration& property : declared.properties) {
        if (property.isKey() && created.findProperty(make_String(property.name)) == PEG_NOT_FOUND) {
            throw UsageError("A new instance of " + declared.name + " needs its key " +
                             property.name);
        }
    }
    return created;
}

CIMPropertyList propertyNames(const CIMInstance& instance) {
    Array<CIMName> names;
    for (Uint32 i = 0; i < instance.getPropertyCount(); ++i) {
        names.append(instance.getProperty(i).getName());
    }
    return CIMPropertyList(names);
}

}  // namespace QZ
