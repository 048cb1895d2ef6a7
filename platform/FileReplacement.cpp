// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "Descriptor.h"
#include "Error.h"

namespace QZ {

namespace {

// Each step's result is 0 or the errno of its failure.

int writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written >= 0)
            content.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return errno;
    }
    return 0;
}

int writeNewFile(int folder, const std::string& name, const std::string& content) {
    // What an earlier process left behind may be a link to anywhere: never written through.
    ::unlinkat(folder, name.c_str(), 0);
    Descriptor file(::openat(folder, name.c_str(),
                             O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                             S_IRUSR | S_IWUSR));
    if (!file.isOpen())
        return errno;
    if (const int error = writeAll(file.get(), content))
        return error;
    if (::fsync(file.get()) != 0)
        return errno;
    // Network file systems may report a failed write only now.
    return ::close(file.release()) == 0 || errno == EINTR ? 0 : errno;
}

int flushFolder(int folder) {
    // EINVAL: a file system that has no such notion.
    return ::fsync(folder) == 0 || errno == EINVAL ? 0 : errno;
}

}  // namespace

void replaceFile(const std::string& path, const std::string& content) {
    const std::size_t slash = path.rfind('/');
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::string folderName = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const std::string newName = name + ".new";

    // Opened first, so that nothing but the flush itself can fail once the file is renamed.
    const Descriptor folder(::open(folderName.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder.isOpen())
        throwSystemError("Cannot save", path, errno);
    int error = writeNewFile(folder.get(), newName, content);
    if (error == 0 && ::renameat(folder.get(), newName.c_str(), folder.get(), name.c_str()) != 0)
        error = errno;
    if (error != 0) {
        ::unlinkat(folder.get(), newName.c_str(), 0);
        throwSystemError("Cannot save", path, error);
    }
    error = flushFolder(folder.get());
    if (error != 0)
        throwSystemError("Cannot flush the folder of", path, error);
}

}  // namespace QZ
