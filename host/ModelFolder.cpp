// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "ModelFolder.h"

#include <dirent.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <string_view>

#include "Error.h"

namespace QZ {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool _isMof(std::string_view name) {
    constexpr std::string_view ending = ".mof";
    return name.size() > ending.size() &&
           name.compare(name.size() - ending.size(), ending.size(), ending) == 0;
}

// Not by <filesystem>, which takes as long over each name as over reading a small file.
std::vector<std::string> _mofFiles(const std::string& folder) {
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(folder.c_str()));
    errno = opened ? 0 : errno;
    std::vector<std::string> files;
    while (const dirent* const entry = opened ? readdir(opened.get()) : nullptr) {
        if (_isMof(entry->d_name)) {
            files.push_back(folder + '/' + entry->d_name);
        }
        errno = 0;
    }
    if (errno != 0) {
        throwSystemError("Cannot read the schema folder", folder, errno);
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<std::string> modelFiles(const std::string& folder) {
    std::vector<std::string> files = _mofFiles(folder);
    if (files.empty()) {
        throw Error("Cannot read the schema folder " + folder + ": it holds no .mof file");
    }
    return files;
}

std::vector<std::string> innerModelFiles(const std::string& folder, const char* inner) {
    const std::string path = folder + '/' + inner;
    std::error_code error;
    const bool isMissing = !std::filesystem::exists(path, error) && !error;
    return isMissing ? std::vector<std::string>() : _mofFiles(path);
}

}  // namespace QZ
