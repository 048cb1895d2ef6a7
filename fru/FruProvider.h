// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

namespace QZ {

// The instance provider of the machine's field-replaceable units, "TAVIRA_FRU": those that clients
// recorded, and those that the gatherers find at each request and that no recorded one hides.
//
// The server calls it on any of its threads, several at once, and must serve what it asks meanwhile
// through the handle. CIM_ERR_INVALID_CLASS without a message for any other class. A store that
// fails is CIM_ERR_FAILED with its sentence; what CimObjectFile refuses passes as it is.
class FruProvider : public Pegasus::CIMInstanceProvider {
public:
    void initialize(Pegasus::CIMOMHandle& handle) override;
    // Deletes the provider.
    void terminate() override;

    // Delivers every unit with all its properties, whatever the flags and the property list say. A
    // store that cannot be read counts as empty.
    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& classPath,
                            const Pegasus::Boolean includeQualifiers,
                            const Pegasus::Boolean includeClassOrigin,
                            const Pegasus::CIMPropertyList& propertyList,
                            Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classPath,
                                Pegasus::ObjectPathResponseHandler& handler) override;
    // Delivers the first unit of that class and these keys, or nothing.
    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instancePath,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::InstanceResponseHandler& handler) override;

    // The instance's own properties say under which keys it is stored. No path is delivered.
    void createInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instancePath,
                        const Pegasus::CIMInstance& instance,
                        Pegasus::ObjectPathResponseHandler& handler) override;
    // Replaces the recorded unit of these keys whole, whatever the property list says.
    void modifyInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instancePath,
                        const Pegasus::CIMInstance& instance,
                        const Pegasus::Boolean includeQualifiers,
                        const Pegasus::CIMPropertyList& propertyList,
                        Pegasus::ResponseHandler& handler) override;
    void deleteInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instancePath,
                        Pegasus::ResponseHandler& handler) override;
};

}  // namespace QZ
