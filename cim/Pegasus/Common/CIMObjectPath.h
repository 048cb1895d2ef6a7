// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMName.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

#include <memory>

namespace Pegasus {

class CIMObjectPathRep;
class CIMValue;

// One key of an instance: its name, its value as text, and how that text is to be read.
// A value type: copies are independent.
class PEGASUS_COMMON_LINKAGE CIMKeyBinding {
public:
    enum Type { BOOLEAN, STRING, NUMERIC, REFERENCE };

    // Nameless, with empty text.
    CIMKeyBinding() = default;
    CIMKeyBinding(const CIMName& name, const String& value, Type type);

    // Takes text and type from `value`. Throws TypeMismatchException for what cannot be a key:
    // arrays, embedded objects and embedded instances.
    CIMKeyBinding(const CIMName& name, const CIMValue& value);

    const CIMName& getName() const;
    void setName(const CIMName& name);
    const String& getValue() const;
    void setValue(const String& value);
    Type getType() const;
    void setType(Type type);

    // Whether this key holds `value`; false, not an exception, where the text cannot be read as
    // a value of that type.
    Boolean equal(CIMValue value);

private:
    CIMName _name;
    String _value;
    Type _type = BOOLEAN;
};

// Same name, type and value: numbers by value where both are integers, references as object
// paths, booleans ignoring case, strings exactly.
PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMKeyBinding& x, const CIMKeyBinding& y);

extern template class PEGASUS_COMMON_LINKAGE Array<CIMKeyBinding>;

// The name of a class or of an instance: host, namespace, class and keys, each of which but the
// class may be missing. A value type; copies share storage until one is changed, and different
// copies may be used by different threads.
//
// Key bindings are kept sorted by name, ignoring case, so that two paths that list the same keys
// in another order are equal and have the same text.
class PEGASUS_COMMON_LINKAGE CIMObjectPath {
public:
    // An empty path, without even a class.
    CIMObjectPath();

    // Reads the text form, [//host/][namespace:]class[.key=value[,key=value...]], for example
    // //atlas:5989/root/tavqz:TAVIRA_Lease.Name="a \"b\" \\c",Index=5,Current=TRUE
    // Quoted text that is itself an object path with keys becomes a reference, since the form
    // cannot tell the two apart. Throws MalformedObjectNameException.
    CIMObjectPath(const String& objectName);

    // Throws MalformedObjectNameException if `host` is neither empty nor a host name or address
    // with an optional port.
    CIMObjectPath(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
                  const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());

    // Copied, never moved from: a path always has its storage.
    CIMObjectPath(const CIMObjectPath& x);
    CIMObjectPath& operator=(const CIMObjectPath& x);
    ~CIMObjectPath();

    void clear();

    // As the constructors do; where they throw, the path is unchanged.
    void set(const String& host, const CIMNamespaceName& nameSpace, const CIMName& className,
             const Array<CIMKeyBinding>& keyBindings = Array<CIMKeyBinding>());
    void set(const String& objectName);
    CIMObjectPath& operator=(const String& objectName);

    const String& getHost() const;
    // Takes what the constructor takes, and the machine's own name whatever it looks like.
    void setHost(const String& host);
    const CIMNamespaceName& getNameSpace() const;
    void setNameSpace(const CIMNamespaceName& nameSpace);
    const CIMName& getClassName() const;
    void setClassName(const CIMName& className);
    const Array<CIMKeyBinding>& getKeyBindings() const;
    void setKeyBindings(const Array<CIMKeyBinding>& keyBindings);

    // The text form. It reads back to an equal path unless there is a host without a namespace, or
    // a key whose text looks like another type than the key has.
    String toString() const;

    // Host, namespace and class ignoring case, keys as their operator== says.
    Boolean identical(const CIMObjectPath& x) const;

    // Equal for identical paths.
    Uint32 makeHashCode() const;

private:
    // Never null and never changed once it is here: a setter puts another in its place.
    std::shared_ptr<const CIMObjectPathRep> _rep;
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const CIMObjectPath& x, const CIMObjectPath& y);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const CIMObjectPath& x, const CIMObjectPath& y);

extern template class PEGASUS_COMMON_LINKAGE Array<CIMObjectPath>;

}  // namespace Pegasus
