// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
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

// A run of the tavqz command, or of a copy of it, from the folder "/". Standard output goes to the
// descriptor if one is given. wait() is called once.
class CommandProcess {
public:
    explicit CommandProcess(std::vector<std::string> arguments, int output = -1,
                            const std::string& program = TAVQZ_COMMAND) {
        const std::string out = _folder.write("out", "");
        const std::string err = _folder.write("err", "");
        arguments.insert(arguments.begin(), program);
        std::vector<char*> argv;
        argv.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) {
            argv.push_back(argument.data());
        }
        argv.push_back(nullptr);
        _child = fork();
        if (_child < 0) {
            throw std::runtime_error("cannot fork");
        }
        if (_child == 0) {
            dup2(output >= 0 ? output : open(out.c_str(), O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
            dup2(open(err.c_str(), O_WRONLY | O_CLOEXEC), STDERR_FILENO);
            if (chdir("/") == 0) {
                execv(argv[0], argv.data());
            }
            _exit(127);
        }
    }
    CommandProcess(const CommandProcess&) = delete;
    CommandProcess& operator=(const CommandProcess&) = delete;

    void kill() const { ::kill(_child, SIGKILL); }

    CommandRun wait() const {
        int status = 0;
        waitpid(_child, &status, 0);
        CommandRun run;
        run.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        run.out = _folder.read("out");
        run.err = _folder.read("err");
        return run;
    }

private:
    TemporaryFolder _folder;
    pid_t _child;
};

// Runs the command and waits for its end.
inline CommandRun runCommandLine(std::vector<std::string> arguments, int output = -1) {
    return CommandProcess(std::move(arguments), output).wait();
}
