// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace QZ {

// A library loaded at run time, with its symbols bound at once and kept to itself, and unloaded
// with the object. Used by one thread at a time.
class DynamicLibrary {
public:
    // A path without a slash is searched for as the linker does. Never throws for what it finds.
    explicit DynamicLibrary(const std::string& path);
    ~DynamicLibrary();
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    bool isLoaded() const { return _handle != nullptr; }

    // Null when the library is not loaded or has no such symbol. Valid as long as this object.
    void* getSymbol(const char* name) const;

    // Why it is not loaded; empty when it is.
    const std::string& getError() const { return _error; }

private:
    void* _handle;
    std::string _error;
};

}  // namespace QZ
