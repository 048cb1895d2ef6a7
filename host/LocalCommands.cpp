// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LocalCommands.h"

#include <filesystem>

#include "Capture.h"
#include "Commands.h"
#include "ModuleServer.h"
#include "Program.h"
#include "Registrar.h"
#include "ResultOutput.h"
#include "Sel.h"
#include "Sources.h"

namespace QZ {

namespace {

CommandResult _askModule(const Request& request, const Workplace& place) {
    const std::unique_ptr<InProcessServer> server =
        makeModuleServer(place, ModuleBinding::AsCalled);
    CommandResult result = runCommand(request, *server, say);
    if (request.command == Request::Report) {
        // The module has made what it can by now: its data folder, for example.
        for (const std::string& sentence : missingSources()) {
            say(sentence);
        }
    }
    return result;
}

// The folder is what "capture" fills.
CommandResult _answer(const Request& request, const Workplace& place, const std::string& folder) {
    switch (request.command) {
        case Request::Capture:
            return captureMachine(folder, request.isSanitized, say);
        case Request::Sel:
            return listSel(request, Bmc::machine(), say);
        default:
            return _askModule(request, place);
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

}  // namespace

int carryOutLocally(const Request& request) {
    ResultOutput output;
    const Workplace place = findWorkplace(request, executableFolder());
    if (request.command == Request::Register) {
        _register(request, place, output);
        return EXIT_OK;
    }
    const bool isCapture = request.command == Request::Capture;
    // Before the working folder is another.
    const std::string folder =
        isCapture ? std::filesystem::absolute(request.subject).string() : std::string();
    enterWorkplace(place, say);
    // Its memory goes with the process, which ends now: giving it back piece by piece takes a ninth
    // of all that listing a hundred instances does.
    static const CommandResult* const result = new CommandResult(_answer(request, place, folder));
    output.write(result->text);
    return result->status;
}

}  // namespace QZ
