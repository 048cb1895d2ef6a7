// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMFlavor.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/CIMValue.h>

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "MofSyntax.h"

namespace QZ {

// What holds of a class or a property: first what is said there, then what is handed down to it,
// which is marked as propagated. The values have their declaration's type, the flavors are
// resolved.
class QualifierList {
public:
    void add(const Pegasus::CIMQualifier& qualifier) { _list.push_back(qualifier); }

    // Ignoring case; null where there is none.
    const Pegasus::CIMQualifier* find(const std::string& name) const;
    // Whether a boolean qualifier is there and true.
    bool isTrue(const char* name) const;
    // A string qualifier's text; empty where there is none.
    std::string text(const char* name) const;

    auto begin() const { return _list.begin(); }
    auto end() const { return _list.end(); }

private:
    std::vector<Pegasus::CIMQualifier> _list;
};

struct PropertyDeclaration {
    std::string name;
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    bool isArray = false;
    std::uint32_t arraySize = 0;  // 0: not fixed
    std::string referenceClass;
    std::string origin;         // the class that brought it in, however often it is overridden
    bool isPropagated = false;  // not declared, or declared anew, by the class itself
    QualifierList qualifiers;
    Pegasus::CIMValue defaultValue;  // null where none is given

    bool isKey() const { return qualifiers.isTrue("Key"); }
    bool isWritable() const { return qualifiers.isTrue("Write"); }
    // The text that Values has for what ValueMap calls `code`; empty where it has none.
    std::string meaning(const std::string& code) const;
};

struct ClassDeclaration {
    std::string name;
    std::string superclass;  // empty: none
    QualifierList qualifiers;
    std::vector<PropertyDeclaration> properties;  // those that are only inherited first

    // Names are compared ignoring case; null where there is none.
    const PropertyDeclaration* find(const std::string& property) const;
    bool isAbstract() const { return qualifiers.isTrue("Abstract"); }
    bool isIndication() const { return qualifiers.isTrue("Indication"); }
};

struct QualifierDeclaration {
    std::string name;
    Pegasus::CIMType type = Pegasus::CIMTYPE_BOOLEAN;
    bool isArray = false;
    Pegasus::CIMValue defaultValue;  // null where none is given
    unsigned scope = SCOPE_ANY;      // MofScope
    Pegasus::CIMFlavor flavor;       // of a qualifier that says nothing else
};

// The classes of one namespace, checked: superclasses and qualifiers are declared, qualifiers stand
// where they may, names are unique, defaults of their property's type. Once filled, any thread may
// read it; what it hands out is valid as long as the repository.
class ClassRepository {
public:
    // Takes over the document's qualifiers and classes. A superclass, and a qualifier, must be in
    // here already or earlier in the document. Throws MofError with the place of what is wrong; the
    // repository then holds what stood before that.
    void add(const MofDocument& document);

    // Takes over a class as it is, one that another server checked.
    void add(ClassDeclaration declared);

    // Ignoring case; null where there is none.
    const ClassDeclaration* find(const std::string& name) const;
    const QualifierDeclaration* findQualifier(const std::string& name) const;

    // In the order of their declaration.
    const std::vector<std::unique_ptr<const ClassDeclaration>>& classes() const { return _classes; }
    const std::vector<QualifierDeclaration>& qualifiers() const { return _qualifiers; }

    // The classes below the one of that name, in the order of their declaration: those that derive
    // from it themselves, or with `isDeep` all. An empty name stands for what is above all classes.
    std::vector<const ClassDeclaration*> subclasses(const std::string& name, bool isDeep) const;

    // Whether the class is the other one or derives from it.
    bool isKindOf(const ClassDeclaration& declared, const std::string& other) const;

private:
    std::vector<QualifierDeclaration> _qualifiers;
    std::vector<std::unique_ptr<const ClassDeclaration>> _classes;
    std::map<std::string, const ClassDeclaration*, NameLess> _index;
    std::set<std::string, NameLess> _superclasses;
};

}  // namespace QZ
