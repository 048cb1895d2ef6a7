// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RequestHandler.h"

#include <Pegasus/Common/Exception.h>

#include <utility>
#include <vector>

#include "CimText.h"
#include "HttpMapping.h"
#include "LogText.h"

namespace QZ {

using namespace Pegasus;

namespace {

void _send(HttpReply& reply, const HttpAnswer& answer) {
    reply.setStatus(answer.status);
    for (const auto& [name, value] : answer.headers) {
        reply.addHeader(name, value);
    }
    reply.write(answer.body);
}

// The class that a call is about; empty where it names none.
std::string _classOf(const CimRequest& request) {
    CIMName name = request.className;
    if (name.isNull()) {
        name = request.instanceName.getClassName();
    }
    if (name.isNull() && !request.instance.isUninitialized()) {
        name = request.instance.getClassName();
    }
    return name.isNull() ? std::string() : make_string(name.getString());
}

void _requireRight(Right right, const Caller& caller) {
    if (!caller.rights.has(right)) {
        const std::string name = caller.name.empty() ? "a caller without a name" : caller.name;
        throw CIMException(CIM_ERR_ACCESS_DENIED,
                           make_String(name + " has no right to " + nameOf(right)));
    }
}

// Whatever a call names must be allowed: a path of one class may stand with an instance of another.
// Throws CIM_ERR_ACCESS_DENIED.
void _requireRights(const CimRequest& request, const Caller& caller) {
    std::vector<CIMName> names{request.className, request.instanceName.getClassName()};
    if (!request.instance.isUninitialized()) {
        names.push_back(request.instance.getClassName());
        names.push_back(request.instance.getPath().getClassName());
    }
    bool isAboutAClass = false;
    for (const CIMName& name : names) {
        if (!name.isNull()) {
            isAboutAClass = true;
            _requireRight(requiredRight(request.call.method, make_string(name.getString())),
                          caller);
        }
    }
    if (!isAboutAClass) {
        _requireRight(requiredRight(request.call.method, {}), caller);
    }
}

// What the log says of a call: its method, its class, and its CIM status where that is none of 0.
std::string _logText(const CimRequest& request, int status) {
    std::string text = request.call.method;
    const std::string name = _classOf(request);
    if (!name.empty()) {
        text += " " + name;
    }
    text = textForLog(text);
    return status == 0 ? text : text + " CIM status " + std::to_string(status);
}

std::string _lateAnswer(const CimCall& call, HttpReply::Late why, std::chrono::seconds limit) {
    if (why == HttpReply::ServerStops) {
        return CimResponseWriter::error(call, CIM_ERR_SERVER_IS_SHUTTING_DOWN,
                                        "the server stops before the provider has answered");
    }
    return CimResponseWriter::error(
        call, CIM_ERR_FAILED,
        "the provider did not answer within " + std::to_string(limit.count()) + " seconds");
}

// One call's answer: written as it comes, or replaced by an error.
class Answer {
public:
    Answer(HttpReply& reply, HttpMapping& mapping) : _reply(reply), _mapping(mapping) {}

    void refuse(const CimCall& call, int status, const std::string& reason) {
        // What was written so far is no answer any more; too late, the client is told by trailers.
        _reply.discard(_mapping.trailers(status, reason));
        if (!_reply.isStarted()) {
            _send(_reply,
                  {200, _mapping.answerHeaders(), CimResponseWriter::error(call, status, reason)});
        }
    }

private:
    HttpReply& _reply;
    HttpMapping& _mapping;
};

}  // namespace

RequestHandler::RequestHandler(InProcessServer& providers, Limits limits,
                               Subscriptions* subscriptions)
    : _limits(limits), _server(providers, limits.pulls, subscriptions) {}

void RequestHandler::handle(const HttpRequest& http, HttpReply& reply) {
    HttpMapping mapping(http);
    if (const auto refusal = mapping.refusal()) {
        return _send(reply, *refusal);
    }
    Answer answer(reply, mapping);
    CimRequest request;
    try {
        request = decodeRequest(http.body, _limits.xml);
    } catch (const CimBadRequest& bad) {
        reply.setLogText(textForLog(std::string(bad.cimError) + ": " + bad.reason));
        return _send(reply, mapping.failure(bad.status, bad.cimError));
    } catch (const CimRefusal& refusal) {
        reply.setLogText(textForLog(refusal.call.method) + " CIM status " +
                         std::to_string(refusal.status));
        return answer.refuse(refusal.call, refusal.status, refusal.reason);
    }
    if (const auto mismatch = mapping.mismatch(request)) {
        return _send(reply, *mismatch);
    }
    reply.setLogText(_logText(request, 0));
    reply.setTrailerNames(mapping.trailerNames());
    const HttpHeaders headers = mapping.answerHeaders();
    reply.setLateAnswer([call = request.call, headers, this](HttpReply::Late why) {
        return HttpAnswer{200, headers, _lateAnswer(call, why, _limits.answer)};
    });
    InProcessServer::Caller caller{http.caller.name,
                                   parseAcceptLanguage(http.header("Accept-Language"))};
    int status = CIM_ERR_FAILED;
    std::string reason;
    try {
        _requireRights(request, http.caller);
        for (const auto& [name, value] : headers) {
            reply.addHeader(name, value);
        }
        CimResponseWriter writer(request.call,
                                 [&reply](std::string_view bytes) { reply.write(bytes); });
        _server.carryOut(request, caller, writer);
        return;
    } catch (const Disconnected&) {
        throw;
    } catch (const CIMException& exception) {
        status = exception.getCode();
        reason = make_string(exception.getMessage());
    } catch (const Exception& exception) {
        reason = make_string(exception.getMessage());
    } catch (const std::exception& exception) {
        reason = exception.what();
    }
    reply.setLogText(_logText(request, status));
    answer.refuse(request.call, status, reason);
}

}  // namespace QZ
