// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "TemporaryFolder.h"

// What a run of the tavqz command came to.
struct CommandRun {
    int status = -1;  // exit status; 128 and more: killed by a signal
    std::string out;
    std::string err;
};

// Runs the command with these arguments, from the folder "/", and waits for its end. Standard
// output goes to the descriptor if one is given.
inline CommandRun runCommandLine(std::vector<std::string> arguments, int output = -1) {
    const TemporaryFolder folder;
    const std::string out = folder.write("out", "");
    const std::string err = folder.write("err", "");
    arguments.insert(arguments.begin(), TAVQZ_COMMAND);
    std::vector<char*> argv;
    for (std::string& argument : arguments) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    const pid_t child = fork();
    if (child < 0) {
        throw std::runtime_error("cannot fork");
    }
    if (child == 0) {
        dup2(output >= 0 ? output : open(out.c_str(), O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        dup2(open(err.c_str(), O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        if (chdir("/") == 0) {
            execv(argv[0], argv.data());
        }
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    CommandRun run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.out = folder.read("out");
    run.err = folder.read("err");
    return run;
}
