// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "File.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "Error.h"
#include "Text.h"

namespace QZ {

File::File(const std::wstring& path) : _path(make_string(path)) {}

void File::open(int mode) {
    close();
    int flags = O_CLOEXEC | O_NOCTTY;
    switch (mode) {
        case ReadMode:
            flags |= O_RDONLY;
            break;
        case WriteMode:
            flags |= O_WRONLY | O_CREAT;
            break;
        case ReadMode | WriteMode:
            flags |= O_RDWR | O_CREAT;
            break;
        default:
            throwSystemError("Cannot open", _path, EINVAL);
    }
    _descriptor = Descriptor(::open(_path.c_str(), flags, S_IRUSR | S_IWUSR));
    if (!_descriptor.isOpen())
        throwSystemError("Cannot open", _path, errno);
}

void File::close() {
    _descriptor = Descriptor();
}

}  // namespace QZ
