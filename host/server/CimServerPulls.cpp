// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "CimServer.h"

#include <Pegasus/Common/Exception.h>

#include <utility>

#include "CimText.h"
#include "ServerCall.h"

// Enumerations that are fetched piece by piece.

namespace QZ {

using namespace Pegasus;

namespace {

PullContexts::Owner _owner(const CimRequest& request, const InProcessServer::Caller& caller) {
    return {caller.user, make_string(request.nameSpace.getString())};
}

bool _isGiven(const std::optional<std::string>& text) {
    return text && !text->empty();
}

// What of an opening the server does not have.
void _refuseExtras(const CimRequest& request) {
    if (_isGiven(request.filterQuery) || _isGiven(request.filterQueryLanguage)) {
        throw CIMException(CIM_ERR_FILTERED_ENUMERATION_NOT_SUPPORTED, "leave the filter out");
    }
    if (request.continueOnError.value_or(false)) {
        throw CIMException(CIM_ERR_CONTINUATION_ON_ERROR_NOT_SUPPORTED, "ContinueOnError");
    }
}

}  // namespace

void CimServer::_openEnumeration(const Call& call) {
    const CimRequest& request = call.request;
    _refuseExtras(request);
    _contexts.checkedTimeout(request.operationTimeout);
    PullContexts::Kept objects(_contexts);
    if (request.call.method == "OpenEnumerateInstancePaths") {
        objects.setForm(PullContexts::Paths, false);
        _visitPaths(call, [&](const CIMObjectPath& path) { objects.add(path); });
    } else {
        InstanceForm::Wishes wishes = call.wishes();
        if (!request.deepInheritance.value_or(true)) {
            wishes.shallow = &_declared(call, request.className, CIM_ERR_INVALID_CLASS);
        }
        const InstanceForm form(call.classes, wishes);
        objects.setForm(PullContexts::Instances, wishes.includeClassOrigin);
        _visitInstances(call, [&](const CIMInstance& instance) {
            objects.add(form.selected(instance, request.nameSpace));
        });
    }
    _writePulled(call,
                 _contexts.open(_owner(request, call.caller), std::move(objects),
                                request.maxObjectCount.value_or(0), request.operationTimeout));
}

void CimServer::_pull(const Call& call) {
    const auto kind = call.request.call.method == "PullInstancePaths" ? PullContexts::Paths
                                                                      : PullContexts::Instances;
    _writePulled(call, _contexts.pull(_owner(call.request, call.caller),
                                      call.request.enumerationContext.value_or(std::string()), kind,
                                      call.request.maxObjectCount.value_or(0)));
}

void CimServer::_closeEnumeration(const Call& call) {
    _contexts.close(_owner(call.request, call.caller),
                    call.request.enumerationContext.value_or(std::string()));
}

void CimServer::_writePulled(const Call& call, const PullContexts::Pulled& pulled) {
    const String host = hostName();
    const auto full = [&](CIMObjectPath path) {
        path.setHost(host);
        path.setNameSpace(call.request.nameSpace);
        return path;
    };
    XmlForm form;
    form.includeClassOrigin = pulled.objects.includeClassOrigin;
    for (const CIMInstance& instance : pulled.objects.instances) {
        call.writer.instanceWithPath(full(instance.getPath()), instance, form);
    }
    for (const CIMObjectPath& path : pulled.objects.paths) {
        std::string xml;
        appendInstancePath(xml, full(path));
        call.writer.element(xml);
    }
    call.writer.returns();
    call.writer.parameter("EndOfSequence", "boolean", pulled.context.empty() ? "TRUE" : "FALSE");
    call.writer.parameter("EnumerationContext", "string", pulled.context);
}

}  // namespace QZ
