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

// 0 or the errno of the failure; ETIMEDOUT when another has held the lock all the time.
int waitForLock(int descriptor, int operation) {
    unsigned waited = 0;
    for (unsigned sleep = 1;; sleep = std::min(2 * sleep, LongestSleepMilliseconds)) {
        if (::flock(descriptor, operation | LOCK_NB) == 0)
            return 0;
        if (errno == EINTR)
            continue;
        if (errno != EWOULDBLOCK)
            return errno;
        if (waited >= FileLock::LongestWaitMilliseconds)
            return ETIMEDOUT;
        Clock::current().sleepMilliseconds(sleep);
        waited += sleep;
    }
}

}  // namespace

FileLock::FileLock(const std::string& path, Kind kind) {
    const std::string name = path + ".lock";
    // Where locks are emulated over a network, an exclusive one needs a file open to write.
    const int access = kind == Exclusive ? O_RDWR : O_RDONLY;
    const int flags = access | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    Descriptor file(::open(name.c_str(), flags, S_IRUSR | S_IWUSR));
    const int error =
        file.isOpen() ? waitForLock(file.get(), kind == Exclusive ? LOCK_EX : LOCK_SH) : errno;
    if (error == 0)
        _file = std::move(file);
    else if (error == ETIMEDOUT)
        throw Error("Cannot lock " + name + ": another process has held it for 10 seconds");
    else if (kind == Exclusive)
        throwSystemError("Cannot lock", name, error);
}

}  // namespace QZ
