// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "FileLock.h"

namespace QZ {

// A file that is read as a whole when opened and replaced as a whole when closed; those that know
// what is in it derive from it. In between, a file open to write excludes every other process and
// object that reads or writes it. Used by one thread at a time.
//
// What is damaged reads as what is sound of it; before it is overwritten the file is set aside as
// PATH.damaged-YYYYMMDDTHHMMSS.
class DataFile {
public:
    static constexpr std::size_t MaximumSize = std::size_t{64} * 1024 * 1024;

    explicit DataFile(const std::wstring& path);
    // Abandons what was changed.
    virtual ~DataFile();
    DataFile(const DataFile&) = delete;
    DataFile& operator=(const DataFile&) = delete;

    // Mode 1 reads, mode 3 reads and writes, mode 2 writes anew. A missing file is an empty one;
    // one that cannot be read throws. What was open before is abandoned. Throws Error, as does a
    // lock that is not had in FileLock's time.
    void open(int mode);

    // Saves what was changed. Throws Error with file and reason; the file on disk is then as it
    // was. The file is closed in any case. Harmless when not open.
    void close();

    // Closes and saves nothing.
    void abandon();

protected:
    // Takes a file's text, and says whether all of it is sound.
    virtual bool _load(const std::string& text) = 0;
    virtual std::string _compose() const = 0;
    virtual void _forget() = 0;

    // Throws Error when not open to read, or to write.
    void _requireReader() const;
    void _requireWriter() const;
    void _setChanged() { _isChanged = true; }

    const std::string& _getPath() const { return _path; }

private:
    void _read();
    void _save() const;

    std::string _path;
    int _mode = 0;
    bool _isChanged = false;
    bool _isSound = true;
    std::optional<FileLock> _lock;
};

}  // namespace QZ
