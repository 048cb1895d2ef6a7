// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "ClassRepository.h"

namespace QZ {

// Makes the declarations of one MOF document out of what it says and what the repository holds:
// checks them, and resolves what superclasses hand down. What is wrong is thrown as MofError.
class ClassBuilder {
public:
    ClassBuilder(const ClassRepository& repository, const MofDocument& document)
        : _repository(repository), _document(document) {}

    QualifierDeclaration makeQualifier(const MofQualifierDeclaration& declared) const;
    ClassDeclaration makeClass(const MofClass& declared) const;

private:
    void _inherit(const MofClass& declared, ClassDeclaration& result) const;
    void _addProperty(const MofProperty& declared, ClassDeclaration& result) const;
    void _override(const MofProperty& declared, const PropertyDeclaration& inherited,
                   PropertyDeclaration& property) const;
    Pegasus::CIMQualifier _makeQualifier(const MofQualifier& given, unsigned scope) const;
    // What is given for a class or a property, and what `inherited` hands down to it.
    QualifierList _makeQualifiers(const std::vector<MofQualifier>& given, unsigned scope,
                                  const QualifierList* inherited) const;
    void _checkUnique(const std::vector<MofQualifier>& given) const;

    const ClassRepository& _repository;
    const MofDocument& _document;
};

}  // namespace QZ
