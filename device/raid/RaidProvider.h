// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Provider/CIMInstanceProvider.h>

namespace QZ {

// The instance provider of "TAVIRA_PhysicalDiskDrive" and "TAVIRA_RAIDController" over what the
// kernel shows at each request. It keeps nothing, so that the server may call it on any of its
// threads, several at once.
//
// CIM_ERR_INVALID_CLASS for another class, CIM_ERR_NOT_FOUND for a unit that is not there,
// CIM_ERR_NOT_SUPPORTED for whatever would change one. Flags and property lists are ignored.
class RaidProvider : public Pegasus::CIMInstanceProvider {
public:
    void initialize(Pegasus::CIMOMHandle& handle) override;
    // Deletes the provider.
    void terminate() override;

    // A model or manufacturer that is not known is empty, as a key of the unit that is made of it;
    // any other text that is not known is no property.
    void enumerateInstances(const Pegasus::OperationContext& context,
                            const Pegasus::CIMObjectPath& classPath,
                            const Pegasus::Boolean includeQualifiers,
                            const Pegasus::Boolean includeClassOrigin,
                            const Pegasus::CIMPropertyList& propertyList,
                            Pegasus::InstanceResponseHandler& handler) override;
    void enumerateInstanceNames(const Pegasus::OperationContext& context,
                                const Pegasus::CIMObjectPath& classPath,
                                Pegasus::ObjectPathResponseHandler& handler) override;
    void getInstance(const Pegasus::OperationContext& context,
                     const Pegasus::CIMObjectPath& instancePath,
                     const Pegasus::Boolean includeQualifiers,
                     const Pegasus::Boolean includeClassOrigin,
                     const Pegasus::CIMPropertyList& propertyList,
                     Pegasus::InstanceResponseHandler& handler) override;

    void createInstance(const Pegasus::OperationContext& context,
                        const Pegasus::CIMObjectPath& instancePath,
                        const Pegasus::CIMInstance& instance,
                        Pegasus::ObjectPathResponseHandler& handler) override;
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
