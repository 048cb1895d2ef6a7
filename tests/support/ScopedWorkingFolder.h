// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

// The working folder, until the end of the scope.
class ScopedWorkingFolder {
public:
    explicit ScopedWorkingFolder(const std::filesystem::path& folder) {
        std::filesystem::current_path(folder);
    }
    ~ScopedWorkingFolder() {
        std::error_code gone;
        std::filesystem::current_path(_before, gone);
    }
    ScopedWorkingFolder(const ScopedWorkingFolder&) = delete;
    ScopedWorkingFolder& operator=(const ScopedWorkingFolder&) = delete;

private:
    std::filesystem::path _before = std::filesystem::current_path();
};
