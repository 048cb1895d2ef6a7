// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PasswordPrompt.h"

#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iostream>

#include "Error.h"

namespace QZ {

namespace {

constexpr std::size_t LONGEST_LINE = 4096;

constexpr int SIGNALS[] = {SIGHUP, SIGINT, SIGQUIT, SIGTERM};

volatile std::sig_atomic_t signalReceived = 0;

void _onSignal(int number) {
    signalReceived = number;
}

// While it lives the terminal does not echo, and signals interrupt a read.
class Silence {
public:
    Silence() {
        signalReceived = 0;
        struct sigaction action {};
        action.sa_handler = _onSignal;
        for (std::size_t i = 0; i < std::size(SIGNALS); ++i) {
            sigaction(SIGNALS[i], &action, &_actions[i]);
        }
        _isSilent = tcgetattr(STDIN_FILENO, &_before) == 0;
        termios silent = _before;
        silent.c_lflag &= ~tcflag_t(ECHO);
        silent.c_lflag |= ECHONL;
        _isSilent = _isSilent && tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
    }
    ~Silence() {
        if (_isSilent) {
            tcsetattr(STDIN_FILENO, TCSAFLUSH, &_before);
        }
        for (std::size_t i = 0; i < std::size(SIGNALS); ++i) {
            sigaction(SIGNALS[i], &_actions[i], nullptr);
        }
        if (signalReceived != 0) {
            (void)std::raise(signalReceived);
        }
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    bool isSilent() const { return _isSilent; }

private:
    termios _before{};
    struct sigaction _actions[std::size(SIGNALS)]{};
    bool _isSilent = false;
};

// Byte by byte, so that what follows is left for whoever reads next.
std::string _readLine() {
    std::string line;
    for (;;) {
        char c = 0;
        const ssize_t count = ::read(STDIN_FILENO, &c, 1);
        if (count < 0 && errno == EINTR && signalReceived == 0) {
            continue;
        }
        if (count < 0) {
            throw Error("Cannot read a password: " + systemErrorText(errno));
        }
        if (count == 0 || c == '\n') {
            break;
        }
        if (line.size() == LONGEST_LINE) {
            throw Error("Cannot read a password: the line is too long");
        }
        line += c;
    }
    if (!line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    if (line.empty()) {
        throw Error("No password was given");
    }
    return line;
}

std::string _ask(const std::string& question) {
    std::cerr << question + ": " << std::flush;
    return _readLine();
}

}  // namespace

std::string readNewPassword(const std::string& user) {
    if (isatty(STDIN_FILENO) == 0) {
        return _readLine();
    }
    const Silence silence;
    if (!silence.isSilent()) {
        throw Error("Cannot read a password: the terminal would show it");
    }
    std::string password = _ask("New password for " + user);
    if (_ask("The same again") != password) {
        throw Error("The two passwords are not the same");
    }
    return password;
}

}  // namespace QZ
