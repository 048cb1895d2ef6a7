// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyFile.h"

#include <cerrno>
#include <cstdint>
#include <utility>

#include "Clock.h"
#include "DamagedFile.h"
#include "Error.h"
#include "File.h"
#include "FileContent.h"
#include "FileReplacement.h"
#include "Mutex.h"
#include "Text.h"

namespace QZ {

namespace {

bool isSound(const FileContent& content) {
    return content.state == FileContent::Missing ||
           (content.state == FileContent::Read && content.text.find('\0') == std::string::npos);
}

// Whether its times would tell a change: not where it was written in this very moment.
bool isSettled(const FileContent& content) {
    const std::int64_t age = Clock::current().seconds() - content.status.st_ctim.tv_sec;
    return content.state == FileContent::Read && age > 1;
}

// The file that was read last, as long as nobody writes to it: a record that is asked for again and
// again is on disk each time, but need not be read.
class LastFile {
public:
    FileContent read(const std::string& path) {
        const MutexLock lock(_mutex);
        if (path == _path && isStillThere(path, _content))
            return _content;
        FileContent content = readWholeFile(path, PropertyFile::MaximumSize);
        _path = content.text.size() <= 65536 && isSettled(content) ? path : std::string();
        _content = _path.empty() ? FileContent() : content;
        return content;
    }

private:
    Mutex _mutex;
    std::string _path;
    FileContent _content;
};

FileContent readFile(const std::string& path) {
    static LastFile last;
    return last.read(path);
}

// What stands on disk, which may be damaged; throws where that cannot be told, for then it must not
// be overwritten.
FileContent readToReplace(const std::string& path) {
    FileContent content = readFile(path);
    if (content.state == FileContent::Unreadable)
        throwSystemError("Cannot read", path, content.error);
    return content;
}

}  // namespace

PropertyFile::PropertyFile(const std::wstring& path) : _path(make_string(path)) {}

void PropertyFile::open(int mode) {
    if (mode < ReadMode || mode > (ReadMode | WriteMode))
        throwSystemError("Cannot open", _path, EINVAL);
    const bool isWriter = (mode & WriteMode) != 0;
    _abandon();
    _lock.emplace(_path, isWriter ? FileLock::Exclusive : FileLock::Shared);
    FileContent content;
    try {
        content = isWriter ? readToReplace(_path) : readFile(_path);
    } catch (...) {
        _abandon();
        throw;
    }
    if ((mode & ReadMode) != 0) {
        _text = PropertyText(std::move(content.text));
        _isAsRead = isSettled(content) && !_text.isDamaged();
        _read = std::move(content);
    }
    if (!isWriter)
        _lock.reset();
    _mode = mode;
}

std::wstring PropertyFile::getProperty(const std::wstring& key) const {
    return make_wstring(_text.get(make_string(key)));
}

void PropertyFile::setProperty(const std::wstring& key, const std::wstring& value) {
    setProperty(key, value, nullptr);
}

void PropertyFile::setProperty(const std::wstring& key, const std::wstring& value,
                               bool (*givesBack)(const std::wstring& stored)) {
    if ((_mode & WriteMode) == 0)
        throwSystemError("Cannot write", _path, EBADF);
    const std::string name = make_string(key);
    const std::string text = make_string(value);
    _isSet = true;
    if (_text.holds(name, text))
        return;
    bool keepOld = false;
    if (givesBack != nullptr) {
        const std::string stored = _text.get(name);
        keepOld = !stored.empty() && !givesBack(make_wstring(stored));
    }
    _text.set(name, text, keepOld);
    _isAsRead = false;
}

void PropertyFile::close() {
    try {
        if (_isSet && !(_isAsRead && isStillThere(_path, _read)))
            _save();
    } catch (...) {
        _abandon();
        throw;
    }
    _abandon();
}

void PropertyFile::_save() const {
    const std::string text = _text.compose();
    if (text.size() > MaximumSize)
        throwSystemError("Cannot save", _path, EFBIG);
    const FileContent onDisk = readToReplace(_path);
    if (onDisk.state == FileContent::Read && onDisk.text == text)
        return;
    std::optional<DamagedFile> damaged;
    if (!isSound(onDisk))
        damaged.emplace(_path);
    replaceFile(_path, text);
    if (damaged)
        damaged->keep();
}

void PropertyFile::_abandon() {
    _mode = 0;
    _isSet = false;
    _isAsRead = false;
    _text = PropertyText();
    _lock.reset();
}

}  // namespace QZ
