// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Serve.h"

#include <unistd.h>

#include <memory>

#include "Access.h"
#include "HttpServer.h"
#include "HttpTrust.h"
#include "Listeners.h"
#include "MachinePaths.h"
#include "Readiness.h"
#include "RequestHandler.h"
#include "RequestLog.h"
#include "ServeConfig.h"
#include "ServeKeys.h"
#include "ServeLog.h"
#include "StopSignals.h"
#include "Subscriptions.h"

namespace QZ {

namespace {

// In the data folder.
constexpr const char* SUBSCRIPTIONS_FILE = "indications.mof";

HttpLimits _httpLimits(const ServeLimits& given) {
    HttpLimits limits;
    limits.idle = given.idle;
    limits.header = given.header;
    limits.body = given.body;
    limits.answer = given.answer;
    limits.sending = given.sending;
    limits.headerBytes = given.headerBytes;
    limits.bodyBytes = given.bodyBytes;
    limits.connections = given.connections;
    limits.connectionsPerClient = given.connectionsPerClient;
    limits.workers = given.requests;
    limits.waiting = given.waitingRequests;
    limits.lostWorkers = given.lostThreads;
    return limits;
}

RequestHandler::Limits _cimLimits(const ServeLimits& given) {
    RequestHandler::Limits limits;
    limits.xml.depth = given.xmlDepth;
    limits.xml.nodes = given.xmlNodes;
    limits.pulls.contexts = given.enumerations;
    limits.pulls.allObjects = given.enumeratedObjects;
    limits.answer = std::chrono::ceil<std::chrono::seconds>(given.answer);
    return limits;
}

using MakeProviders = std::function<std::unique_ptr<InProcessServer>()>;

// What a running server can be told anew.
class Told {
public:
    Told(const ServeArguments& arguments, ServeValues values, ServeLog& writes)
        : _arguments(arguments),
          _values(std::move(values)),
          request(makeServeRequest(_values)),
          log(writes),
          access(request, [&writes](const std::string& line) { writes.message(line); }),
          listeners(makeListeners(request,
                                  [&writes](const std::string& line) { writes.message(line); })) {}

    // What cannot be taken over is said, and stays as it was.
    void again() {
        try {
            ServeValues values = readServeValues(_arguments);
            ServeRequest renewed = makeServeRequest(values);
            access.renew(renewed);
            request = std::move(renewed);
            log.setJson(request.logFormat == "json");
            for (const ServeKey& key : serveKeys()) {
                if (!key.isReloaded && values[key.name] != _values[key.name]) {
                    log.message(key.name + " is taken over at the next start");
                }
            }
        } catch (const Error& error) {
            log.message(std::string("the configuration stays as it was: ") + error.what());
        }
        try {
            if (listeners.identity) {
                listeners.identity->reload();
            }
        } catch (const Error& error) {
            log.message(std::string("the certificate stays as it was: ") + error.what());
        }
    }

private:
    const ServeArguments& _arguments;
    ServeValues _values;  // at the start

public:
    ServeRequest request;
    ServeLog& log;
    Access access;
    const Listeners listeners;
};

HttpServerOptions _options(Told& told) {
    HttpServerOptions options;
    options.listeners = told.listeners.all;
    options.limits = _httpLimits(told.request.limits);
    options.authenticate = [&told](const Login& login, const TakeVerdict& later) {
        return told.access.authenticate(login, later);
    };
    options.log = [&told](const HttpLogRecord& record) { told.log.request(record); };
    options.lose = [&told](const HttpLosses& losses) { told.log.message(lossText(losses)); };
    return options;
}

ExitStatus _serve(Told& told, const MakeProviders& makeProviders, const ServeOutput& output,
                  const Readiness& readiness, StopSignals& signals) {
    const HttpTrust trust{told.request.authorityFile, false};
    checkTrust(trust);
    const ServeLimits limits = told.request.limits;
    const std::unique_ptr<InProcessServer> providers = makeProviders();
    Subscriptions subscriptions(
        *providers, MachinePaths::dataDirectory() + SUBSCRIPTIONS_FILE,
        [&told](const std::string& line) { told.log.message(line); }, trust);
    subscriptions.start();
    RequestHandler handler(*providers, _cimLimits(limits), &subscriptions);
    HttpServer server(_options(told), [&handler](const HttpRequest& http, HttpReply& reply) {
        handler.handle(http, reply);
    });
    const auto& listening = told.listeners.all;
    for (std::size_t i = 0; i < listening.size(); ++i) {
        output.announce(urlOf(listening[i], server.port(i), told.access.userInfo()));
    }
    readiness.ready();
    while (!signals.wait()) {
        readiness.reloading();
        told.again();
        readiness.ready();
    }
    readiness.stopping();
    if (!server.stop(limits.stop)) {
        told.log.message("stopped although a provider has not answered");
        // Its threads still use what would be taken apart.
        _exit(EXIT_FAILED);
    }
    return EXIT_OK;
}

}  // namespace

ExitStatus serve(const ServeArguments& arguments, const MakeProviders& makeProviders,
                 const ServeOutput& output) {
    const Readiness readiness;
    StopSignals signals(StopSignals::StopAndHangup);
    ServeValues values = readServeValues(arguments);
    ServeLog log(output.log);
    log.setJson(makeServeRequest(values).logFormat == "json");
    try {
        Told told(arguments, std::move(values), log);
        return _serve(told, makeProviders, output, readiness, signals);
    } catch (const Error& error) {
        if (!log.isJson()) {
            throw;
        }
        log.message(error.what());
        return dynamic_cast<const UsageError*>(&error) ? EXIT_USAGE : EXIT_FAILED;
    }
}

}  // namespace QZ
