// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "DataFile.h"

#include <cerrno>

#include "DamagedFile.h"
#include "Error.h"
#include "File.h"
#include "FileContent.h"
#include "FileReplacement.h"
#include "Text.h"

namespace QZ {

DataFile::DataFile(const std::wstring& path) : _path(make_string(path)) {}

DataFile::~DataFile() = default;

void DataFile::open(int mode) {
    if (mode < ReadMode || mode > (ReadMode | WriteMode))
        throwSystemError("Cannot open", _path, EINVAL);
    const bool isWriter = (mode & WriteMode) != 0;
    abandon();
    try {
        _lock.emplace(_path, isWriter ? FileLock::Exclusive : FileLock::Shared);
        _read();
    } catch (...) {
        abandon();
        throw;
    }
    if (mode == WriteMode) {
        _forget();
        _setChanged();
    }
    if (!isWriter)
        _lock.reset();
    _mode = mode;
}

void DataFile::_read() {
    const FileContent content = readWholeFile(_path, MaximumSize);
    if (content.state == FileContent::Unreadable)
        throwSystemError("Cannot read", _path, content.error);
    // What is no file, or too large for one of ours, is set aside as a whole.
    const bool isOurs = content.state == FileContent::Read || content.state == FileContent::Missing;
    _isSound = _load(content.text) && isOurs;
}

void DataFile::close() {
    try {
        if (_isChanged)
            _save();
    } catch (...) {
        abandon();
        throw;
    }
    abandon();
}

void DataFile::_save() const {
    const std::string text = _compose();
    if (text.size() > MaximumSize)
        throwSystemError("Cannot save", _path, EFBIG);
    std::optional<DamagedFile> damaged;
    if (!_isSound)
        damaged.emplace(_path);
    replaceFile(_path, text);
    if (damaged)
        damaged->keep();
}

void DataFile::abandon() {
    _mode = 0;
    _isChanged = false;
    _isSound = true;
    _forget();
    _lock.reset();
}

void DataFile::_requireReader() const {
    if ((_mode & ReadMode) == 0)
        throwSystemError("Cannot read", _path, EBADF);
}

void DataFile::_requireWriter() const {
    if ((_mode & WriteMode) == 0)
        throwSystemError("Cannot write", _path, EBADF);
}

}  // namespace QZ
