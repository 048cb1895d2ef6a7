// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// The command's standard output, kept for its results alone: while this object lives, and after,
// descriptor 1 is standard error, so that what a module or a library prints does not mix with them.
// One per process, made before a module is loaded.
class ResultOutput {
public:
    ResultOutput();
    ~ResultOutput();
    ResultOutput(const ResultOutput&) = delete;
    ResultOutput& operator=(const ResultOutput&) = delete;

    // Writes all of it. Throws Error with the reason where that fails, also for a standard output
    // that was closed from the start.
    void write(const std::string& text);

private:
    int _descriptor;
};

}  // namespace QZ
