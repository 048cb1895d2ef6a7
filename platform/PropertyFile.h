// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "FileContent.h"
#include "FileLock.h"
#include "PropertyText.h"

namespace QZ {

// A file of texts under keys, as PropertyText writes them. It is read as a whole when opened and
// replaced as a whole when closed; in between, a file open to write excludes every other process
// and PropertyFile that reads or writes it. Used by one thread at a time.
//
// A file that is torn or not ours (NUL bytes, over MaximumSize, no regular file) reads as what is
// sound of it; before it is overwritten it is set aside as PATH.damaged-YYYYMMDDTHHMMSS.
class PropertyFile {
public:
    static constexpr std::size_t MaximumSize = std::size_t{1024} * 1024;

    explicit PropertyFile(const std::wstring& path);

    // Abandons what was set since open, and gives up the lock.
    ~PropertyFile() = default;
    PropertyFile(const PropertyFile&) = delete;
    PropertyFile& operator=(const PropertyFile&) = delete;

    // Mode 1 reads; a file that is missing or unreadable reads as empty. Mode 3 reads and writes: a
    // missing file starts empty, one that cannot be read throws, for it must not be overwritten.
    // Mode 2 writes anew: the entries there are left out. Throws Error, as does a lock that is not
    // had in FileLock's time.
    void open(int mode);

    // Empty when the key is missing.
    std::wstring getProperty(const std::wstring& key) const;

    // Throws Error when not open to write. The file changes when it is closed.
    void setProperty(const std::wstring& key, const std::wstring& value);

    // The same, but a stored text that differs from the value, and for which givesBack says that
    // the value's field cannot give it back, is kept as a comment line above: somebody wrote it by
    // hand and will look for it.
    void setProperty(const std::wstring& key, const std::wstring& value,
                     bool (*givesBack)(const std::wstring& stored));

    // Saves what was set, unless that is exactly what stands on disk now. Throws Error with file
    // and reason; the file on disk is then as it was, and this one is closed.
    void close();

private:
    void _save() const;
    void _abandon();

    std::string _path;
    int _mode = 0;
    bool _isSet = false;
    bool _isAsRead = false;  // what was set stands in the file that was read
    FileContent _read;       // without its text
    PropertyText _text;
    std::optional<FileLock> _lock;
};

}  // namespace QZ
