// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NetworkCommands.h"

#include <filesystem>

#include "Commands.h"
#include "Listeners.h"
#include "ModuleAlerts.h"
#include "ModuleServer.h"
#include "Passwd.h"
#include "Program.h"
#include "RemoteServer.h"
#include "ResultOutput.h"
#include "Serve.h"
#include "ServerAddress.h"
#include "ServerAlerts.h"
#include "Watch.h"

namespace QZ {

namespace {

ExitStatus _serve(const Request& request, const Workplace& place, ResultOutput& output) {
    return serve(request.serve, [&place] { return makeModuleServer(place, ModuleBinding::Whole); },
                 {[&output](const std::string& line) { output.write(line + "\n"); }, say});
}

// Empty where it is gone.
std::string _workingFolder() {
    std::error_code error;
    return std::filesystem::current_path(error).string();
}

// The command is run in the folder that we were started in.
ExitStatus _watch(const Request& request, AlertSource& alerts, const Schema& schema,
                  const std::string& start, ResultOutput& output) {
    return watch(request, alerts,
                 {schema, start, [&output](const std::string& text) { output.write(text); }, say});
}

int _askServer(const Request& request, ResultOutput& output) {
    const ServerAddress address = parseServerUrl(request.server);
    const HttpTrust trust{request.authorityFile, request.acceptsAnyCertificate,
                          ownCertificateFile()};
    RemoteServer server(address, trust);
    if (request.command == Request::Watch) {
        ServerAlerts alerts(address, trust);
        return _watch(request, alerts, server.schema(), _workingFolder(), output);
    }
    const CommandResult result = runCommand(request, server, say);
    output.write(result.text);
    return result.status;
}

}  // namespace

int carryOutOverNetwork(const Request& request) {
    ResultOutput output;
    if (!request.server.empty()) {
        return _askServer(request, output);
    }
    const Workplace place = findWorkplace(request, executableFolder());
    // Before the working folder is another.
    const std::string start = _workingFolder();
    enterWorkplace(place, say);
    switch (request.command) {
        case Request::Passwd:
            return changePassword(request.passwd);
        case Request::Serve:
            return _serve(request, place, output);
        case Request::Watch: {
            const std::unique_ptr<InProcessServer> server =
                makeModuleServer(place, ModuleBinding::Whole);
            ModuleAlerts alerts(*server);
            return _watch(request, alerts, server->schema(), start, output);
        }
        default:
            throw UsageError("This program is for tavqz to run");
    }
}

}  // namespace QZ
