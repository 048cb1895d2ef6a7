// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// Which properties a client asks for. A null list, which is what the default constructor makes,
// asks for all of them; an empty list asks for none. A value type.
class PEGASUS_COMMON_LINKAGE CIMPropertyList {
public:
    CIMPropertyList() = default;
    // Not null, even if empty. Throws UninitializedObjectException if one of the names is null.
    CIMPropertyList(const Array<CIMName>& propertyNames);

    void set(const Array<CIMName>& propertyNames);
    // Makes the list null.
    void clear();

    Boolean isNull() const;
    Uint32 size() const;
    // Throws IndexOutOfBoundsException.
    const CIMName& operator[](Uint32 index) const;
    Array<CIMName> getPropertyNameArray() const;

    // Replaces the names by those given, each once. Without any, the names stay and the list is
    // no longer null. Throws InvalidNameException.
    void append(Array<String>& propertyListArray);

    // Whether the name is listed, ignoring case; false for a null list.
    Boolean contains(const CIMName& name) const;
    // Whether the client asks for the property: listed, or the list is null.
    Boolean useThisProperty(const CIMName& name) const;

    // "NULL", "EMPTY", or the names separated by ", ".
    String toString() const;

private:
    Array<CIMName> _names;
    Boolean _null = true;
};

}  // namespace Pegasus
