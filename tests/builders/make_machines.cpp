// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <exception>
#include <iostream>

#include "Machines.h"

// make_machines FOLDER: writes the test machines below the folder (tests/machines in the tree).
int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_machines FOLDER\n";
        return 2;
    }
    try {
        writeMachines(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "make_machines: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
