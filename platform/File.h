// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Descriptor.h"

namespace QZ {

// Bits of a file's mode: 3 reads and writes.
enum FileMode : int { ReadMode = 1, WriteMode = 2 };

// A file held open. Used by one thread at a time.
class File {
public:
    explicit File(const std::wstring& path);

    // A mode that writes creates a file that is missing, for its owner only, and keeps the content
    // of one that is there. The folder must exist. Throws Error.
    void open(int mode);

    // Harmless when not open.
    void close();

private:
    std::string _path;
    Descriptor _descriptor;
};

}  // namespace QZ
