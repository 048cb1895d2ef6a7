// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "Clock.h"
#include "Error.h"

namespace QZ {

namespace {

constexpr unsigned LongestSleepMilliseconds = 20;

}  // namespace

int lockFile(const Descriptor& file, FileLock::Kind kind, unsigned milliseconds) {
    const int operation = kind == FileLock::Exclusive ? LOCK_EX : LOCK_SH;
    unsigned waited = 0;
    for (unsigned sleep = 1;; sleep = std::min(2 * sleep, LongestSleepMilliseconds)) {
        if (::flock(file.get(), operation | LOCK_NB) == 0)
            return 0;
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK)
            return errno;
        if (waited >= milliseconds)
            return ETIMEDOUT;
        Clock::current().sleepMilliseconds(sleep);
        waited += sleep;
    }
}

FileLock::FileLock(const std::string& path, Kind kind) {
    const std::string name = path + ".lock";
    // Where locks are emulated over a network, an exclusive one needs a file open to write.
    const int access = kind == Exclusive ? O_RDWR : O_RDONLY;
    const int flags = access | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    Descriptor file(::open(name.c_str(), flags, S_IRUSR | S_IWUSR));
    const int error = file.isOpen() ? lockFile(file, kind, LongestWaitMilliseconds) : errno;
    if (error == 0)
        _file = std::move(file);
    else if (error == ETIMEDOUT)
        throw Error("Cannot lock " + name + ": another process has held it for 10 seconds");
    else if (kind == Exclusive)
        throwSystemError("Cannot lock", name, error);
}

}  // namespace QZ
