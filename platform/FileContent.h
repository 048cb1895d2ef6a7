// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <string>

namespace QZ {

// What there was to read under a path.
struct FileContent {
    enum State {
        Read,
        Missing,
        Unreadable,  // error says why
        NotRegular,  // a folder, a device, a pipe, a socket: never waited for
        TooLarge,
    };

    State state = Missing;
    int error = 0;          // errno, when Unreadable or Missing
    std::string text;       // what was asked for of the file when Read, else empty
    struct stat status {};  // when Read
};

// Reads a whole file of at most `limit` bytes; also one whose size the kernel does not tell. Never
// throws for what it finds on disk.
FileContent readWholeFile(const std::string& path, std::size_t limit);

// The same of a file's first `length` bytes, whatever follows them.
FileContent readFileStart(const std::string& path, std::size_t length);

// Whether the path still names the file that was Read, and nobody wrote to it since, as far as its
// times tell.
bool isStillThere(const std::string& path, const FileContent& content);

}  // namespace QZ
