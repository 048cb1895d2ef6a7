// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMValue.h>

#include <memory>
#include <string>
#include <vector>

#include "MofSyntax.h"

namespace QZ {

struct PropertyDeclaration {
    std::string name;
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    bool isArray = false;
    std::string referenceClass;
    std::string origin;  // the class that declares it
    std::vector<MofQualifier> qualifiers;
    Pegasus::CIMValue defaultValue;  // null where none is given

    bool isKey() const { return isTrue("Key"); }
    bool isWritable() const { return isTrue("Write"); }
    // Whether a boolean qualifier is there and true.
    bool isTrue(const char* qualifier) const;
    // The qualifier's text; empty where there is none.
    std::string text(const char* qualifier) const;
    // The text that Values has for what ValueMap calls `code`; empty where it has none.
    std::string meaning(const std::string& code) const;
};

struct ClassDeclaration {
    std::string name;
    std::string superclass;  // empty: none
    std::vector<MofQualifier> qualifiers;
    std::vector<PropertyDeclaration> properties;  // the inherited ones first

    // Names are compared ignoring case; null where there is none.
    const PropertyDeclaration* find(const std::string& property) const;
    std::string text(const char* qualifier) const;
};

// The classes of one namespace, checked: superclasses and qualifiers are declared, names unique,
// defaults of their property's type. Once filled, any thread may read it.
class ClassRepository {
public:
    // Takes over the document's qualifiers and classes. A superclass, and a qualifier, must be in
    // here already or earlier in the document. Throws MofError with the place of what is wrong; the
    // repository then holds what stood before that.
    void add(const MofDocument& document);

    // Ignoring case; null where there is none. Valid as long as the repository.
    const ClassDeclaration* find(const std::string& name) const;

    // In the order of their declaration.
    const std::vector<std::unique_ptr<const ClassDeclaration>>& classes() const { return _classes; }

private:
    void _checkQualifiers(const MofDocument& document, const std::vector<MofQualifier>& list) const;
    void _addClass(const MofDocument& document, const MofClass& declared);
    void _addProperty(const MofDocument& document, const MofProperty& declared,
                      ClassDeclaration& result) const;

    std::vector<MofQualifierDeclaration> _qualifiers;
    std::vector<std::unique_ptr<const ClassDeclaration>> _classes;
};

}  // namespace QZ
