// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "Mutex.h"
#include "PropertyFile.h"

namespace QZ {

// Serialises every access to "asset.dat" in this process: setting up its path, every load and
// every save of every record. Constant-initialised, so that it may be locked at any time.
extern Mutex _fileMutex;

// The path of "asset.dat", in the data folder as it is configured now.
std::wstring AssetFilePath();

// One load or one save: holds `_fileMutex` and the opened property file.
//
// Throws `Error` where the file cannot be opened. Leaving the scope without `close` gives up what
// was set; the mutex is released in any case.
class AssetFileSession {
public:
    // `mode` is made of bits: 1 read, 2 write. Waits for the mutex without limit.
    AssetFileSession(const std::wstring& path, int mode);

    // With nothing open yet.
    explicit AssetFileSession(const std::wstring& path) : _lock(_fileMutex), _file(path) {}

    PropertyFile& file() { return _file; }

    // Writes what was set, if the session may write. Throws `Error` where that fails.
    void close() { _file.close(); }

private:
    MutexLock _lock;
    PropertyFile _file;
};

}  // namespace QZ
