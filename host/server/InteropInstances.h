// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/CIMInstance.h>

#include <string>
#include <vector>

#include "Schema.h"

namespace QZ {

// The machine's name, where it is one that a path can have; else "localhost".
Pegasus::String hostName();

// What the server says of itself in its interop namespace: its namespaces, itself, the profile it
// keeps to, and who is registered for which class. Made afresh from the model, which must outlive
// this object; any thread may ask.
class InteropInstances {
public:
    explicit InteropInstances(const Schema& schema) : _schema(schema) {}

    // Those of exactly that class, with their paths; none where there are none.
    std::vector<Pegasus::CIMInstance> instances(const std::string& className) const;

private:
    std::vector<Pegasus::CIMInstance> _namespaces() const;
    std::vector<Pegasus::CIMInstance> _objectManager() const;
    std::vector<Pegasus::CIMInstance> _profiles() const;
    std::vector<Pegasus::CIMInstance> _modules() const;
    std::vector<Pegasus::CIMInstance> _providers() const;
    std::vector<Pegasus::CIMInstance> _capabilities() const;

    const Schema& _schema;
};

}  // namespace QZ
