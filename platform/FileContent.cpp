// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileContent.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

#include "Descriptor.h"

namespace QZ {

namespace {

FileContent stateOf(FileContent::State state, int error = 0) {
    FileContent content;
    content.state = state;
    content.error = error;
    return content;
}

// Reads until the end of the file: the files of /sys and /proc announce sizes that are not theirs.
// One byte beyond the limit tells of what follows.
FileContent readUpTo(int descriptor, std::uint64_t announced, std::size_t limit) {
    FileContent content;
    content.state = FileContent::Read;
    std::string& text = content.text;
    std::size_t used = 0;
    text.resize(static_cast<std::size_t>(std::min<std::uint64_t>(announced, limit)) + 1);
    for (;;) {
        const ssize_t got = ::read(descriptor, &text[used], text.size() - used);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            return stateOf(FileContent::Unreadable, errno);
        if (got == 0)
            break;
        used += static_cast<std::size_t>(got);
        if (used > limit) {
            content.state = FileContent::TooLarge;
            break;
        }
        // The buffer had room for more: a file that ends where it announced has ended.
        if (used == announced)
            break;
        if (used == text.size())
            text.resize(std::min(std::max<std::size_t>(2 * used, 4096), limit + 1));
    }
    text.resize(std::min(used, limit));
    return content;
}

// The start of a file; TooLarge, with that much of it, where there is more.
FileContent readStart(const std::string& path, std::size_t limit) {
    // Without O_NONBLOCK, opening a pipe would wait for its other end.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.isOpen()) {
        if (errno == ENOENT || errno == ENOTDIR)
            return stateOf(FileContent::Missing, errno);
        // ENXIO is a socket's, or that of a device without a driver.
        return errno == ENXIO ? stateOf(FileContent::NotRegular)
                              : stateOf(FileContent::Unreadable, errno);
    }
    struct stat status {};
    if (::fstat(file.get(), &status) != 0)
        return stateOf(FileContent::Unreadable, errno);
    if (!S_ISREG(status.st_mode))
        return stateOf(FileContent::NotRegular);
    FileContent content = readUpTo(file.get(), static_cast<std::uint64_t>(status.st_size), limit);
    content.status = status;
    return content;
}

}  // namespace

FileContent readWholeFile(const std::string& path, std::size_t limit) {
    FileContent content = readStart(path, limit);
    return content.state == FileContent::TooLarge ? stateOf(FileContent::TooLarge) : content;
}

FileContent readFileStart(const std::string& path, std::size_t length) {
    FileContent content = readStart(path, length);
    if (content.state == FileContent::TooLarge)
        content.state = FileContent::Read;
    return content;
}

bool isStillThere(const std::string& path, const FileContent& content) {
    struct stat now {};
    const struct stat& then = content.status;
    const auto same = [](const timespec& one, const timespec& other) {
        return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
    };
    return content.state == FileContent::Read && ::stat(path.c_str(), &now) == 0 &&
           now.st_dev == then.st_dev && now.st_ino == then.st_ino && now.st_size == then.st_size &&
           same(now.st_mtim, then.st_mtim) && same(now.st_ctim, then.st_ctim);
}

}  // namespace QZ
