// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <exception>
#include <functional>

// A forked process that does something, and ends with status 0 when that is true.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<bool()>& task) : _id(fork()) {
        if (_id != 0)
            return;
        bool isDone = false;
        try {
            isDone = task();
        } catch (const std::exception&) {
            isDone = false;
        }
        _exit(isDone ? 0 : 1);
    }
    ~ChildProcess() {
        if (_id > 0)
            kill();
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // Waits for its end; what the task said.
    bool succeeds() {
        const int status = wait();
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }

    void kill() {
        ::kill(_id, SIGKILL);
        wait();
    }

private:
    int wait() {
        int status = -1;
        waitpid(_id, &status, 0);
        _id = -1;
        return status;
    }

    pid_t _id;
};

constexpr uid_t OrdinaryUser = 65534;

// Does something as an ordinary user, whom the permissions of files bind, also when the tests are
// run by root. The user owns the folder meanwhile.
inline bool succeedsAsOrdinaryUser(const std::string& folder, const std::function<bool()>& task) {
    if (geteuid() == 0 && chown(folder.c_str(), OrdinaryUser, OrdinaryUser) != 0)
        return false;
    return ChildProcess([&task] {
               return (geteuid() != 0 ||
                       (setgid(OrdinaryUser) == 0 && setuid(OrdinaryUser) == 0)) &&
                      task();
           })
        .succeeds();
}
