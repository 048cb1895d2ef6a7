// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMType.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "MofLexer.h"

namespace QZ {

// What a MOF file says, as it stands there: names and values are checked against nothing yet.

struct MofLiteral {
    enum Kind { Null, Boolean, Integer, Real, String, Char, Array };

    Kind kind = Null;
    bool negative = false;     // Integer, Real
    std::uint64_t number = 0;  // Integer: magnitude; Char: code unit; Boolean: 0 or 1
    std::string text;          // String: content, UTF-8; Real: without sign
    std::vector<MofLiteral> elements;
    MofPosition position;
};

// What is said of a qualifier's way down the classes; nothing where it is left open.
struct MofFlavor {
    std::optional<bool> isOverridable;   // EnableOverride, DisableOverride
    std::optional<bool> isToSubclass;    // ToSubclass, Restricted
    std::optional<bool> isTranslatable;  // Translatable
};

// A qualifier that is given without a value has none: its meaning is its type's.
struct MofQualifier {
    std::string name;
    std::optional<MofLiteral> value;
    MofFlavor flavor;
    MofPosition position;
};

// What a qualifier may stand on: one bit each.
enum MofScope : unsigned {
    SCOPE_CLASS = 1,
    SCOPE_ASSOCIATION = 2,
    SCOPE_REFERENCE = 4,
    SCOPE_PROPERTY = 8,
    SCOPE_METHOD = 16,
    SCOPE_PARAMETER = 32,
    SCOPE_INDICATION = 64,
    SCOPE_ANY = 127,
};

struct MofQualifierDeclaration {
    std::string name;
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    bool isArray = false;
    MofLiteral defaultValue;
    unsigned scope = 0;  // MofScope
    MofFlavor flavor;
    MofPosition position;
};

struct MofProperty {
    std::vector<MofQualifier> qualifiers;
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    std::string referenceClass;  // of a reference
    std::string name;
    bool isArray = false;
    std::uint32_t arraySize = 0;  // 0: not fixed
    MofLiteral defaultValue;      // Null where none is given
    MofPosition position;
};

struct MofClass {
    std::vector<MofQualifier> qualifiers;
    std::string name;
    std::string superclass;  // empty: none
    std::vector<MofProperty> properties;
    MofPosition position;
};

struct MofAssignment {
    std::string name;
    MofLiteral value;
    MofPosition position;
};

struct MofInstance {
    std::string className;
    std::vector<MofAssignment> properties;
    MofPosition position;

    // The value given to a property, its name compared ignoring case; null where none is given.
    const MofLiteral* find(const std::string& property) const;
};

struct MofDocument {
    std::string file;
    std::vector<MofQualifierDeclaration> qualifiers;
    std::vector<MofClass> classes;
    std::vector<MofInstance> instances;

    [[noreturn]] void fail(MofPosition position, const std::string& what) const;
};

// The type of that name ("uint32"), ignoring case. False where there is none.
bool mofType(const std::string& name, Pegasus::CIMType& type);

// Orders names, whatever the case of their ASCII letters.
struct NameLess {
    bool operator()(const std::string& left, const std::string& right) const;
};

}  // namespace QZ
