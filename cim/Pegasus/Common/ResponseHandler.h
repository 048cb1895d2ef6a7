// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Array.h>
#include <Pegasus/Common/CIMClass.h>
#include <Pegasus/Common/CIMIndication.h>
#include <Pegasus/Common/CIMInstance.h>
#include <Pegasus/Common/CIMObject.h>
#include <Pegasus/Common/CIMObjectPath.h>
#include <Pegasus/Common/CIMParamValue.h>
#include <Pegasus/Common/CIMValue.h>
#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/Linkage.h>
#include <Pegasus/Common/OperationContext.h>

namespace Pegasus {

// Where a provider puts its answer: processing() first, deliver() as often as there are results,
// complete() last. The server implements it, owns it, and keeps it valid for the call it is passed
// to; IndicationResponseHandler until disableIndications() returns.
class PEGASUS_COMMON_LINKAGE ResponseHandler {
public:
    virtual ~ResponseHandler();

    virtual void processing() = 0;
    virtual void complete() = 0;

    // What goes with the answer, for example its language.
    void setContext(const OperationContext& context);

protected:
    ResponseHandler();
    ResponseHandler(const ResponseHandler& handler);
    ResponseHandler& operator=(const ResponseHandler& handler);

    OperationContext getContext() const;

private:
    OperationContext _context;
};

class PEGASUS_COMMON_LINKAGE InstanceResponseHandler : virtual public ResponseHandler {
public:
    ~InstanceResponseHandler() override;
    virtual void deliver(const CIMInstance& instance) = 0;
    virtual void deliver(const Array<CIMInstance>& instances) = 0;
};

class PEGASUS_COMMON_LINKAGE ObjectPathResponseHandler : virtual public ResponseHandler {
public:
    ~ObjectPathResponseHandler() override;
    virtual void deliver(const CIMObjectPath& objectPath) = 0;
    virtual void deliver(const Array<CIMObjectPath>& objectPaths) = 0;
};

class PEGASUS_COMMON_LINKAGE MethodResultResponseHandler : virtual public ResponseHandler {
public:
    ~MethodResultResponseHandler() override;
    virtual void deliverParamValue(const CIMParamValue& outParamValue) = 0;
    virtual void deliverParamValue(const Array<CIMParamValue>& outParamValues) = 0;
    virtual void deliver(const CIMValue& returnValue) = 0;
};

// Indications go to every subscription that asks for them: each is delivered once. The context
// tells for example which subscriptions it concerns.
class PEGASUS_COMMON_LINKAGE IndicationResponseHandler : virtual public ResponseHandler {
public:
    ~IndicationResponseHandler() override;
    virtual void deliver(const CIMIndication& indication) = 0;
    virtual void deliver(const Array<CIMIndication>& indications) = 0;
    virtual void deliver(const OperationContext& context, const CIMIndication& indication) = 0;
    virtual void deliver(const OperationContext& context,
                         const Array<CIMIndication>& indications) = 0;
};

class PEGASUS_COMMON_LINKAGE ObjectResponseHandler : virtual public ResponseHandler {
public:
    ~ObjectResponseHandler() override;
    virtual void deliver(const CIMObject& object) = 0;
    virtual void deliver(const Array<CIMObject>& objects) = 0;
};

}  // namespace Pegasus
