// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "Folder.h"

#include <sys/stat.h>

#include <cerrno>

#include "Error.h"

namespace QZ {

bool isFolder(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string makeFolder(const std::string& path) {
    if (::mkdir(path.c_str(), S_IRWXU) == 0)
        return {};
    const int error = errno;
    if (isFolder(path))
        return {};
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0)
        return path + " is in the way of the data folder: it is no folder";
    return "Cannot make the folder " + path + ": " + systemErrorText(error);
}

}  // namespace QZ
