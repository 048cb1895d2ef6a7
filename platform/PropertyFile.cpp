// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "PropertyFile.h"

#include <cerrno>
#include <cstdint>
#include <memory>
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

// What stood on disk, as it was read.
struct PropertyFile::Content {
    explicit Content(FileContent file);

    // Whether its times would tell a change: not where it was written in this very moment.
    bool isSettled = false;
    bool isSound = false;
    FileContent file;  // without its text
    PropertyText text;
};

PropertyFile::Content::Content(FileContent from) : text(std::move(from.text)) {
    from.text.clear();
    file = std::move(from);
    const std::int64_t age = Clock::current().seconds() - file.status.st_ctim.tv_sec;
    isSettled = file.state == FileContent::Read && age > 1;
    isSound = file.state == FileContent::Missing ||
              (file.state == FileContent::Read && !text.isDamaged());
}

namespace {

using SharedContent = std::shared_ptr<const PropertyFile::Content>;

// The file that was read last, as long as nobody writes to it: a record that is asked for again and
// again is on disk each time, but need not be read.
class LastFile {
public:
    // None where the path names another file by now.
    SharedContent find(const std::string& path) {
        SharedContent content;
        {
            const MutexLock lock(_mutex);
            if (path == _path)
                content = _content;
        }
        return content && isStillThere(path, content->file) ? content : nullptr;
    }

    SharedContent read(const std::string& path) {
        if (SharedContent known = find(path))
            return known;
        FileContent file = readWholeFile(path, PropertyFile::MaximumSize);
        const bool isSmall = file.text.size() <= 65536;
        auto content = std::make_shared<const PropertyFile::Content>(std::move(file));
        const MutexLock lock(_mutex);
        const bool isKept = isSmall && content->isSettled;
        _path = isKept ? path : std::string();
        _content = isKept ? content : nullptr;
        return content;
    }

private:
    Mutex _mutex;
    std::string _path;
    SharedContent _content;
};

LastFile& lastFile() {
    static LastFile last;
    return last;
}

// What stands on disk, which may be damaged; throws where that cannot be told, for then it must not
// be overwritten.
SharedContent readToReplace(const std::string& path) {
    SharedContent content = lastFile().read(path);
    if (content->file.state == FileContent::Unreadable)
        throwSystemError("Cannot read", path, content->file.error);
    return content;
}

}  // namespace

PropertyFile::PropertyFile(const std::wstring& path) : _path(make_string(path)) {}

void PropertyFile::open(int mode) {
    if (mode < ReadMode || mode > (ReadMode | WriteMode))
        throwSystemError("Cannot open", _path, EINVAL);
    const bool isWriter = (mode & WriteMode) != 0;
    _abandon();
    if (!isWriter)
        _read = lastFile().find(_path);
    if (!_read) {
        std::optional<FileLock> lock(std::in_place, _path,
                                     isWriter ? FileLock::Exclusive : FileLock::Shared);
        _read = isWriter ? readToReplace(_path) : lastFile().read(_path);
        if (isWriter)
            _lock = std::move(lock);
    }
    if ((mode & ReadMode) == 0)
        _own.emplace();
    _mode = mode;
}

bool PropertyFile::openToCompare() {
    _abandon();
    _read = lastFile().find(_path);
    if (!_read || !_isAsRead()) {
        _abandon();
        return false;
    }
    _mode = WriteMode;
    return true;
}

const PropertyText& PropertyFile::_text() const {
    static const PropertyText none;
    return _own ? *_own : _read ? _read->text : none;
}

// Whether what was set stands in the file that was read, and its times tell of a change.
bool PropertyFile::_isAsRead() const {
    return !_own && _read && _read->isSettled && _read->isSound;
}

std::wstring PropertyFile::getProperty(const std::wstring& key) const {
    return make_wstring(_text().get(make_string(key)));
}

void PropertyFile::setProperty(const std::wstring& key, const std::wstring& value,
                               bool (*givesBack)(const std::wstring& stored)) {
    if ((_mode & WriteMode) == 0)
        throwSystemError("Cannot write", _path, EBADF);
    const std::string name = make_string(key);
    const std::string text = make_string(value);
    _isSet = true;
    if (_text().holds(name, text))
        return;
    bool keepOld = false;
    if (givesBack != nullptr) {
        const std::string stored = _text().get(name);
        keepOld = !stored.empty() && !givesBack(make_wstring(stored));
    }
    if (!_own)
        _own.emplace(_text().compose());
    _own->set(name, text, keepOld);
}

void PropertyFile::close() {
    try {
        if (_isSet && _lock && !(_isAsRead() && isStillThere(_path, _read->file)))
            _save();
    } catch (...) {
        _abandon();
        throw;
    }
    _abandon();
}

void PropertyFile::_save() const {
    const std::string text = _text().compose();
    if (text.size() > MaximumSize)
        throwSystemError("Cannot save", _path, EFBIG);
    const SharedContent onDisk = readToReplace(_path);
    if (onDisk->isSound && onDisk->file.state == FileContent::Read &&
        onDisk->text.compose() == text)
        return;
    std::optional<DamagedFile> damaged;
    if (!onDisk->isSound)
        damaged.emplace(_path);
    replaceFile(_path, text);
    if (damaged)
        damaged->keep();
}

void PropertyFile::_abandon() {
    _mode = 0;
    _isSet = false;
    _read.reset();
    _own.reset();
    _lock.reset();
}

}  // namespace QZ
