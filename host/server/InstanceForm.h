// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMPropertyList.h>

#include "ClassRepository.h"
#include "XmlWriting.h"

namespace QZ {

// Whether the list has that name; a null one has none.
bool namesProperty(const Pegasus::CIMPropertyList& list, const Pegasus::CIMName& name);

// What a client wants of the instances that it asked for, applied to what providers deliver.
// Valid as long as the classes.
class InstanceForm {
public:
    struct Wishes {
        bool localOnly = false;  // only what the instance's class declares itself
        bool includeQualifiers = false;
        bool includeClassOrigin = false;
        Pegasus::CIMPropertyList properties;  // null: all
        // Only what this class has; null: what the instance's own has.
        const ClassDeclaration* shallow = nullptr;
    };

    InstanceForm(const ClassRepository& classes, Wishes wishes);

    // The instance as it is written by form(): itself where nothing has to be added to it.
    Pegasus::CIMInstance prepared(const Pegasus::CIMInstance& instance) const;

    // For instances of that class.
    XmlForm form(const Pegasus::CIMName& className) const;

    // The delivered path, or the one that the keys make; with the namespace. Throws CIMException,
    // CIM_ERR_FAILED, where neither is to be had: nobody declared the class.
    Pegasus::CIMObjectPath path(const Pegasus::CIMInstance& instance,
                                const Pegasus::CIMNamespaceName& nameSpace) const;

    // A copy of prepared() with just what form() selects, and its path, to be kept.
    Pegasus::CIMInstance selected(const Pegasus::CIMInstance& instance,
                                  const Pegasus::CIMNamespaceName& nameSpace) const;

private:
    bool _selects(const ClassDeclaration* declared, const Pegasus::CIMName& property) const;

    const ClassRepository& _classes;
    Wishes _wishes;
};

}  // namespace QZ
