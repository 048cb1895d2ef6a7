// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// The name of a class, property, qualifier or method: letters, digits, "_" and U+0080 to U+FFEF,
// no digit first. Names differ only by more than case. A null name has empty text.
//
// What is no name throws InvalidNameException.
class PEGASUS_COMMON_LINKAGE CIMName {
public:
    CIMName() = default;
    CIMName(const String& name);
    CIMName(const char* name);
    CIMName& operator=(const String& name);

    const String& getString() const { return _name; }
    Boolean isNull() const { return _name.size() == 0; }
    void clear() { _name.clear(); }
    Boolean equal(const CIMName& name) const { return String::equalNoCase(_name, name._name); }

    static Boolean legal(const String& name);

private:
    String _name;
};

inline Boolean operator==(const CIMName& x, const CIMName& y) {
    return x.equal(y);
}
inline Boolean operator!=(const CIMName& x, const CIMName& y) {
    return !x.equal(y);
}

// The name of a namespace: CIM names joined by "/". A leading "/" is dropped.
//
// What is no name throws InvalidNamespaceNameException.
class PEGASUS_COMMON_LINKAGE CIMNamespaceName {
public:
    CIMNamespaceName() = default;
    CIMNamespaceName(const String& name);
    CIMNamespaceName(const char* name);
    CIMNamespaceName& operator=(const String& name);

    const String& getString() const { return _name; }
    Boolean isNull() const { return _name.size() == 0; }
    void clear() { _name.clear(); }
    Boolean equal(const CIMNamespaceName& name) const {
        return String::equalNoCase(_name, name._name);
    }

    static Boolean legal(const String& name);

private:
    String _name;
};

inline Boolean operator==(const CIMNamespaceName& x, const CIMNamespaceName& y) {
    return x.equal(y);
}
inline Boolean operator!=(const CIMNamespaceName& x, const CIMNamespaceName& y) {
    return !x.equal(y);
}

extern template class PEGASUS_COMMON_LINKAGE Array<CIMName>;
extern template class PEGASUS_COMMON_LINKAGE Array<CIMNamespaceName>;

}  // namespace Pegasus
