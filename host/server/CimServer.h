// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include "CimRequest.h"
#include "CimResponseWriter.h"
#include "InProcessServer.h"
#include "InteropInstances.h"
#include "PullContexts.h"
#include "Subscriptions.h"

namespace QZ {

// The intrinsic methods of DSP0200 on the namespaces of a model: instances by the providers of
// their classes, classes and qualifiers by the model, and what there is to know of the server
// itself in its interop namespace. Any thread may call.
class CimServer {
public:
    // What is handed over must outlive this object; without subscriptions nobody can subscribe.
    CimServer(InProcessServer& providers, PullContexts::Limits limits,
              Subscriptions* subscriptions = nullptr);

    // Carries the call out and writes what it returns. Throws CIMException for what is refused, and
    // what the writer throws; something may have been written by then.
    void carryOut(const CimRequest& request, const InProcessServer::Caller& caller,
                  CimResponseWriter& writer);

private:
    struct Call;
    using Operation = void (CimServer::*)(const Call& call);
    struct Row;
    static const Row _operations[];

    void _enumerateInstances(const Call& call);
    void _enumerateInstanceNames(const Call& call);
    void _getInstance(const Call& call);
    void _modifyInstance(const Call& call);
    void _createInstance(const Call& call);
    void _deleteInstance(const Call& call);
    void _getProperty(const Call& call);
    void _setProperty(const Call& call);
    void _enumerateClassNames(const Call& call);
    void _enumerateClasses(const Call& call);
    void _getClass(const Call& call);
    void _enumerateQualifiers(const Call& call);
    void _getQualifier(const Call& call);
    void _openEnumeration(const Call& call);
    void _pull(const Call& call);
    void _closeEnumeration(const Call& call);

    void _visitInstances(const Call& call, const InProcessServer::TakeInstance& take);
    void _visitPaths(const Call& call, const InProcessServer::TakePath& take);
    bool _keeps(const Pegasus::CIMName& className) const;
    Pegasus::CIMInstance _find(const Call& call, const Pegasus::CIMObjectPath& path);
    Pegasus::CIMObjectPath _path(const Call& call, const Pegasus::CIMObjectPath& given) const;
    const ClassDeclaration& _declared(const Call& call, const Pegasus::CIMName& name,
                                      Pegasus::CIMStatusCode unknown) const;
    void _writePulled(const Call& call, const PullContexts::Pulled& pulled);

    InProcessServer& _providers;
    Subscriptions* const _subscriptions;
    InteropInstances _interop;
    PullContexts _contexts;
};

}  // namespace QZ
