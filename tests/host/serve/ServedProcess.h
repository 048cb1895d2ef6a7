// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <sys/types.h>
#include <csignal>
#include <cstdint>
#include <string>

#include "TemporaryFolder.h"

// "serve" in a process of its own, with the test module, told by a configuration file. It is killed
// at the end of this object, whatever it is at.
class ServedProcess {
public:
    // Lines of the file, besides those that let it listen somewhere on loopback. The password is
    // that of a user who may all, unless they name others.
    explicit ServedProcess(const std::string& config);
    ~ServedProcess();
    ServedProcess(const ServedProcess&) = delete;
    ServedProcess& operator=(const ServedProcess&) = delete;

    std::uint16_t port() const { return _port; }
    // The line of a request's header that says who asks.
    const std::string& authorization() const { return _authorization; }
    std::size_t threads() const;
    // Waits until a provider is in TEST_Waits.
    void awaitProvider() const;
    void tell(int signal) const { ::kill(_process, signal); }
    // What it wrote on standard error.
    std::string log() const { return _folder.read("log"); }

private:
    [[noreturn]] void _serve(int announced) const;

    const TemporaryFolder _folder;
    pid_t _process = -1;
    std::uint16_t _port = 0;
    std::string _authorization;
};
