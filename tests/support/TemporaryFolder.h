// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

// A fresh folder that is removed with all that is in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string path = (std::filesystem::temp_directory_path() / "tavqz-XXXXXX").string();
        if (mkdtemp(path.data()) == nullptr)
            throw std::runtime_error("no temporary folder under " + path);
        _path = path;
    }

    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(_path, ignored);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return _path; }

    // The path of a file or folder inside; nothing is made.
    std::string file(const std::string& name) const { return _path + "/" + name; }

    // Makes a file, and the folders that it lies in. Its path.
    std::string write(const std::string& name, const std::string& content) const {
        std::string path = file(name);
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        std::ofstream stream(path, std::ios::binary | std::ios::trunc);
        stream << content;
        return path;
    }

    // Empty when there is no such file.
    std::string read(const std::string& name) const {
        std::ifstream stream(file(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    bool contains(const std::string& name) const {
        return std::filesystem::exists(std::filesystem::symlink_status(file(name)));
    }

private:
    std::string _path;
};
