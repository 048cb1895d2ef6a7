// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Serve.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <memory>

#include "Access.h"
#include "Credentials.h"
#include "HttpServer.h"
#include "HttpUrl.h"
#include "MachinePaths.h"
#include "RequestHandler.h"
#include "StopSignals.h"
#include "Subscriptions.h"

namespace QZ {

namespace {

// For requests that are being answered when the server is told to stop.
constexpr std::chrono::seconds STOP_TIME{10};

// In the data folder.
constexpr const char* SUBSCRIPTIONS_FILE = "indications.mof";

bool _isLoopback(const std::string& address) {
    return address.rfind("127.", 0) == 0 || address == "::1";
}

std::string _url(const ServeRequest& request, const std::string& password, std::uint16_t port) {
    // A password from a file is known to who needs it, and stands in no log.
    const std::string secret = request.passwordFile.empty() ? ":" + password : "";
    const std::string user = hasOneUser(request) ? request.user + secret + "@" : "";
    return "http://" + user + hostAndPort(request.address, port);
}

std::string _logLine(const HttpLogRecord& record) {
    char time[32];
    (void)std::snprintf(time, sizeof time, "%.1f ms", double(record.time.count()) / 1000);
    std::string line = record.peer + " " + (record.user.empty() ? "-" : record.user) + " " +
                       (record.method.empty() ? "-" : record.method);
    line += " \"" + record.text + "\" " + std::to_string(record.status) + " ";
    return line + std::to_string(record.bytes) + " bytes " + time;
}

HttpServerOptions _options(const ServeRequest& request, Authenticator& authenticator,
                           const ServeOutput& output) {
    HttpServerOptions options;
    HttpListener& listener = options.listeners.front();
    listener.address = request.address;
    listener.port = std::uint16_t(request.port);
    options.authenticate = [&authenticator](const Login& login, const TakeVerdict& later) {
        return authenticator.authenticate(login, later);
    };
    options.log = [log = output.log](const HttpLogRecord& record) { log(_logLine(record)); };
    return options;
}

void _check(const ServeRequest& request) {
    if (!_isLoopback(request.address)) {
        throw UsageError("--listen " + request.address +
                         ": passwords would cross the network in the clear; only addresses of "
                         "this machine are served, such as 127.0.0.1 or ::1");
    }
    if (request.user.empty() ||
        request.user.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                       "0123456789._-") != std::string::npos) {
        throw UsageError("--user: a name of letters, digits, \".\", \"_\" and \"-\" is expected");
    }
}

}  // namespace

ExitStatus serve(const ServeRequest& request, const HttpTrust& listeners,
                 const std::function<std::unique_ptr<InProcessServer>()>& makeProviders,
                 const ServeOutput& output) {
    _check(request);
    checkTrust(listeners);
    const std::string password =
        request.passwordFile.empty() ? makePassword() : readPassword(request.passwordFile);
    StopSignals signals;
    const std::unique_ptr<Authenticator> authenticator =
        makeAuthenticator(request, password, output.log);
    const std::unique_ptr<InProcessServer> providers = makeProviders();
    Subscriptions subscriptions(*providers, MachinePaths::dataDirectory() + SUBSCRIPTIONS_FILE,
                                output.log, listeners);
    subscriptions.start();
    RequestHandler handler(*providers, {}, &subscriptions);
    HttpServer server(
        _options(request, *authenticator, output),
        [&handler](const HttpRequest& http, HttpReply& reply) { handler.handle(http, reply); });
    output.announce(_url(request, password, server.port()));
    signals.wait();
    if (!server.stop(STOP_TIME)) {
        output.log("stopped although a provider has not answered");
        // Its threads still use what would be taken apart.
        _exit(EXIT_FAILED);
    }
    return EXIT_OK;
}

}  // namespace QZ
