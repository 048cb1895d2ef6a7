// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Descriptor.h"

namespace QZ {

// Excludes other processes, and other locks of this one, from a file that is itself replaced. The
// lock is taken on the companion PATH.lock, which is created when missing and never replaced or
// removed. It ends with the object, and with the process.
class FileLock {
public:
    enum Kind { Shared, Exclusive };

    // How long a lock is waited for, in sleeps of Clock's.
    static constexpr unsigned LongestWaitMilliseconds = 10000;

    // Throws Error when the wait is over. Where the companion can be neither opened nor locked,
    // Exclusive throws, and Shared goes on without: since files are replaced whole, a reader
    // without a lock still sees one whole file.
    FileLock(const std::string& path, Kind kind);

    bool isHeld() const { return _file.isOpen(); }

private:
    Descriptor _file;
};

// Locks a file that is held open, for as long as it is, waiting so many milliseconds in sleeps of
// Clock's. 0 or the errno of the failure; ETIMEDOUT when another has held the lock all the time.
int lockFile(const Descriptor& file, FileLock::Kind kind, unsigned milliseconds);

}  // namespace QZ
