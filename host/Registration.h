// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "MofSyntax.h"

namespace QZ {

// A provider as it is registered.
struct ProviderEntry {
    std::string module;
    std::string location;  // of the module's library, without "lib" and ".so"
    std::string name;
};

// Which provider of which module answers for a class: the instances of PG_ProviderModule,
// PG_Provider and PG_ProviderCapabilities. Once filled, any thread may read it.
class Registration {
public:
    // Takes over the document's registration, the modules before their providers before their
    // capabilities. Throws MofError where a property that is needed is missing or of the wrong
    // type, or names nothing that is registered.
    void add(const MofDocument& document);

    // Takes over one class of one namespace as another server has it registered.
    void add(const ProviderEntry& provider, const std::string& nameSpace,
             const std::string& className);

    // Who answers for the instances of that class in that namespace, names compared ignoring case;
    // null for nobody. Valid as long as the registration, also while it grows.
    const ProviderEntry* instanceProvider(const std::string& nameSpace,
                                          const std::string& className) const;

    // The same of the indications of that class.
    const ProviderEntry* indicationProvider(const std::string& nameSpace,
                                            const std::string& className) const;

private:
    struct Capability {
        std::string className;
        std::vector<std::string> namespaces;
        std::size_t provider;
        bool ofInstances = true;
        bool ofIndications = false;
    };

    template <class Wanted>
    const ProviderEntry* _find(const std::string& nameSpace, const std::string& className,
                               Wanted wanted) const;

    void _addModule(const MofDocument& document, const MofInstance& instance);
    void _addProvider(const MofDocument& document, const MofInstance& instance);
    void _addCapability(const MofDocument& document, const MofInstance& instance);

    std::vector<ProviderEntry> _modules;   // without a name
    std::deque<ProviderEntry> _providers;  // which stay where they are
    std::vector<Capability> _capabilities;
};

}  // namespace QZ
