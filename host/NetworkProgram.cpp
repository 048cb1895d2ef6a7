// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "NetworkProgram.h"

#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "Workplace.h"

namespace QZ {

bool needsNetworkProgram(const Request& request) {
    return !request.server.empty() || request.command == Request::Serve ||
           request.command == Request::Watch || request.command == Request::Passwd;
}

void becomeNetworkProgram(char* const* arguments) {
    const std::filesystem::path prefix = std::filesystem::path(executableFolder()).parent_path();
    // Of the same name, by which the process is known.
    const std::string program = (prefix / "libexec" / "tavqz").string();
    (void)execv(program.c_str(), arguments);
    throwSystemError("Cannot run", program, errno);
}

}  // namespace QZ
