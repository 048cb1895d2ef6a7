// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ResultOutput.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "Error.h"

namespace QZ {

namespace {

// A standard descriptor that we were started without would be given to the next file that is
// opened, and what is printed would be written into it.
void _occupyStandardDescriptors() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) < 0) {
            memfd_create("closed", 0);  // takes the lowest that is free
        }
    }
}

}  // namespace

// The duplicate is asked for above the first three, also where one of those is free.
ResultOutput::ResultOutput() : _descriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3)) {
    _occupyStandardDescriptors();
    (void)std::fflush(stdout);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

ResultOutput::~ResultOutput() {
    if (_descriptor >= 0) {
        close(_descriptor);
    }
}

void ResultOutput::write(const std::string& text) {
    for (std::size_t done = 0; done < text.size();) {
        const ssize_t written = ::write(_descriptor, text.data() + done, text.size() - done);
        if (written >= 0) {
            done += std::size_t(written);
        } else if (errno != EINTR) {
            throw Error("Cannot write to standard output: " + systemErrorText(errno));
        }
    }
}

}  // namespace QZ
