// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "RegisterOptions.h"

namespace QZ {

void addRegisterOptions(CLI::App& command, RegisterRequest& request) {
    command.add_flag("--remove", request.isRemoval, "Take all of it away again");
    command.add_flag("--dry-run", request.isDryRun, "Only write what would be done");
    command
        .add_option("--namespace", request.interopNamespace,
                    "The server's interop namespace; else the one that it has")
        ->type_name("NAME");
    command
        .add_option("--provider-dir", request.providerFolder,
                    "The folder of the server's providers; else as it is configured")
        ->type_name("DIR");
    command
        .add_option("--cimmof", request.compiler,
                    "The server's cimmof, with its other tools beside it; else where it usually is")
        ->type_name("PATH")
        ->check(CLI::ExistingFile);
}

}  // namespace QZ
