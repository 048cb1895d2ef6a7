// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "LocalCommands.h"
#include "NetworkProgram.h"
#include "Program.h"

int main(int argc, char** argv) {
    return QZ::runProgram(argc, argv, [argv](const QZ::Request& request) {
        if (QZ::needsNetworkProgram(request)) {
            QZ::becomeNetworkProgram(argv);
        }
        return QZ::carryOutLocally(request);
    });
}
