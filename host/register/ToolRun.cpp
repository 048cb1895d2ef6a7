// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <fcntl.h>
#include <paths.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "Descriptor.h"
#include "Error.h"

namespace QZ {

namespace {

std::string _content(int file) {
    std::string text;
    char buffer[4096];
    for (off_t at = 0;;) {
        const ssize_t count = pread(file, buffer, sizeof buffer, at);
        if (count <= 0) {
            break;
        }
        text.append(buffer, std::size_t(count));
        at += count;
    }
    text.erase(text.find_last_not_of(" \n") + 1);
    return text;
}

pid_t _start(Command command, int output) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& argument : command) {
        arguments.push_back(argument.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, _PATH_DEVNULL, O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawn(&child, command.front().c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throwSystemError("Cannot run", command.front(), error);
    }
    return child;
}

}  // namespace

ToolRun runTool(const Command& command) {
    // A file, not a pipe: a server that is started keeps it open.
    const Descriptor output(memfd_create("output", MFD_CLOEXEC));
    if (!output.isOpen()) {
        throwSystemError("Cannot run", command.front(), errno);
    }
    const pid_t child = _start(command, output.get());
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
            _content(output.get())};
}

std::string commandText(const Command& command) {
    constexpr const char* plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+./=:,@%";
    std::string text;
    for (const std::string& argument : command) {
        text += text.empty() ? "" : " ";
        if (!argument.empty() && argument.find_first_not_of(plain) == std::string::npos) {
            text += argument;
            continue;
        }
        text += "'";
        for (const char character : argument) {
            text += character == '\'' ? std::string("'\\''") : std::string(1, character);
        }
        text += "'";
    }
    return text;
}

}  // namespace QZ
