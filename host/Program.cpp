// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Program.h"

#include <Pegasus/Common/Exception.h>

#include <csignal>
#include <iostream>

#include "CimText.h"
#include "Commands.h"
#include "ResultOutput.h"
#include "TerminalText.h"

namespace QZ {

namespace {

int _fail(ExitStatus status, const std::string& message) {
    say(message);
    return status;
}

// What became of arguments that are no request.
int _print(const ParsedArguments& parsed) {
    if (parsed.status == EXIT_OK) {
        ResultOutput().write(parsed.text);
    } else {
        std::cerr << parsed.text;
    }
    return parsed.status;
}

}  // namespace

void say(const std::string& line) {
    std::cerr << "tavqz: " + visibleText(line) + "\n";
}

int runProgram(int count, const char* const* arguments, const CarryOut& carryOut) {
    // A reader that leaves early is a failure to write, with a status of its own.
    (void)std::signal(SIGPIPE, SIG_IGN);
    ParsedArguments parsed;
    const auto fail = [&parsed](ExitStatus status, const std::string& message) {
        // "due" ends as monitoring plug-ins do, for which the other failures are findings.
        return _fail(parsed.request.command == Request::Due ? EXIT_UNKNOWN : status, message);
    };
    try {
        parsed = parseArguments(count, arguments);
        return parsed.isRequest ? carryOut(parsed.request) : _print(parsed);
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
