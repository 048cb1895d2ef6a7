// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "CommandLine.h"

namespace QZ {

// Where a request is carried out: absolute paths, so that the working folder may change.
struct Workplace {
    std::string root;        // empty: this machine
    std::string dataFolder;  // empty: the system's
    std::string runFolder;   // the working folder for the module, which looks for libraries from it
    std::string moduleFile;  // empty: by the registration, in libraryFolder
    std::string libraryFolder;
    std::string schemaFolder;
    // What who asked is to be told of it; empty: nothing.
    std::string note;
};

// The folder of the program that runs, with links resolved.
std::string executableFolder();

// Set to anything, libraries of a machine's folder are loaded. Without it they are not: a folder
// that somebody sent would run code.
constexpr const char* HOST_LIBRARIES = "TAVQZ_HOST_LIBRARIES";

// Fills in what the request leaves open, from the folder "bin" that the program lies in. Changes
// nothing. Throws UsageError where the root is no folder.
Workplace findWorkplace(const Request& request, const std::string& binFolder);

// Makes it this process's: environment and working folder. `say` takes its note. Before the module
// is loaded, and while there is one thread. Throws Error.
void enterWorkplace(const Workplace& place, const std::function<void(const std::string&)>& say);

}  // namespace QZ
