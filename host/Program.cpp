// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Program.h"

#include <Pegasus/Common/Exception.h>

#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>

#include "Assignment.h"
#include "Capture.h"
#include "CimText.h"
#include "CommandLine.h"
#include "Commands.h"
#include "InProcessServer.h"
#include "Listeners.h"
#include "ModuleAlerts.h"
#include "Passwd.h"
#include "Registrar.h"
#include "RemoteServer.h"
#include "ResultOutput.h"
#include "Sel.h"
#include "Serve.h"
#include "ServerAddress.h"
#include "ServerAlerts.h"
#include "Sources.h"
#include "TerminalText.h"
#include "Watch.h"
#include "Workplace.h"

namespace QZ {

namespace {

void _say(const std::string& line) {
    // In one piece, for threads may say something at once.
    std::cerr << "tavqz: " + visibleText(line) + "\n";
}

int _fail(ExitStatus status, const std::string& message) {
    _say(message);
    return status;
}

std::string _moduleFile(const Workplace& place, const std::string& location) {
    const auto registered = [&](const std::string& name) {
        return place.libraryFolder + '/' + name;
    };
    const std::string library = "lib" + location + ".so";
    const std::string given = std::filesystem::path(place.moduleFile).filename().string();
    // One that is given has the place of the module of its name, or of all where none has that.
    std::error_code error;
    const bool isOfAnother = given != library && std::filesystem::exists(registered(given), error);
    return place.moduleFile.empty() || isOfAnother ? registered(library) : place.moduleFile;
}

std::unique_ptr<InProcessServer> _makeServer(const Workplace& place) {
    return std::make_unique<InProcessServer>(
        place.schemaFolder,
        [place](const std::string& location) { return _moduleFile(place, location); });
}

ExitStatus _serve(const Request& request, const Workplace& place, ResultOutput& output) {
    return serve(request.serve, [&place] { return _makeServer(place); },
                 {[&output](const std::string& line) { output.write(line + "\n"); }, _say,
                  [](const std::string& line) { std::cerr << line + "\n"; }});
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
                 {schema, start, [&output](const std::string& text) { output.write(text); }, _say});
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
    const CommandResult result = runCommand(request, server, _say);
    output.write(result.text);
    return result.status;
}

CommandResult _carryOut(const Request& request, const Workplace& place) {
    const std::unique_ptr<InProcessServer> server = _makeServer(place);
    CommandResult result = runCommand(request, *server, _say);
    if (request.command == Request::Report) {
        // The module has made what it can by now: its data folder, for example.
        for (const std::string& sentence : missingSources()) {
            _say(sentence);
        }
    }
    return result;
}

// The folder is what "capture" fills.
CommandResult _answer(const Request& request, const Workplace& place, const std::string& folder) {
    switch (request.command) {
        case Request::Passwd:
            return {{}, changePassword(request.passwd)};
        case Request::Capture:
            return captureMachine(folder, request.isSanitized, _say);
        case Request::Sel:
            return listSel(request, Bmc::machine(), _say);
        default:
            return _carryOut(request, place);
    }
}

void _register(const Request& request, const Workplace& place, ResultOutput& output) {
    Registrar registrar(request.registration, place.schemaFolder,
                        [&output](const std::string& line) { output.write(line + "\n"); });
    if (request.registration.isRemoval) {
        registrar.remove();
    } else {
        registrar.add();
    }
}

int _run(const ParsedArguments& parsed, ResultOutput& output) {
    if (!parsed.isRequest) {
        if (parsed.status == EXIT_OK) {
            output.write(parsed.text);
        } else {
            std::cerr << parsed.text;
        }
        return parsed.status;
    }
    if (!parsed.request.server.empty()) {
        return _askServer(parsed.request, output);
    }
    const Workplace place = findWorkplace(parsed.request, executableFolder());
    if (parsed.request.command == Request::Register) {
        _register(parsed.request, place, output);
        return EXIT_OK;
    }
    const bool isCapture = parsed.request.command == Request::Capture;
    // Before the working folder is another.
    const std::string start = _workingFolder();
    const std::string folder =
        isCapture ? std::filesystem::absolute(parsed.request.subject).string() : std::string();
    enterWorkplace(place);
    if (parsed.request.command == Request::Serve) {
        return _serve(parsed.request, place, output);
    }
    if (parsed.request.command == Request::Watch) {
        const std::unique_ptr<InProcessServer> server = _makeServer(place);
        ModuleAlerts alerts(*server);
        return _watch(parsed.request, alerts, server->schema(), start, output);
    }
    const CommandResult result = _answer(parsed.request, place, folder);
    output.write(result.text);
    return result.status;
}

}  // namespace

int runProgram(int count, const char* const* arguments) {
    // A reader that leaves early is a failure to write, with a status of its own.
    (void)std::signal(SIGPIPE, SIG_IGN);
    ParsedArguments parsed;
    const auto fail = [&parsed](ExitStatus status, const std::string& message) {
        // "due" ends as monitoring plug-ins do, for which the other failures are findings.
        return _fail(parsed.request.command == Request::Due ? EXIT_UNKNOWN : status, message);
    };
    try {
        ResultOutput output;
        parsed = parseArguments(count, arguments);
        return _run(parsed, output);
    } catch (const UsageError& error) {
        return fail(EXIT_USAGE, error.what());
    } catch (const Pegasus::CIMException& exception) {
        return fail(EXIT_FAILED, statusText(exception));
    } catch (const Pegasus::Exception& exception) {
        return fail(EXIT_FAILED, make_string(exception.getMessage()));
    } catch (const std::exception& error) {
        return fail(EXIT_FAILED, error.what());
    }
}

}  // namespace QZ
