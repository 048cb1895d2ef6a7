// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/AcceptLanguageList.h>
#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/ContentLanguageList.h>
#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/String.h>

#include <cstddef>
#include <memory>
#include <vector>

namespace Pegasus {

// What surrounds an operation: who asks, in which language, for which subscription. It holds at
// most one container of each name. A value type that clones its containers when copied.
class PEGASUS_COMMON_LINKAGE OperationContext {
public:
    class PEGASUS_COMMON_LINKAGE Container {
    public:
        virtual ~Container();
        virtual String getName() const = 0;
        // A copy, to be given back with destroy().
        virtual Container* clone() const = 0;
        virtual void destroy() = 0;
    };

    OperationContext() = default;
    OperationContext(const OperationContext& context);
    OperationContext& operator=(const OperationContext& context);
    virtual ~OperationContext();

    void clear();

    // The container, which the context keeps; valid until that name is set or removed. Throws
    // Exception if there is none, as do set() and remove().
    const Container& get(const String& containerName) const;
    Boolean contains(const String& containerName) const;
    // Takes a copy in place of the one of the same name.
    void set(const Container& container);
    // Takes a copy; throws Exception if there is one of the same name.
    void insert(const Container& container);
    void remove(const String& containerName);

private:
    struct _Destroy {
        void operator()(Container* container) const { container->destroy(); }
    };
    using _ContainerPtr = std::unique_ptr<Container, _Destroy>;

    std::size_t _find(const String& containerName) const;
    std::size_t _findOrThrow(const String& containerName) const;

    std::vector<_ContainerPtr> _containers;
};

}  // namespace Pegasus

#include <tavqz/CimContextContainers.h>
