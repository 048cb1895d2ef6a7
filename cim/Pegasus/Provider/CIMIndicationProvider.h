// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMIndication.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMPropertyList.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMProvider.h>
#include <Pegasus/Provider/Linkage.h>

namespace Pegasus {

// A provider of indications. Subscriptions that exist when the server starts are created before
// indications are enabled. `handler` may be used from any thread of the provider's, until
// disableIndications() returns.
class PEGASUS_PROVIDER_LINKAGE CIMIndicationProvider : public virtual CIMProvider {
public:
    CIMIndicationProvider();
    ~CIMIndicationProvider() override;

    virtual void enableIndications(IndicationResponseHandler& handler) = 0;
    virtual void disableIndications() = 0;

    virtual void createSubscription(const OperationContext& context,
                                    const CIMObjectPath& subscriptionName,
                                    const Array<CIMObjectPath>& classNames,
                                    const CIMPropertyList& propertyList,
                                    const Uint16 repeatNotificationPolicy) = 0;

    virtual void modifySubscription(const OperationContext& context,
                                    const CIMObjectPath& subscriptionName,
                                    const Array<CIMObjectPath>& classNames,
                                    const CIMPropertyList& propertyList,
                                    const Uint16 repeatNotificationPolicy) = 0;

    virtual void deleteSubscription(const OperationContext& context,
                                    const CIMObjectPath& subscriptionName,
                                    const Array<CIMObjectPath>& classNames) = 0;
};

}  // namespace Pegasus
