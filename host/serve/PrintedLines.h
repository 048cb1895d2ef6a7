// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <thread>

#include "Descriptor.h"

namespace QZ {

// What anybody in this process prints on standard output and standard error, line by line: modules
// and the libraries that they load print what they like. One per process, and one thread at a time,
// but for write.
class PrintedLines {
public:
    using Take = std::function<void(const std::string& line)>;

    // Takes nothing yet. What is printed is seen at once from now on, not when there is much of it.
    // Throws Error where the system has no descriptor left.
    PrintedLines();
    // As release.
    ~PrintedLines();
    PrintedLines(const PrintedLines&) = delete;
    PrintedLines& operator=(const PrintedLines&) = delete;

    // From now on hands over each line that is not empty, on a thread of its own, until release;
    // also what has not ended yet, after a moment in which nothing more came. Throws as above.
    void take(Take take);

    // From now on what is printed goes where it went before; what came until now was handed over.
    void release();

    // A line to where standard error goes without us. Any thread.
    void write(const std::string& line) const;

private:
    void _read();
    void _split(std::string& text, bool isAll) const;

    const Descriptor _error;  // standard error as it was
    Take _take;
    Descriptor _end;  // of the pipe that is read
    Descriptor _released;
    std::thread _thread;
};

}  // namespace QZ
