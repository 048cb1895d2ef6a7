// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "Descriptor.h"
#include "TemporaryFolder.h"

// Standard output and standard error of a process, in a file for as long as it lives.
class Streams {
public:
    Streams() : _output(dup(STDOUT_FILENO)), _error(dup(STDERR_FILENO)) {
        (void)std::fflush(stdout);
        const QZ::Descriptor file(
            open(_folder.file("printed").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0600));
        dup2(file.get(), STDOUT_FILENO);
        dup2(file.get(), STDERR_FILENO);
    }
    ~Streams() {
        (void)std::fflush(stdout);
        dup2(_output.get(), STDOUT_FILENO);
        dup2(_error.get(), STDERR_FILENO);
    }
    std::string text() const { return _folder.read("printed"); }

private:
    const TemporaryFolder _folder;
    const QZ::Descriptor _output;
    const QZ::Descriptor _error;
};
