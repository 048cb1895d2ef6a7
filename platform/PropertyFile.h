// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "FileLock.h"
#include "PropertyText.h"

namespace QZ {

// A file of texts under keys, as PropertyText writes them. It is read as a whole when opened and
// replaced as a whole when closed; in between, a file open to write excludes every other process
// and PropertyFile that writes it, and those that do not know yet what stands there. Used by one
// thread at a time.
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
    // had in FileLock's time; to read what nobody wrote to since it was read before needs none.
    void open(int mode);

    // Opens a file that nobody wrote to since it was read before, as far as its times tell, to
    // find out whether a save would change anything: isChanged tells of what is set until it is
    // closed or opened again. Excludes nobody, and close writes nothing. False where that is not
    // known, or the file is another by now: then it is not open.
    bool openToCompare();
    bool isChanged() const { return _own.has_value(); }

    // Empty when the key is missing.
    std::wstring getProperty(const std::wstring& key) const;

    // Throws Error when not open to write. The file changes when it is closed. A stored text that
    // differs from the value, and for which givesBack says that the value's field cannot give it
    // back, is kept as a comment line above: somebody wrote it by hand and will look for it.
    void setProperty(const std::wstring& key, const std::wstring& value,
                     bool (*givesBack)(const std::wstring& stored) = nullptr);

    // Saves what was set, unless that is exactly what stands on disk now. Throws Error with file
    // and reason; the file on disk is then as it was, and this one is closed.
    void close();

    struct Content;

private:
    const PropertyText& _text() const;
    bool _isAsRead() const;
    void _save() const;
    void _abandon();

    std::string _path;
    int _mode = 0;
    bool _isSet = false;
    std::shared_ptr<const Content> _read;
    std::optional<PropertyText> _own;  // with what was set, where that differs
    std::optional<FileLock> _lock;
};

}  // namespace QZ
