// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <Pegasus/Common/Config.h>
#include <Pegasus/Common/OperationContext.h>
#include <Pegasus/Common/ResponseHandler.h>
#include <Pegasus/Provider/CIMOMHandle.h>
#include <Pegasus/Provider/Linkage.h>
#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

// What a server knows of every provider. The module's PegasusCreateProvider() makes it; the server
// calls initialize() once before anything else and terminate() last, after which it does not touch
// the provider again: terminate() deletes it. In between, operations may come from several threads
// at once.
class PEGASUS_PROVIDER_LINKAGE CIMProvider {
public:
    CIMProvider();
    virtual ~CIMProvider();

    // `cimom` stays valid until terminate().
    virtual void initialize(CIMOMHandle& cimom) = 0;
    virtual void terminate() = 0;
};

}  // namespace Pegasus
