// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NetworkCommands.h"
#include "Program.h"

int main(int argc, char** argv) {
    return QZ::runProgram(argc, argv, QZ::carryOutOverNetwork);
}
