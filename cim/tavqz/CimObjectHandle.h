// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMProperty.h>
#include <Pegasus/Common/CIMQualifier.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>

#include <memory>

namespace Pegasus {

class CIMObjectRep;

// What the handles to objects, instances and classes have in common. Not for use by name: a
// provider sees it only through CIMObject, CIMInstance, CIMClass and their Const kinds.
//
// Copies share one representation, whatever kind of handle they are; clone() makes another. Every
// call on a handle that holds nothing, save isUninitialized(), throws UninitializedObjectException.
// One representation is one thread's at a time as soon as somebody writes to it.
class PEGASUS_COMMON_LINKAGE CimObjectReader {
public:
    const CIMName& getClassName() const;
    const CIMObjectPath& getPath() const;

    // Position of the qualifier or property of that name, ignoring case, or PEG_NOT_FOUND.
    Uint32 findQualifier(const CIMName& name) const;
    Uint32 findProperty(const CIMName& name) const;
    // These throw IndexOutOfBoundsException.
    CIMConstQualifier getQualifier(Uint32 index) const;
    CIMConstProperty getProperty(Uint32 index) const;
    Uint32 getQualifierCount() const;
    Uint32 getPropertyCount() const;

    Boolean isUninitialized() const;

protected:
    CimObjectReader() = default;
    explicit CimObjectReader(std::shared_ptr<CIMObjectRep> rep);
    CimObjectReader(const CimObjectReader&) = default;
    CimObjectReader& operator=(const CimObjectReader&) = default;
    ~CimObjectReader() = default;

    // The representation, which the handle keeps.
    CIMObjectRep& _get() const;

    // The writing half, for CimObjectEditor.
    void _setPath(const CIMObjectPath& path);
    void _addQualifier(const CIMQualifier& qualifier);
    void _addProperty(const CIMProperty& property);
    CIMQualifier _qualifier(Uint32 index);
    CIMProperty _property(Uint32 index);
    void _removeQualifier(Uint32 index);
    void _removeProperty(Uint32 index);

    std::shared_ptr<CIMObjectRep> _rep;
};

// Adds writing to the handle kind Const; Self is the handle kind that results.
template <class Self, class Const>
class CimObjectEditor : public Const {
public:
    using Const::Const;

    // Throws UninitializedObjectException if the path has no class, TypeMismatchException if it
    // has another one than the object.
    void setPath(const CIMObjectPath& path) { this->_setPath(path); }

    // Throw AlreadyExistsException for a second of the same name, ignoring case,
    // UninitializedObjectException for a handle that holds nothing; a class throws
    // TypeMismatchException for a reference property without a reference class.
    Self& addQualifier(const CIMQualifier& qualifier) {
        this->_addQualifier(qualifier);
        return static_cast<Self&>(*this);
    }
    Self& addProperty(const CIMProperty& property) {
        this->_addProperty(property);
        return static_cast<Self&>(*this);
    }

    // What these return shares the object's representation: setting its value sets the object's.
    // They throw IndexOutOfBoundsException.
    using Const::getProperty;
    using Const::getQualifier;
    CIMQualifier getQualifier(Uint32 index) { return this->_qualifier(index); }
    CIMProperty getProperty(Uint32 index) { return this->_property(index); }
    void removeQualifier(Uint32 index) { this->_removeQualifier(index); }
    void removeProperty(Uint32 index) { this->_removeProperty(index); }
};

}  // namespace Pegasus
