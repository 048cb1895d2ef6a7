// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "AlertCommand.h"

#include <fcntl.h>
#include <paths.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <utility>
#include <vector>

#include "Descriptor.h"
#include "Error.h"

namespace QZ {

namespace {

constexpr const char* _prefix = "TAVQZ_ALERT_";

const std::pair<const char*, std::string AlertFields::*> _variables[] = {
    {"CLASS", &AlertFields::className},   {"DESCRIPTION", &AlertFields::description},
    {"EVENT_ID", &AlertFields::eventId},  {"PROVIDER", &AlertFields::provider},
    {"SEVERITY", &AlertFields::severity}, {"SEVERITY_NAME", &AlertFields::severityName},
    {"SYSTEM", &AlertFields::system},     {"SYSTEM_ID", &AlertFields::systemId},
    {"TIME", &AlertFields::time},
};

// Ours, with the alert's.
std::vector<std::string> _environment(const AlertFields& fields) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (std::strncmp(*variable, _prefix, std::strlen(_prefix)) != 0) {
            variables.emplace_back(*variable);
        }
    }
    for (const auto& [name, field] : _variables) {
        // A NUL would end the text in any case.
        variables.push_back(_prefix + std::string(name) + "=" + fields.*field);
    }
    return variables;
}

std::vector<char*> _pointers(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// How the command is started: in its folder, without input, in a process group of its own, so that
// a signal reaches all of it and once, and with signals as we were started with them.
class SpawnSettings {
public:
    SpawnSettings(const std::string& folder, const sigset_t& mask) {
        posix_spawn_file_actions_init(&actions);
        if (!folder.empty()) {
            posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
        }
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, _PATH_DEVNULL, O_RDONLY, 0);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(
            &attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setsigmask(&attributes, &mask);
        sigset_t defaults;
        sigemptyset(&defaults);
        sigaddset(&defaults, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &defaults);
    }
    ~SpawnSettings() {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;

    posix_spawn_file_actions_t actions{};
    posix_spawnattr_t attributes{};
};

std::string _whatWentWrong(int status) {
    if (WIFSIGNALED(status)) {
        return "--exec: the command was ended by signal " + std::to_string(WTERMSIG(status));
    }
    return WEXITSTATUS(status) == 0
               ? std::string()
               : "--exec: the command ended with " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

AlertCommand::AlertCommand(std::string command, std::string folder, StopSignals& signals)
    : _command(std::move(command)), _folder(std::move(folder)), _signals(signals) {}

std::string AlertCommand::run(const AlertFields& fields) {
    std::vector<std::string> arguments = {"sh", "-c", _command};
    std::vector<std::string> variables = _environment(fields);
    const SpawnSettings settings(_folder, _signals.formerMask());
    pid_t child = 0;
    const int error = posix_spawn(&child, _PATH_BSHELL, &settings.actions, &settings.attributes,
                                  _pointers(arguments).data(), _pointers(variables).data());
    return error == 0 ? _whatWentWrong(_wait(child))
                      : "--exec: the command cannot be run: " + systemErrorText(error);
}

// The child's status as waitpid() has it.
int AlertCommand::_wait(int child) {
    // Some C libraries declare its function for C alone.
    const Descriptor process(int(syscall(SYS_pidfd_open, child, 0)));
    pollfd waited[] = {{process.get(), POLLIN, 0}, {_signals.descriptor(), POLLIN, 0}};
    while (process.isOpen() && (waited[0].revents & POLLIN) == 0) {
        if (poll(waited, 2, -1) > 0 && _signals.take()) {
            kill(-child, SIGTERM);
        }
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace QZ
